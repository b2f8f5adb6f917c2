#include "tools/zt_nmea/log_pace.h"

#include "nmea/nmea_sentence.h"

#include <cmath>
#include <cstring>
#include <string>

namespace {

constexpr double kSecondsPerDay = 86400.0;
constexpr double kLongestStep = 60.0;
constexpr double kSecondsPerUntimedLine = 0.1;

/// The time of a sentence that has one, in seconds of the day.
std::optional<double> TimeOf(const char* line)
{
    const char* text = line + std::strcspn(line, "$!");
    if (*text == 0 || !CNMEASentence::check_checksum(text)) return std::nullopt;
    if (std::strncmp(text + 3, "RMC,", 4) != 0 && std::strncmp(text + 3, "GGA,", 4) != 0) return std::nullopt;
    std::string field(text + 7, std::strcspn(text + 7, ",*"));
    if (field.size() < 6) return std::nullopt;
    const std::size_t point = field.find('.');
    const double fraction = point == std::string::npos ? 0.0 : CNMEASentence::GetNumber(field.c_str() + point);
    return CNMEASentence::GetUTC(field.data()) + fraction;
}

} // namespace

double CLogPace::DueOf(const char* line)
{
    const std::optional<double> time = TimeOf(line);
    if (!time) {
        if (!last) due += kSecondsPerUntimedLine * factor;
        return due;
    }
    double step = last ? *time - *last : 0.0;
    if (step < -kSecondsPerDay / 2) step += kSecondsPerDay;
    if (step < 0.0 || step > kLongestStep) step = 1.0;
    last = time;
    due += step * factor;
    return due;
}
