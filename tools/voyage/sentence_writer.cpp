#include "tools/voyage/sentence_writer.h"

#include "core/text.h"

#include <cmath>
#include <ctime>

namespace {

constexpr double kMinutes = 60.0;

/// Degrees and minutes with `digits` digits of degrees, and the letter of the hemisphere.
std::string AngleFields(double angle, int digits, char positive, char negative)
{
    // Rounded as a whole first, so that no minute comes out as 60.
    const long long ten_thousandths = std::llround(std::fabs(angle) * kMinutes * 10000.0);
    const long long degrees = ten_thousandths / 600000;
    const double minutes = static_cast<double>(ten_thousandths % 600000) / 10000.0;
    return stringprintf("%0*lld%07.4f,%c", digits, degrees, minutes, angle < 0.0 ? negative : positive);
}

std::tm Utc(double time)
{
    const auto seconds = static_cast<std::time_t>(time);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    return parts;
}

} // namespace

void CSentenceWriter::Add(const std::string& body)
{
    unsigned sum = 0;
    for (std::size_t i = 1; i < body.size(); ++i) sum ^= static_cast<unsigned char>(body[i]);
    text += body;
    appendprintf(text, "*%02X\r\n", sum);
    ++lines;
}

std::string LatitudeFields(double lat)
{
    return AngleFields(lat, 2, 'N', 'S');
}

std::string LongitudeFields(double lon)
{
    return AngleFields(lon, 3, 'E', 'W');
}

std::string TimeField(double time)
{
    const std::tm parts = Utc(time);
    return stringprintf("%02d%02d%02d.00", parts.tm_hour, parts.tm_min, parts.tm_sec);
}

std::string DateField(double time)
{
    const std::tm parts = Utc(time);
    return stringprintf("%02d%02d%02d", parts.tm_mday, parts.tm_mon + 1, parts.tm_year % 100);
}
