#include "tools/zt_nmea/sentence_fields.h"

#include "nmea/ais_sentences.h"
#include "nmea/gps_sentences.h"
#include "nmea/instrument_sentences.h"

#include <cstring>

using namespace CNMEA_GPS;
using namespace CNMEA_Instruments;

namespace {

void Describe(CJsonLine& json, const RMC& s)
{
    json("valid", s.valid)("latitude", s.latitude)("longitude", s.longitude)("time", s.time);
    json("speed", s.speed)("course", s.course)("variation", s.variation);
}

void Describe(CJsonLine& json, const GGA& s)
{
    json("latitude", s.latitude)("longitude", s.longitude)("altitude", s.altitude)("hdop", s.hdop);
    json("satellites", s.satellites)("quality", s.quality);
}

void Describe(CJsonLine& json, const VTG& s)
{
    json("speed", s.speed)("course", s.course);
}

void Describe(CJsonLine& json, const GSA& s)
{
    std::string list = "[";
    for (const int number : s.satellites) list += (list.size() > 1 ? ", " : "") + std::to_string(number);
    json("selection_mode", s.selection_mode)("fix_type", s.fix_type).Raw("satellites", list + "]");
    json("pdop", s.pdop)("hdop", s.hdop)("vdop", s.vdop);
}

void Describe(CJsonLine& json, const GSV& s)
{
    std::string list = "[";
    for (const GSV::Satellite& satellite : s.satellites) {
        CJsonLine one;
        one("prn", satellite.prn)("elevation", satellite.elevation)("azimuth", satellite.azimuth)("snr", satellite.snr);
        list += (list.size() > 1 ? ", " : "") + one.Object();
    }
    json("total_messages", s.total_messages)("message_number", s.message_number);
    json("satellites_in_view", s.satellites_in_view).Raw("satellites", list + "]");
}

void Describe(CJsonLine& json, const MWV& s)
{
    json("is_true", s.is_true)("speed", s.speed)("angle", s.angle);
}

void Describe(CJsonLine& json, const MWD& s)
{
    json("speed", s.speed)("direction", s.direction);
}

void Describe(CJsonLine& json, const VHW& s)
{
    json("has_speed", s.has_speed)("has_heading", s.has_heading)("speed", s.speed)("heading", s.heading);
}

void Describe(CJsonLine& json, const HDG& s)
{
    json("heading", s.heading)("variation", s.variation)("deviation", s.deviation);
}

void Describe(CJsonLine& json, const DPT& s)
{
    json("depth", s.depth)("offset_waterline", s.offset_waterline)("offset_keel", s.offset_keel);
}

void Describe(CJsonLine& json, const DBT& s)
{
    json("depth", s.depth);
}

void Describe(CJsonLine& json, const MTW& s)
{
    json("temperature", s.temperature);
}

void Describe(CJsonLine& json, const RPM& s)
{
    json("engine_1", s.engine_1)("engine_2", s.engine_2);
}

void Describe(CJsonLine& json, const RSA& s)
{
    json("angle", s.angle)("average", s.average)("smoothing", s.smoothing);
}

void Describe(CJsonLine& json, const XDR& s)
{
    json("first_type", s.first_type)("first_value", s.first_value)("first_name", s.first_name);
    json("second_type", s.second_type);
    if (s.second_type != 0) json("second_value", s.second_value)("second_name", s.second_name);
}

// The layouts of AIS messages. What they have in common comes first.

void Describe(CJsonLine&, const std::monostate&) {}

void DescribePlace(CJsonLine& json, const CNEMA_AIS::CPlace& s)
{
    json("latitude", s.latitude)("longitude", s.longitude);
}

void DescribeMotion(CJsonLine& json, const CNEMA_AIS::CMotion& s)
{
    DescribePlace(json, s);
    json("sog", s.sog)("cog", s.cog)("heading", s.heading)("time_stamp", s.time_stamp);
}

void DescribeDimensions(CJsonLine& json, const CNEMA_AIS::CDimensions& s)
{
    json("to_bow", s.to_bow)("to_stern", s.to_stern)("to_port", s.to_port)("to_starboard", s.to_starboard);
}

void Describe(CJsonLine& json, const CNEMA_AIS::CPositionReport& s)
{
    DescribeMotion(json, s);
    json("nav_status", s.nav_status)("rate_of_turn", s.rate_of_turn)("rot_valid", s.rot_valid);
}

void Describe(CJsonLine& json, const CNEMA_AIS::CBaseStation& s)
{
    DescribePlace(json, s);
    json("year", s.year)("month", s.month)("day", s.day)("hour", s.hour)("minute", s.minute)("second", s.second);
}

void Describe(CJsonLine& json, const CNEMA_AIS::CStaticVoyageData& s)
{
    json("imo", s.imo)("call_sign", s.call_sign)("name", s.name)("ship_type", s.ship_type);
    DescribeDimensions(json, s);
    json("eta_month", s.eta_month)("eta_day", s.eta_day)("eta_hour", s.eta_hour)("eta_minute", s.eta_minute);
    json("draught", s.draught)("destination", s.destination);
}

void Describe(CJsonLine& json, const CNEMA_AIS::CAircraft& s)
{
    DescribePlace(json, s);
    json("altitude", s.altitude)("speed", s.speed)("cog", s.cog)("time_stamp", s.time_stamp);
}

void Describe(CJsonLine& json, const CNEMA_AIS::CClassBPosition& s)
{
    DescribeMotion(json, s);
}

void Describe(CJsonLine& json, const CNEMA_AIS::CClassBExtended& s)
{
    DescribeMotion(json, s);
    DescribeDimensions(json, s);
    json("name", s.name)("ship_type", s.ship_type);
}

void Describe(CJsonLine& json, const CNEMA_AIS::CAidToNavigation& s)
{
    DescribePlace(json, s);
    json("aid_type", s.aid_type)("name", s.name)("dimension", s.dimension);
}

void Describe(CJsonLine& json, const CNEMA_AIS::CStaticDataReport& s)
{
    json("part", s.part)("name", s.name)("ship_type", s.ship_type)("vendor", s.vendor)("call_sign", s.call_sign);
    DescribeDimensions(json, s);
}

void Describe(CJsonLine& json, const CNEMA_AIS::CAIS_Sentence& s)
{
    json("channel", s.channel)("message_type", s.message_type)("mmsi", s.mmsi)("description", s.description);
    std::visit([&json](const auto& body) { Describe(json, body); }, s.body);
}

template <class T>
void DescribeAs(CJsonLine& json, const CNMEASentence& sentence)
{
    Describe(json, static_cast<const T&>(sentence));
}

struct CDescription {
    const char* type;
    void (*describe)(CJsonLine& json, const CNMEASentence& sentence);
};

constexpr CDescription kDescriptions[] = {
    {"RMC", DescribeAs<RMC>},
    {"GGA", DescribeAs<GGA>},
    {"VTG", DescribeAs<VTG>},
    {"GSA", DescribeAs<GSA>},
    {"GSV", DescribeAs<GSV>},
    {"MWV", DescribeAs<MWV>},
    {"MWD", DescribeAs<MWD>},
    {"VHW", DescribeAs<VHW>},
    {"HDG", DescribeAs<HDG>},
    {"DPT", DescribeAs<DPT>},
    {"DBT", DescribeAs<DBT>},
    {"MTW", DescribeAs<MTW>},
    {"RPM", DescribeAs<RPM>},
    {"RSA", DescribeAs<RSA>},
    {"XDR", DescribeAs<XDR>},
    {"VDM", DescribeAs<CNEMA_AIS::CAIS_Sentence>},
    {"VDO", DescribeAs<CNEMA_AIS::CAIS_Sentence>},
};

} // namespace

void DescribeFields(CJsonLine& json, const char* type, const CNMEASentence& sentence)
{
    for (const CDescription& row : kDescriptions)
        if (std::strcmp(row.type, type) == 0) return row.describe(json, sentence);
}
