#pragma once

#include <cstdint>
#include <variant>

/// What AIS messages carry, after Recommendation ITU-R M.1371-5, annex 8: plain records, one a layout. A field whose
/// bits were not received holds what the Recommendation calls "not available", which is each field's initial value.
namespace CNEMA_AIS {

constexpr double kNoLatitude = 91.0;   ///< degrees
constexpr double kNoLongitude = 181.0; ///< degrees
constexpr float kNoCourse = 360.0F;    ///< degrees; this and above
constexpr float kNoHeading = 511.0F;   ///< degrees

/// Room for `characters` of text: written in pieces of eight, with a NUL behind.
constexpr int TextRoom(int characters)
{
    return (characters + 7) / 8 * 8 + 1;
}

struct CPlace {
    double longitude = kNoLongitude; ///< degrees, east positive
    double latitude = kNoLatitude;   ///< degrees, north positive
};

struct CMotion : CPlace {
    float sog = 0.0F;             ///< knots over ground; 0 when not available or above 100
    float cog = kNoCourse;        ///< degrees true, over ground
    float heading = kNoHeading;   ///< degrees true
    std::uint8_t time_stamp = 60; ///< second of the minute, UTC; 60 and above: none
};

/// Metres from the antenna; all 0 when not available.
struct CDimensions {
    std::uint16_t to_bow = 0;
    std::uint16_t to_stern = 0;
    std::uint8_t to_port = 0;
    std::uint8_t to_starboard = 0;
};

/// Types 1, 2 and 3: a class A ship.
struct CPositionReport : CMotion {
    std::uint8_t nav_status = 15; ///< 15: not defined
    float rate_of_turn = 0.0F;    ///< degrees a minute, to starboard positive
    bool rot_valid = false;
};

/// Types 4 and 11: a base station, and the answer to a question for the time.
struct CBaseStation : CPlace {
    std::uint16_t year = 0; ///< UTC; 0: none
    std::uint8_t month = 0;
    std::uint8_t day = 0;
    std::uint8_t hour = 24;
    std::uint8_t minute = 60;
    std::uint8_t second = 60;
};

/// Type 5: a class A ship and her voyage.
struct CStaticVoyageData : CDimensions {
    std::uint32_t imo = 0;
    char call_sign[TextRoom(7)] = {};
    char name[TextRoom(20)] = {};
    std::uint8_t ship_type = 0;
    std::uint8_t eta_month = 0; ///< UTC
    std::uint8_t eta_day = 0;
    std::uint8_t eta_hour = 24;
    std::uint8_t eta_minute = 60;
    float draught = 0.0F; ///< metres
    char destination[TextRoom(20)] = {};
};

/// Type 9: a search and rescue aircraft.
struct CAircraft : CPlace {
    std::uint16_t altitude = 4095; ///< metres; 4095: not available
    float speed = 1023.0F;         ///< knots; 1023: not available
    float cog = kNoCourse;         ///< degrees true
    std::uint8_t time_stamp = 60;
};

/// Type 18: a class B ship.
struct CClassBPosition : CMotion {};

/// Type 19: a class B ship with what she is.
struct CClassBExtended : CMotion, CDimensions {
    char name[TextRoom(20)] = {};
    std::uint8_t ship_type = 0;
};

/// Type 21.
struct CAidToNavigation : CPlace {
    std::uint8_t aid_type = 0;
    char name[TextRoom(20)] = {};
    std::uint16_t dimension = 0; ///< metres
};

/// Type 24: part 0 is the name, part 1 the rest; other parts are empty.
struct CStaticDataReport : CDimensions {
    std::uint8_t part = 3;
    char name[TextRoom(20)] = {};
    std::uint8_t ship_type = 0;
    char vendor[TextRoom(7)] = {};
    char call_sign[TextRoom(7)] = {};
};

/// One of the layouts, or none for an unfinished message and for types that are not taken apart.
using CMessageBody = std::variant<std::monostate, CPositionReport, CBaseStation, CStaticVoyageData, CAircraft,
                                  CClassBPosition, CClassBExtended, CAidToNavigation, CStaticDataReport>;

} // namespace CNEMA_AIS
