#include "core/folders.h"
#include "ui/alarm_bell.h"

#include <cmath>
#include <cstdint>
#include <numbers>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace {

constexpr std::uint32_t kRate = 22050; ///< samples a second
constexpr double kSeconds = 1.6;

void Put(std::string& bytes, std::uint32_t value, int size)
{
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFFU);
}

/// One sample of two strokes of a bell, -1 .. 1.
double BellAt(double seconds)
{
    double sum = 0.0;
    for (const double stroke : {0.0, 0.4}) {
        const double t = seconds - stroke;
        if (t < 0.0) continue;
        const double fade = std::exp(-3.5 * t) * std::min(1.0, t * 400.0);
        const double turn = 2.0 * std::numbers::pi * t;
        sum += fade * (0.5 * std::sin(880.0 * turn) + 0.25 * std::sin(2112.0 * turn) + 0.15 * std::sin(3520.0 * turn));
    }
    return std::clamp(sum, -1.0, 1.0);
}

} // namespace

std::string AlarmBellWav()
{
    const auto samples = static_cast<std::uint32_t>(kSeconds * kRate);
    const std::uint32_t data_size = samples * 2;
    std::string bytes = "RIFF";
    Put(bytes, 36 + data_size, 4);
    bytes += "WAVEfmt ";
    Put(bytes, 16, 4);
    Put(bytes, 1, 2); // plain samples
    Put(bytes, 1, 2); // one channel
    Put(bytes, kRate, 4);
    Put(bytes, kRate * 2, 4);
    Put(bytes, 2, 2);
    Put(bytes, 16, 2);
    bytes += "data";
    Put(bytes, data_size, 4);
    for (std::uint32_t i = 0; i < samples; ++i) {
        const auto sample = static_cast<std::int16_t>(std::lround(30000.0 * BellAt(i / static_cast<double>(kRate))));
        Put(bytes, static_cast<std::uint16_t>(sample), 2);
    }
    return bytes;
}

bool CDesktopBell::Prepare()
{
    if (prepared) return !player.empty();
    prepared = true;
    for (const char* name : {"pw-play", "paplay", "aplay"}) {
        const QString path = QStandardPaths::findExecutable(QString::fromLatin1(name));
        if (path.isEmpty()) continue;
        const QString folder = QString::fromStdString(getCacheDirectory());
        QDir().mkpath(folder);
        file = (folder + QStringLiteral("/bell.wav")).toStdString();
        QFile out(QString::fromStdString(file));
        const std::string bytes = AlarmBellWav();
        const bool written =
            out.open(QIODevice::WriteOnly) &&
            out.write(bytes.data(), static_cast<qint64>(bytes.size())) == static_cast<qint64>(bytes.size());
        if (written) player = path.toStdString();
        break;
    }
    return !player.empty();
}

void CDesktopBell::Play()
{
    if (Prepare()) QProcess::startDetached(QString::fromStdString(player), {QString::fromStdString(file)});
}
