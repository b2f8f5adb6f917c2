#include "tools/voyage/satellite_sky.h"

#include "core/text.h"
#include "tools/voyage/angles.h"

#include <algorithm>

namespace {

constexpr int kNumbers[] = {2, 5, 7, 9, 13, 14, 16, 20, 21, 26, 27, 29, 30, 31};
constexpr double kOrbit = 11.97 * 3600.0; ///< seconds
constexpr int kChannels = 12;
constexpr std::size_t kInMessage = 4;

} // namespace

CSatelliteSky::CSatelliteSky(double seconds)
{
    for (const int prn : kNumbers) {
        const double phase = 2.0 * std::numbers::pi * (seconds / kOrbit + prn * 0.618);
        const int elevation = static_cast<int>(80.0 * std::sin(phase));
        if (elevation < 3) continue;
        const int azimuth = static_cast<int>(FoldCourse(prn * 137.5 + seconds / kOrbit * 180.0));
        above.push_back({prn, elevation, azimuth, 22 + elevation / 4});
    }
    above.resize(std::min<std::size_t>(above.size(), kChannels));
}

int CSatelliteSky::InUse() const
{
    return static_cast<int>(std::count_if(above.begin(), above.end(), [](const CSatellite& s) { return s.InUse(); }));
}

void CSatelliteSky::Write(CSentenceWriter& out) const
{
    std::string used = "$GPGSA,A,3";
    int channels = 0;
    for (const CSatellite& satellite : above) {
        if (!satellite.InUse()) continue;
        appendprintf(used, ",%02d", satellite.prn);
        ++channels;
    }
    used.append(static_cast<std::size_t>(kChannels - channels), ',');
    out.Add(used + ",1.7,0.9,1.4");

    const std::size_t messages = (above.size() + kInMessage - 1) / kInMessage;
    for (std::size_t message = 0; message < messages; ++message) {
        std::string view = stringprintf("$GPGSV,%zu,%zu,%02zu", messages, message + 1, above.size());
        const std::size_t last = std::min(above.size(), (message + 1) * kInMessage);
        for (std::size_t i = message * kInMessage; i < last; ++i) {
            appendprintf(view, ",%02d,%02d,%03d,%02d", above[i].prn, above[i].elevation, above[i].azimuth,
                         above[i].snr);
        }
        out.Add(view);
    }
}
