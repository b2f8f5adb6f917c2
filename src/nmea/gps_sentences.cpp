#include "nmea/gps_sentences.h"

#include "nmea/nmea_sentence_type.h"

namespace CNMEA_GPS {

// Field numbers count from the sentence head, which is field 0.

class RMC::Type : public CNMEASentenceTypeOf<RMC> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class GGA::Type : public CNMEASentenceTypeOf<GGA> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class VTG::Type : public CNMEASentenceTypeOf<VTG> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class GSA::Type : public CNMEASentenceTypeOf<GSA> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class GSV::Type : public CNMEASentenceTypeOf<GSV> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};

RMC::Type RMC::type("RMC");
GGA::Type GGA::type("GGA");
VTG::Type VTG::type("VTG");
GSA::Type GSA::type("GSA");
GSV::Type GSV::type("GSV");

bool RMC::Init(char* text)
{
    constexpr int kFields = 13;
    char* field[kFields];
    talker = text[2];
    Split(text, kFields, field);
    const char mode = *field[12];
    valid = *field[2] == 'A' || (mode != 0 && mode != 'N');
    latitude = GetLat(field + 3);
    longitude = GetLon(field + 5);
    speed = GetSpeed(field[7]);
    course = GetFloat(field[8]);
    time = GetUTC(field[1]) + GetDate(field[9]);
    variation = GetFloat(field[10]);
    if (*field[11] == 'E') variation = -variation;
    return true;
}

bool GGA::Init(char* text)
{
    constexpr int kFields = 14;
    char* field[kFields];
    talker = text[2];
    Split(text, kFields, field);
    latitude = GetLat(field + 2);
    longitude = GetLon(field + 4);
    quality = GetWhole(field[6]);
    satellites = GetWhole(field[7]);
    hdop = GetFloat(field[8]);
    altitude = GetFloat(field[9]);
    return true;
}

bool VTG::Init(char* text)
{
    constexpr int kFields = 6;
    char* field[kFields];
    talker = text[2];
    Split(text, kFields, field);
    course = GetFloat(field[1]);
    speed = GetSpeed(field[5]);
    return true;
}

bool GSA::Init(char* text)
{
    constexpr int kFields = 18;
    char* field[kFields];
    talker = text[2];
    Split(text, kFields, field);
    selection_mode = *field[1];
    fix_type = static_cast<std::uint8_t>(GetWhole(field[2]));
    for (int i = 0; i < kChannels; ++i) satellites[i] = static_cast<std::uint8_t>(GetWhole(field[3 + i]));
    pdop = GetFloat(field[15]);
    hdop = GetFloat(field[16]);
    vdop = GetFloat(field[17]);
    return true;
}

bool GSV::Init(char* text)
{
    constexpr int kFields = 20;
    char* field[kFields];
    talker = text[2];
    Split(text, kFields, field);
    total_messages = GetWhole(field[1]);
    message_number = GetWhole(field[2]);
    satellites_in_view = GetWhole(field[3]);
    char** group = field + 4;
    for (Satellite& satellite : satellites) {
        satellite.prn = static_cast<std::uint8_t>(GetWhole(group[0]));
        satellite.elevation = static_cast<std::uint8_t>(GetWhole(group[1]));
        satellite.azimuth = static_cast<std::uint8_t>(GetWhole(group[2]));
        satellite.snr = static_cast<std::uint16_t>(GetWhole(group[3]));
        group += 4;
    }
    return true;
}

} // namespace CNMEA_GPS
