#include "tools/voyage/boat_model.h"

#include <algorithm>

namespace {

/// As close to the true wind as the boat sails, degrees.
constexpr double kCloseHauled = 46.0;
constexpr double kTurnRate = 7.0;     ///< degrees a second
constexpr double kArrived = 220.0;    ///< metres from a leg's end
constexpr double kSwingRadius = 28.0; ///< metres round the anchor

/// Speed through the water at an angle off the true wind, knots: a plain polar of a 10 m yacht.
double PolarSpeed(double angle, double wind)
{
    const double off = std::fabs(TurnBetween(0.0, angle));
    if (off < 30.0) return 0.6;
    const double shape = std::clamp(0.55 + 0.45 * std::sin((off - 25.0) * kRadians), 0.0, 1.0);
    return 7.4 * shape * std::tanh(wind / 9.5);
}

} // namespace

double CBoatState::ApparentSpeed() const
{
    return (CVelocity::Polar(wind_from + 180.0, wind_speed) - ground).Speed();
}

double CBoatState::ApparentAngle() const
{
    const CVelocity blowing = CVelocity::Polar(wind_from + 180.0, wind_speed) - ground;
    return FoldCourse(blowing.Course() + 180.0 - heading);
}

CBoatModel::CBoatModel(double lat, double lon, std::vector<CLegEnd> with_legs, CWeather with_weather)
    : legs(std::move(with_legs)), weather(with_weather), start_lat(lat), start_lon(lon)
{
    state.lat = lat;
    state.lon = lon;
    grid.SetOrigin(lat, lon);
    state.wind_from = weather.WindFrom(0.0);
    state.wind_speed = weather.WindSpeed(0.0);
    if (!legs.empty()) state.heading = WantedHeading();
}

bool CBoatModel::Step()
{
    if (leg >= legs.size()) return false;
    state.seconds += 1.0;
    state.wind_from = weather.WindFrom(state.seconds);
    state.wind_speed = weather.WindSpeed(state.seconds);
    // A made-up bottom: shallower near an anchorage, otherwise rolling.
    const double sounding = 14.0 + 6.0 * std::sin(state.lon * 400.0) + 3.0 * std::sin(state.lat * 900.0);
    if (state.anchored) {
        SwingAtAnchor();
        state.depth += (5.5 - state.depth) * 0.01;
    } else {
        Sail();
        state.depth += (sounding - state.depth) * 0.01;
    }
    return leg < legs.size();
}

double CBoatModel::BearingToEnd() const
{
    double metres = 0.0;
    float bearing = 0.0F;
    grid.distance_and_bearing(state.lat, state.lon, Leg().lat, Leg().lon, metres, bearing);
    return static_cast<double>(bearing);
}

double CBoatModel::CrossTrack() const
{
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 0.0;
    double y1 = 0.0;
    double x = 0.0;
    double y = 0.0;
    grid.latlon_to_xy(start_lat, start_lon, x0, y0);
    grid.latlon_to_xy(Leg().lat, Leg().lon, x1, y1);
    grid.latlon_to_xy(state.lat, state.lon, x, y);
    const double length = std::hypot(x1 - x0, y1 - y0);
    if (length < 1.0) return 0.0;
    return ((x - x0) * (y1 - y0) - (y - y0) * (x1 - x0)) / length;
}

double CBoatModel::WantedHeading() const
{
    const double bearing = BearingToEnd();
    if (std::fabs(TurnBetween(state.wind_from, bearing)) >= kCloseHauled) return bearing;
    return FoldCourse(state.wind_from - tack * kCloseHauled);
}

void CBoatModel::ChooseTack()
{
    const double bearing = BearingToEnd();
    if (std::fabs(TurnBetween(state.wind_from, bearing)) >= kCloseHauled) {
        tack = TurnBetween(bearing, state.wind_from) >= 0.0 ? 1.0 : -1.0;
        return;
    }
    const double off = CrossTrack();
    const double towards = std::sin((state.ground.Course() - BearingToEnd()) * kRadians); // above 0: to the right
    if (std::fabs(off) > Leg().room && off * towards > 0.0) tack = -tack;
}

void CBoatModel::Sail()
{
    // A turn under way is finished first.
    if (std::fabs(TurnBetween(state.heading, WantedHeading())) < 5.0) ChooseTack();
    const double turn = TurnBetween(state.heading, WantedHeading());
    state.heading = FoldCourse(state.heading + std::clamp(turn, -kTurnRate, kTurnRate));
    const double wanted_speed = PolarSpeed(state.heading - state.wind_from, state.wind_speed);
    state.log_speed += (wanted_speed - state.log_speed) * 0.06;
    const double leeway = 4.0 * TurnBetween(state.wind_from, state.heading) / 180.0;
    Move(CVelocity::Polar(state.heading + leeway, state.log_speed) +
         CWeather::Stream(BearingToEnd(), Leg().stream, state.seconds));
    if (grid.distance(state.lat, state.lon, Leg().lat, Leg().lon) > kArrived) return;
    if (Leg().anchor_seconds > 0.0) {
        state.anchored = true;
        anchored_for = 0.0;
    } else {
        NextLeg();
    }
}

void CBoatModel::SwingAtAnchor()
{
    anchored_for += 1.0;
    // She lies downwind of the anchor, sheering to and fro; the way to that place is taken slowly.
    const double sheer = 22.0 * std::sin(anchored_for / 38.0);
    double x = 0.0;
    double y = 0.0;
    grid.latlon_to_xy(Leg().lat, Leg().lon, x, y);
    const CVelocity chain = CVelocity::Polar(state.wind_from + 180.0 + sheer, kSwingRadius);
    double own_x = 0.0;
    double own_y = 0.0;
    grid.latlon_to_xy(state.lat, state.lon, own_x, own_y);
    CVelocity drift{(x + chain.east - own_x) * 0.05, (y + chain.north - own_y) * 0.05};
    const double slow = std::min(1.0, 1.2 / std::max(drift.Speed(), 1e-9));
    drift = {drift.east * slow, drift.north * slow};
    const double turn = TurnBetween(state.heading, state.wind_from - 0.6 * sheer);
    state.heading = FoldCourse(state.heading + std::clamp(turn, -2.0, 2.0));
    state.log_speed *= 0.97;
    Move(drift);
    if (anchored_for >= Leg().anchor_seconds) NextLeg();
}

void CBoatModel::Move(const CVelocity& ground)
{
    state.ground = ground;
    double x = 0.0;
    double y = 0.0;
    grid.latlon_to_xy(state.lat, state.lon, x, y);
    grid.xy_to_latlon(x + ground.east * kKnot, y + ground.north * kKnot, state.lat, state.lon);
}

void CBoatModel::NextLeg()
{
    state.anchored = false;
    start_lat = Leg().lat;
    start_lon = Leg().lon;
    ++leg;
}
