#include "nmea/nmea_raw.h"

#include "core/listener.h"
#include "nmea/nmea_sentence.h"

#include <cstring>

namespace {

constexpr std::size_t kLineEnd = 3;  ///< CR, LF and the NUL behind them
constexpr std::size_t kChecksum = 3; ///< "*" and two digits

} // namespace

bool CNMEA_Raw::Init(const char* from)
{
    const std::size_t length = std::strlen(from);
    if (length > kSize - kLineEnd) {
        text[0] = 0;
        return false;
    }
    std::memcpy(text, from, length);
    std::memcpy(text + length, "\r\n", kLineEnd);
    return true;
}

bool CNMEA_Raw::Matches(int index, const char* prefix) const
{
    if (*prefix == 0) return true;
    if (index < 0 || static_cast<std::size_t>(index) > strnlen(text, kSize)) return false;
    return std::strncmp(text + index, prefix, std::strlen(prefix)) == 0;
}

void CNMEA_Raw::AddChecksumAndDispatch()
{
    if (strnlen(text, kSize) > kSize - kLineEnd - kChecksum) return;
    CNMEASentence::compute_checksum(text);
    std::memcpy(text + std::strlen(text), "\r\n", kLineEnd);
    DispatchToListeners(*this);
}
