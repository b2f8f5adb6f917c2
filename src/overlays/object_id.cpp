#include "overlays/object_id.h"

#include "core/heartbeat.h"

#include <cstdlib>
#include <cstring>
#include <random>

#include <QCryptographicHash>
#include <QSysInfo>

namespace {

CObjectIdSource id_source;

/// 31 random bits, from a start that differs between runs.
std::uint32_t SystemRandom()
{
    static const bool seeded = [] {
        srand48(static_cast<long>(std::random_device()()));
        return true;
    }();
    static_cast<void>(seeded);
    return static_cast<std::uint32_t>(lrand48());
}

/// Stable for the machine; a digest, since the machine's own id is not to leave it.
std::uint32_t MachineNumber()
{
    static const std::uint32_t number = [] {
        const QByteArray digest = QCryptographicHash::hash(QSysInfo::machineUniqueId(), QCryptographicHash::Sha256);
        std::uint32_t first = 0;
        std::memcpy(&first, digest.constData(), sizeof first);
        return first;
    }();
    return number;
}

} // namespace

std::uint64_t GenerateUniqueID()
{
    const std::uint64_t random = id_source.random != nullptr ? id_source.random() : SystemRandom();
    const std::uint64_t device = id_source.device_number != nullptr ? id_source.device_number() : MachineNumber();
    const auto seconds = static_cast<std::uint64_t>(CHeartbeat::TheHeartbeat.Timestamp());
    return (random << 16) ^ (device << 32) ^ seconds;
}

void SetObjectIdSource(CObjectIdSource source)
{
    id_source = source;
}
