#include "nmea/instrument_sentences.h"

#include "core/nautical_mile.h"
#include "nmea/nmea_sentence_type.h"

namespace CNMEA_Instruments {

// Field numbers count from the sentence head, which is field 0.

class MWV::Type : public CNMEASentenceTypeOf<MWV> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class MWD::Type : public CNMEASentenceTypeOf<MWD> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class VHW::Type : public CNMEASentenceTypeOf<VHW> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class HDG::Type : public CNMEASentenceTypeOf<HDG> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class DPT::Type : public CNMEASentenceTypeOf<DPT> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class DBT::Type : public CNMEASentenceTypeOf<DBT> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class MTW::Type : public CNMEASentenceTypeOf<MTW> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class RPM::Type : public CNMEASentenceTypeOf<RPM> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class RSA::Type : public CNMEASentenceTypeOf<RSA> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};
class XDR::Type : public CNMEASentenceTypeOf<XDR> {
    using CNMEASentenceTypeOf::CNMEASentenceTypeOf;
};

MWV::Type MWV::type("MWV");
MWD::Type MWD::type("MWD");
VHW::Type VHW::type("VHW");
HDG::Type HDG::type("HDG");
DPT::Type DPT::type("DPT");
DBT::Type DBT::type("DBT");
MTW::Type MTW::type("MTW");
RPM::Type RPM::type("RPM");
RSA::Type RSA::type("RSA");
XDR::Type XDR::type("XDR");

namespace {

/// A speed in the unit that the letter tells, in knots.
double ToKnots(double speed, char unit)
{
    constexpr double kMilesPerNauticalMile = 1.1507794857025146;
    constexpr double kNauticalMilesPerKilometre = 0.53995680809021;
    switch (unit) {
    case 'M':
        return speed / kMetresPerNauticalMile;
    case 'S':
        return speed / kMilesPerNauticalMile;
    case 'K':
        return speed * kNauticalMilesPerKilometre;
    default:
        return speed;
    }
}

} // namespace

bool MWV::Init(char* text)
{
    constexpr int kFields = 6;
    char* field[kFields];
    Split(text, kFields, field);
    const char reference = *field[2];
    angle = GetFloat(field[1]);
    speed = LimitSpeed(ToKnots(GetNumber(field[3]), *field[4]));
    is_true = reference == 'T';
    return *field[5] == 'A' && (reference == 'R' || reference == 'T');
}

bool MWD::Init(char* text)
{
    constexpr int kFields = 8;
    char* field[kFields];
    Split(text, kFields, field);
    if (*field[2] != 'T' || *field[6] != 'N') return false;
    direction = GetFloat(field[1]);
    speed = GetSpeed(field[5]);
    return true;
}

bool VHW::Init(char* text)
{
    constexpr int kFields = 7;
    char* field[kFields];
    Split(text, kFields, field);
    has_heading = *field[4] == 'M';
    has_speed = *field[6] == 'N';
    if (has_heading) heading = GetFloat(field[3]);
    if (has_speed) speed = GetSpeed(field[5]);
    return has_heading || has_speed;
}

bool HDG::Init(char* text)
{
    constexpr int kFields = 6;
    char* field[kFields];
    Split(text, kFields, field);
    heading = GetFloat(field[1]);
    deviation = GetFloat(field[2]);
    if (*field[3] == 'W') deviation = -deviation;
    variation = GetFloat(field[4]);
    if (*field[5] == 'W') variation = -variation;
    return true;
}

bool DPT::Init(char* text)
{
    constexpr int kFields = 3;
    char* field[kFields];
    Split(text, kFields, field);
    depth = GetFloat(field[1]);
    const float offset = GetFloat(field[2]);
    offset_waterline = offset < 0.0F ? 0.0F : offset;
    offset_keel = offset < 0.0F ? -offset : 0.0F;
    return true;
}

bool DBT::Init(char* text)
{
    constexpr int kFields = 6;
    char* field[kFields];
    Split(text, kFields, field);
    if (*field[4] != 'M') return false;
    depth = GetFloat(field[3]);
    return true;
}

bool MTW::Init(char* text)
{
    constexpr int kFields = 3;
    char* field[kFields];
    Split(text, kFields, field);
    temperature = GetFloat(field[1]);
    return *field[2] == 'C';
}

bool RPM::Init(char* text)
{
    constexpr int kFields = 6;
    char* field[kFields];
    Split(text, kFields, field);
    const int engine = GetWhole(field[2]);
    if (engine < 2) engine_1 = GetFloat(field[3]);
    if (engine == 2) engine_2 = GetFloat(field[3]);
    return *field[5] == 'A';
}

bool RSA::Init(char* text)
{
    constexpr int kFields = 3;
    char* field[kFields];
    Split(text, kFields, field);
    if (*field[2] != 'A') return false;
    Update(GetFloat(field[1]));
    return true;
}

void RSA::Update(float new_angle)
{
    constexpr float kSmoothing = 0.9885F;
    angle = new_angle;
    average = (1.0F - smoothing) * new_angle + smoothing * average;
    smoothing = kSmoothing;
}

bool XDR::Init(char* text)
{
    constexpr int kFields = 10;
    char* field[kFields];
    Split(text, kFields, field);
    first_type = *field[1];
    first_value = GetFloat(field[2]);
    first_name = field[4];
    second_type = *field[5];
    if (second_type == 0) return true;
    second_value = GetFloat(field[6]);
    second_name = field[8];
    return true;
}

} // namespace CNMEA_Instruments
