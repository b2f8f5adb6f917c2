#pragma once

#include "core/simple_grid.h"
#include "tools/voyage/weather.h"

#include <vector>

/// One leg's end, and how much room the boat has to tack on the way there.
struct CLegEnd {
    double lat = 0.0;            ///< degrees
    double lon = 0.0;            ///< degrees
    double room = 0.0;           ///< metres to either side of the leg
    double stream = 0.0;         ///< knots of the tidal stream along the leg at its strongest
    double anchor_seconds = 0.0; ///< above 0: the boat anchors there so long
};

/// What the instruments of the boat show at one moment.
struct CBoatState {
    double seconds = 0.0;    ///< since the start
    double lat = 0.0;        ///< degrees
    double lon = 0.0;        ///< degrees
    double heading = 0.0;    ///< degrees true
    double log_speed = 0.0;  ///< knots through the water
    CVelocity ground;        ///< knots over ground
    double wind_from = 0.0;  ///< degrees true, over ground
    double wind_speed = 0.0; ///< knots, over ground
    double depth = 12.0;     ///< metres below the transducer
    bool anchored = false;

    /// Apparent wind: knots, and degrees off the bow, 0 .. below 360.
    double ApparentSpeed() const;
    double ApparentAngle() const;
};

/// A cruising yacht that sails from leg to leg: close-hauled with tacks inside the leg's room when the wind is ahead,
/// straight when it is not, set by the stream all the while. Advances by whole seconds.
class CBoatModel {
public:
    CBoatModel(double lat, double lon, std::vector<CLegEnd> legs, CWeather with_weather = {});
    /// One second on; false when the last leg has ended.
    bool Step();
    const CBoatState& State() const { return state; }

private:
    const CLegEnd& Leg() const { return legs[leg]; }
    /// The course to steer for on this leg, degrees true.
    double WantedHeading() const;
    /// Tacks when the boat runs out of room, and back when the other tack lays the leg's end.
    void ChooseTack();
    void Sail();
    void SwingAtAnchor();
    void Move(const CVelocity& ground);
    void NextLeg();
    double BearingToEnd() const;
    /// Metres right of the line from the leg's start to its end.
    double CrossTrack() const;

    std::vector<CLegEnd> legs;
    CWeather weather;
    CSimpleGrid grid;
    CBoatState state;
    std::size_t leg = 0;
    double start_lat;          ///< of the leg
    double start_lon;          ///< of the leg
    double tack = 1.0;         ///< 1: wind from starboard, -1: from port
    double anchored_for = 0.0; ///< seconds
};
