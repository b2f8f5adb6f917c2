#include "navdata/feeds/ais_target.h"

#include <cmath>
#include <iterator>

using namespace CNEMA_AIS;

namespace {

struct CStatus {
    const char* text;
    QRgb colour;
};

constexpr QRgb kHamperedColour = 0xFFC832C8;
constexpr QRgb kRestingColour = 0xFF808080;
/// By the navigation status of a position report.
constexpr CStatus kStatus[] = {
    {"Under way using engine", 0xFF00DC00},
    {"At anchor", kRestingColour},
    {"NOT UNDER COMMAND", kHamperedColour},
    {"RESTRICTED MANOEVRABILITY", kHamperedColour},
    {"CONSTRAINED BY DRAFT", kHamperedColour},
    {"Moored", kRestingColour},
    {"AGROUND", kHamperedColour},
    {"FISHING", kHamperedColour},
    {"Under way sailing", 0xFF0094EA},
};
constexpr QRgb kDistressColour = 0xFFFF0000;
constexpr QRgb kAircraftColour = 0xFF6464C8;
constexpr QRgb kClassBColour = 0xFF64C864;
constexpr QRgb kAidColour = 0xFFA00073;

constexpr float kNoAircraftSpeed = 1023.0F;   ///< knots
constexpr std::uint32_t kAuxiliaryCraft = 98; ///< first two of nine digits

} // namespace

bool IsPlace(const CPlace& place)
{
    return std::abs(place.latitude) < 90.0 && std::abs(place.longitude) < 180.0 &&
           (place.latitude != 0.0 || place.longitude != 0.0);
}

void CAISTarget::Take(const VDM& message)
{
    last_message = message.message_type;
    std::visit(
        [&]<class Body>(const Body& body) {
            if constexpr (std::is_same_v<Body, CClassBPosition>)
                TakeClassB(body);
            else if constexpr (requires { Take(body, message.description); })
                Take(body, message.description);
            else if constexpr (requires { Take(body); })
                Take(body);
        },
        message.body);
}

void CAISTarget::Take(const CPositionReport& report)
{
    if (!TakeMotion(report)) return;
    class_text = "Class A";
    rate_of_turn = report.rate_of_turn;
    nav_status = report.nav_status;
    const CStatus& now = kStatus[nav_status < std::size(kStatus) ? nav_status : 0];
    status_text = now.text;
    colour = QColor::fromRgba(now.colour);
    ClassifyTransmitter();
}

void CAISTarget::Take(const CStaticVoyageData& ship, const char* description)
{
    class_text = "Class A";
    TakeName(ship.name);
    type_text.assign(description);
    TakeSize(ship);
    SetDetails("\"%s\" Type:%s LOA:%dm\nCallsign:%s, MMSI:%u\nDest:%s, ETA:%02d:%02d %d/%d", name.c_str(), description,
               Length(), ship.call_sign, mmsi, ship.destination, ship.eta_hour, ship.eta_minute, ship.eta_day,
               ship.eta_month);
}

void CAISTarget::Take(const CAircraft& aircraft)
{
    if (!TakePlace(aircraft)) return;
    class_text = "Aircraft";
    altitude = aircraft.altitude;
    course = compass.heading = aircraft.cog;
    speed = aircraft.speed < kNoAircraftSpeed ? aircraft.speed : 0.0F;
    colour = QColor::fromRgba(kAircraftColour);
}

bool CAISTarget::TakeClassB(const CMotion& motion)
{
    if (!TakeMotion(motion)) return false;
    class_text = "Class B";
    status_text = "n/a";
    colour = QColor::fromRgba(kClassBColour);
    return true;
}

void CAISTarget::Take(const CClassBExtended& ship, const char* description)
{
    if (!TakeClassB(ship)) return;
    TakeName(ship.name);
    type_text.assign(description);
    TakeSize(ship);
    SetClassBDetails();
}

void CAISTarget::Take(const CAidToNavigation& aid)
{
    if (!TakePlace(aid)) return;
    class_text = "Aid to Navigation";
    type_text.assign(class_text);
    TakeName(aid.name);
    speed = 0.0F;
    course = compass.heading = kNoHeading;
    colour = QColor::fromRgba(kAidColour);
    SetDetails("\"%s\" Aid to Navigation, Type:%d, MMSI:%u", name.c_str(), aid.aid_type, mmsi);
}

void CAISTarget::Take(const CStaticDataReport& report, const char* description)
{
    if (report.part > 1) return;
    if (report.part == 0) {
        TakeName(report.name);
    } else {
        type_text.assign(description);
        TakeSize(report);
    }
    SetClassBDetails();
}

bool CAISTarget::TakePlace(const CPlace& place)
{
    if (!IsPlace(place)) return false;
    latitude = place.latitude;
    longitude = place.longitude;
    return true;
}

bool CAISTarget::TakeMotion(const CMotion& motion)
{
    if (!TakePlace(motion)) return false;
    speed = motion.sog;
    course = motion.cog;
    compass.heading = motion.heading < 360.0F ? motion.heading : kNoHeading;
    return true;
}

void CAISTarget::TakeName(const char* sent)
{
    if (*sent != 0) name.assign(sent); // a blank name says that it is not available
}

void CAISTarget::TakeSize(const CDimensions& sent)
{
    // An auxiliary craft sends the MMSI of her mother ship in this place.
    constexpr std::uint32_t kBehindTwoDigits = 10'000'000;
    if (mmsi / kBehindTwoDigits == kAuxiliaryCraft) return;
    if (sent.to_bow + sent.to_stern + sent.to_port + sent.to_starboard > 0) size = sent;
}

void CAISTarget::ClassifyTransmitter()
{
    if (!mmsi_text.starts_with("97")) return;
    colour = QColor::fromRgba(kDistressColour);
    switch (mmsi_text.size() > 2 ? mmsi_text[2] : ' ') {
    case '2':
        class_text = "Man Overboard";
        break;
    case '4':
        class_text = "EPIRB";
        break;
    case '0':
        class_text = "Search and Rescue Transponder";
        break;
    default:
        break;
    }
}

void CAISTarget::SetClassBDetails()
{
    SetDetails("\"%s\" Type:%s, LOA:%dm\nClass B MMSI:%u", name.c_str(), type_text.c_str(), Length(), mmsi);
}

void CAISTarget::TakeListed(const std::string& listed_name, const std::string& listed_type,
                            const std::string& call_sign)
{
    if (name.empty()) name = listed_name;
    if (type_text.empty()) type_text = listed_type;
    if (*class_text == 0) class_text = "Instant";
    if (!details.empty()) return;
    if (mmsi_text.starts_with("97"))
        ClassifyTransmitter();
    else
        SetDetails("\"%s\" Type:%s Callsign:%s, MMSI:%u", name.c_str(), type_text.c_str(), call_sign.c_str(), mmsi);
}
