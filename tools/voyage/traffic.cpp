#include "tools/voyage/traffic.h"

#include "core/simple_grid.h"
#include "tools/voyage/angles.h"

#include <cmath>

namespace {

constexpr double kStaticEvery = 360.0; ///< seconds
constexpr double kClassAEvery = 12.0;
constexpr double kClassBEvery = 30.0;
constexpr double kAnchoredEvery = 180.0;

struct CSegment {
    CTrafficShip::CPlace from;
    CTrafficShip::CPlace to;
    double metres;
    float course;
};

std::vector<CSegment> SegmentsOf(const std::vector<CTrafficShip::CPlace>& way)
{
    std::vector<CSegment> segments;
    for (std::size_t i = 1; i < way.size(); ++i) {
        CSegment segment{way[i - 1], way[i], 0.0, 0.0F};
        CSimpleGrid grid;
        grid.SetOrigin(segment.from.lat, segment.from.lon);
        grid.distance_and_bearing(segment.from.lat, segment.from.lon, segment.to.lat, segment.to.lon, segment.metres,
                                  segment.course);
        segments.push_back(segment);
    }
    return segments;
}

/// Whether something that comes every `period` seconds, offset by the ship's number, falls into the interval.
bool Due(double seconds, double interval, double period, std::uint32_t mmsi)
{
    const double offset = std::fmod(static_cast<double>(mmsi % 1000U), period);
    return std::floor((seconds + offset) / period) != std::floor((seconds - interval + offset) / period);
}

} // namespace

CAisMotion CTrafficShip::At(double seconds) const
{
    CAisMotion motion{way.front().lat, way.front().lon, 0.0, 0.0, 0.0, 0};
    const std::vector<CSegment> segments = SegmentsOf(way);
    double length = 0.0;
    for (const CSegment& segment : segments) length += segment.metres;
    if (speed <= 0.0 || length <= 0.0) return motion;

    double along = std::fmod(start_metres + speed * kKnot * seconds, 2.0 * length);
    const bool back = along > length;
    if (back) along = 2.0 * length - along;
    for (const CSegment& segment : segments) {
        if (along <= segment.metres || &segment == &segments.back()) {
            const double part = std::min(along / segment.metres, 1.0);
            motion.lat = std::lerp(segment.from.lat, segment.to.lat, part);
            motion.lon = std::lerp(segment.from.lon, segment.to.lon, part);
            motion.course = FoldCourse(static_cast<double>(segment.course) + (back ? 180.0 : 0.0));
            break;
        }
        along -= segment.metres;
    }
    motion.speed = speed;
    motion.heading = motion.course;
    return motion;
}

std::vector<CTrafficShip> SolentTraffic()
{
    const std::vector<CTrafficShip::CPlace> deep_water = {
        {50.700, -0.960}, {50.742, -1.070}, {50.765, -1.200}, {50.792, -1.270}, {50.830, -1.320}};
    std::vector<CTrafficShip> ships;
    ships.push_back({{235900101, 9900101, "ZTAA1", "SOLENT TRADER", 70, 150, 40, 14, 16, 10.2, "SOUTHAMPTON"},
                     false,
                     12.5,
                     deep_water,
                     0.0});
    ships.push_back({{235900102, 9900102, "ZTAA2", "NORTHERN PEARL", 80, 170, 35, 15, 17, 9.1, "FAWLEY"},
                     false,
                     11.0,
                     deep_water,
                     17000.0});
    ships.push_back({{235900103, 9900103, "ZTAA3", "WIGHT SWIFT", 60, 20, 20, 8, 8, 2.4, "EAST COWES"},
                     false,
                     14.0,
                     {{50.885, -1.390}, {50.830, -1.320}, {50.795, -1.285}, {50.770, -1.285}},
                     2000.0});
    ships.push_back({{235900104, 9900104, "ZTAA4", "HURST ROVER", 60, 30, 30, 8, 8, 2.2, "YARMOUTH IOW"},
                     false,
                     9.5,
                     {{50.737, -1.515}, {50.712, -1.500}},
                     500.0});
    ships.push_back({{235900105, 9900105, "ZTAA5", "CHANNEL GIANT", 71, 250, 80, 20, 22, 12.5, "FOR ORDERS"},
                     false,
                     0.0,
                     {{50.690, -1.020}},
                     0.0});
    ships.push_back({{235900106, 0, "ZTBB1", "MERRY DANCER", 36, 6, 6, 2, 2, 0.0, {}},
                     true,
                     5.5,
                     {{50.700, -1.560}, {50.735, -1.450}, {50.770, -1.340}},
                     3000.0});
    ships.push_back({{235900107, 0, "ZTBB2", "GREY SEAL", 37, 8, 5, 2, 2, 0.0, {}},
                     true,
                     7.0,
                     {{50.765, -1.230}, {50.755, -1.120}, {50.720, -1.060}},
                     0.0});
    ships.push_back({{235900108, 0, "ZTBB3", "LITTLE AUK", 36, 5, 4, 1, 2, 0.0, {}},
                     true,
                     4.5,
                     {{50.790, -1.300}, {50.755, -1.390}, {50.728, -1.480}},
                     1000.0});
    return ships;
}

void WriteTraffic(CSentenceWriter& out, const std::vector<CTrafficShip>& ships, double seconds, double interval,
                  double start_time)
{
    int sequence = 0;
    for (const CTrafficShip& ship : ships) {
        const std::uint32_t mmsi = ship.data.mmsi;
        const char channel = mmsi % 2 == 0 ? 'A' : 'B';
        const double every = ship.speed <= 0.0 ? kAnchoredEvery : ship.class_b ? kClassBEvery : kClassAEvery;
        if (Due(seconds, interval, every, mmsi)) {
            CAisMotion motion = ship.At(seconds);
            motion.second = static_cast<int>(std::fmod(start_time + seconds, 60.0));
            const int status = ship.speed > 0.0 ? 0 : 1;
            WriteAis(out, ship.class_b ? PositionReportB(mmsi, motion) : PositionReportA(mmsi, status, motion), 0,
                     channel);
        }
        sequence = (sequence + 1) % 10;
        if (!Due(seconds, interval, kStaticEvery, mmsi)) continue;
        if (ship.class_b) {
            WriteAis(out, StaticDataB(ship.data, false), 0, channel);
            WriteAis(out, StaticDataB(ship.data, true), 0, channel);
        } else {
            WriteAis(out, StaticDataA(ship.data), sequence, channel);
        }
    }
}
