#include "tools/voyage/voyage.h"

#include "core/text.h"
#include "tools/voyage/satellite_sky.h"
#include "tools/voyage/traffic.h"

#include <cmath>

namespace {

constexpr double kVariationEast = 0.3; ///< degrees, of the region in 2026
constexpr double kSatellitesEvery = 30.0;
constexpr double kTemperatureEvery = 60.0;

void WritePosition(CSentenceWriter& out, const CBoatState& boat, double time)
{
    const std::string place = LatitudeFields(boat.lat) + "," + LongitudeFields(boat.lon);
    const std::string clock = TimeField(time);
    const double course = boat.ground.Course();
    const double speed = boat.ground.Speed();
    out.Add(stringprintf("$GPRMC,%s,A,%s,%.2f,%.1f,%s,%.1f,E,A", clock.c_str(), place.c_str(), speed, course,
                         DateField(time).c_str(), kVariationEast));
    out.Add(stringprintf("$GPGGA,%s,%s,1,%02d,0.9,2.1,M,47.6,M,,", clock.c_str(), place.c_str(),
                         CSatelliteSky(boat.seconds).InUse()));
    out.Add(stringprintf("$GPVTG,%.1f,T,%.1f,M,%.2f,N,%.2f,K,A", course, FoldCourse(course - kVariationEast), speed,
                         speed * 1.852));
}

void WriteInstruments(CSentenceWriter& out, const CBoatState& boat)
{
    const double magnetic = FoldCourse(boat.heading - kVariationEast);
    // Wind over the water, seen from the bow: what an instrument system calls true.
    const double true_angle = FoldCourse(boat.wind_from - boat.heading);
    out.Add(stringprintf("$IIHDG,%.1f,,,%.1f,E", magnetic, kVariationEast));
    out.Add(stringprintf("$IIVHW,%.1f,T,%.1f,M,%.2f,N,%.2f,K", boat.heading, magnetic, boat.log_speed,
                         boat.log_speed * 1.852));
    out.Add(stringprintf("$IIMWV,%.1f,R,%.1f,N,A", boat.ApparentAngle(), boat.ApparentSpeed()));
    out.Add(stringprintf("$IIMWV,%.1f,T,%.1f,N,A", true_angle, boat.wind_speed));
    out.Add(stringprintf("$IIMWD,%.1f,T,%.1f,M,%.1f,N,%.1f,M", boat.wind_from,
                         FoldCourse(boat.wind_from - kVariationEast), boat.wind_speed, boat.wind_speed * kKnot));
    out.Add(stringprintf("$IIDPT,%.1f,-1.4", boat.depth));
}

} // namespace

CBoatModel SolentVoyage()
{
    return {50.672,
            -1.632,
            {
                {50.7005, -1.5540, 150.0, 1.8},         // before Hurst Narrows
                {50.7140, -1.5210, 110.0, 2.6},         // through them
                {50.7330, -1.4550, 550.0, 2.3},         // West Solent
                {50.7615, -1.3650, 600.0, 2.0},         // off Newtown and Gurnard
                {50.7830, -1.2900, 380.0, 1.8},         // off Cowes
                {50.7640, -1.1950, 900.0, 1.2},         // Ryde Middle
                {50.7470, -1.0900, 900.0, 1.0},         // Spithead
                {50.7060, -1.0750, 600.0, 0.6, 1320.0}, // St Helens Road: at anchor
                {50.6880, -1.0200, 500.0, 0.8},         // round Bembridge Ledge
                {50.6550, -0.9400, 900.0, 1.0},         // past the Nab
            }};
}

std::string WriteVoyage(CBoatModel boat, const CVoyageOptions& options)
{
    CSentenceWriter out;
    const std::vector<CTrafficShip> ships = options.traffic ? SolentTraffic() : std::vector<CTrafficShip>();
    double next_fix = 1.0;
    while (boat.Step()) {
        const CBoatState& state = boat.State();
        if (state.seconds < next_fix) continue;
        next_fix += options.interval;
        const double time = options.start_time + state.seconds;
        WritePosition(out, state, time);
        WriteInstruments(out, state);
        const auto comes_round = [&](double period) { return std::fmod(state.seconds, period) < options.interval; };
        if (comes_round(kSatellitesEvery)) CSatelliteSky(state.seconds).Write(out);
        if (comes_round(kTemperatureEvery)) {
            out.Add(stringprintf("$IIMTW,%.1f,C", 14.2 + 0.4 * std::sin(state.seconds / 4000.0)));
        }
        WriteTraffic(out, ships, state.seconds, options.interval, options.start_time);
    }
    return out.Text();
}
