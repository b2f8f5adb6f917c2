#include "nmea/gps_sentences.h"
#include "nmea/instrument_sentences.h"

#include <string>

#include <gtest/gtest.h>

using namespace CNMEA_GPS;
using namespace CNMEA_Instruments;

namespace {

/// Fills the sentence as a dispatch would; the checksum plays no part here.
bool Read(CNMEASentence& sentence, std::string text)
{
    text += "*00";
    return sentence.Init(text.data());
}

template <class T>
bool Takes(const char* text)
{
    T sentence;
    return Read(sentence, text);
}

} // namespace

TEST(GpsSentences, RecommendedMinimum)
{
    RMC rmc;
    ASSERT_TRUE(Read(rmc, "$GNRMC,123519.5,A,4807.038,N,01131.000,W,022.4,084.4,230394,003.1,W,D"));
    EXPECT_TRUE(rmc.valid);
    EXPECT_NEAR(rmc.latitude, 48.1173, 1e-12);
    EXPECT_NEAR(rmc.longitude, -(11 + 31.0 / 60), 1e-12);
    EXPECT_EQ(rmc.time, 3920140800.0 + 45319.0);
    EXPECT_EQ(rmc.speed, 22.4F);
    EXPECT_EQ(rmc.course, 84.4F);
    EXPECT_EQ(rmc.variation, 3.1F);
    EXPECT_EQ(rmc.talker, 'N');
    ASSERT_TRUE(Read(rmc, "$GPRMC,,V,0001.000,S,00002.000,E,,,,003.1,E"));
    EXPECT_EQ(rmc.variation, -3.1F);
    EXPECT_EQ(rmc.latitude, -1.0 / 60);
    EXPECT_EQ(rmc.speed, 0.0F);
}

TEST(GpsSentences, WhenARecommendedMinimumIsValid)
{
    struct CCase {
        const char* status;
        const char* mode;
        bool valid;
    };
    const CCase cases[] = {{"A", ",A", true}, {"A", ",N", true},  {"A", "", true},   {"V", "", false},
                           {"V", ",", false}, {"V", ",N", false}, {"V", ",E", true}, {"", "", false}};
    for (const CCase& c : cases) {
        RMC rmc;
        rmc.valid = !c.valid;
        EXPECT_TRUE(Read(rmc, std::string("$GPRMC,1,") + c.status + ",4807.038,N,01131.000,E,1,2,010120,," + c.mode));
        EXPECT_EQ(rmc.valid, c.valid) << c.status << c.mode;
        EXPECT_NEAR(rmc.latitude, 48.1173, 1e-12);
    }
}

TEST(GpsSentences, TimesOfDayAndDateAlone)
{
    RMC rmc;
    ASSERT_TRUE(Read(rmc, "$GPRMC,,A,,,,,,,150624,,"));
    EXPECT_EQ(rmc.time, 1718409600.0);
    ASSERT_TRUE(Read(rmc, "$GPRMC,000010,A,,,,,,,,,"));
    EXPECT_EQ(rmc.time, 10.0);
    ASSERT_TRUE(Read(rmc, "$GPRMC"));
    EXPECT_EQ(rmc.time, 0.0);
}

TEST(GpsSentences, Fix)
{
    GGA gga;
    ASSERT_TRUE(Read(gga, "$GPGGA,123519,4807.038,S,01131.000,E,2,08,0.9,-545.4,M,46.9,M,,"));
    EXPECT_NEAR(gga.latitude, -48.1173, 1e-12);
    EXPECT_NEAR(gga.longitude, 11 + 31.0 / 60, 1e-12);
    EXPECT_EQ(gga.quality, 2);
    EXPECT_EQ(gga.satellites, 8);
    EXPECT_EQ(gga.hdop, 0.9F);
    EXPECT_EQ(gga.altitude, -545.4F);
    EXPECT_EQ(gga.talker, 'P');
}

TEST(GpsSentences, CourseAndSpeed)
{
    VTG vtg;
    ASSERT_TRUE(Read(vtg, "$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K"));
    EXPECT_EQ(vtg.course, 54.7F);
    EXPECT_EQ(vtg.speed, 5.5F);
}

TEST(GpsSentences, SatellitesInUse)
{
    GSA gsa;
    ASSERT_TRUE(Read(gsa, "$GLGSA,A,3,65,,72,,,256,,,,,,88,2.5,1.3,2.1"));
    EXPECT_EQ(gsa.selection_mode, 'A');
    EXPECT_EQ(gsa.fix_type, 3);
    const std::uint8_t numbers[GSA::kChannels] = {65, 0, 72, 0, 0, 0, 0, 0, 0, 0, 0, 88};
    EXPECT_TRUE(std::equal(std::begin(numbers), std::end(numbers), gsa.satellites));
    EXPECT_EQ(gsa.pdop, 2.5F);
    EXPECT_EQ(gsa.hdop, 1.3F);
    EXPECT_EQ(gsa.vdop, 2.1F);
    EXPECT_EQ(gsa.talker, 'L');
}

TEST(GpsSentences, SatellitesInViewKeepTheLowByteOfTheAzimuth)
{
    GSV gsv;
    ASSERT_TRUE(Read(gsv, "$GPGSV,2,1,08,01,40,083,46,02,17,308,,12,07,344,39,14,22,256,45"));
    EXPECT_EQ(gsv.total_messages, 2);
    EXPECT_EQ(gsv.message_number, 1);
    EXPECT_EQ(gsv.satellites_in_view, 8);
    const int expected[GSV::kGroups][4] = {{1, 40, 83, 46}, {2, 17, 52, 0}, {12, 7, 88, 39}, {14, 22, 0, 45}};
    for (int i = 0; i < GSV::kGroups; ++i) {
        const GSV::Satellite& satellite = gsv.satellites[i];
        EXPECT_EQ(satellite.prn, expected[i][0]);
        EXPECT_EQ(satellite.elevation, expected[i][1]);
        EXPECT_EQ(satellite.azimuth, expected[i][2]);
        EXPECT_EQ(satellite.snr, expected[i][3]);
    }
    ASSERT_TRUE(Read(gsv, "$GPGSV,3,3,09,31,15,010,30"));
    EXPECT_EQ(gsv.satellites[0].prn, 31);
    EXPECT_EQ(gsv.satellites[1].prn, 0);
}

TEST(InstrumentSentences, WhatIsRefused)
{
    struct CCase {
        const char* text;
        bool taken;
        bool (*takes)(const char*);
    };
    const CCase cases[] = {
        {"$WIMWV,270,R,12,N,A", true, Takes<MWV>},
        {"$WIMWV,270,T,12,N,A", true, Takes<MWV>},
        {"$WIMWV,270,R,12,N,V", false, Takes<MWV>},
        {"$WIMWV,270,R,12,N", false, Takes<MWV>},
        {"$WIMWV,270,X,12,N,A", false, Takes<MWV>},
        {"$WIMWV", false, Takes<MWV>},
        {"$WIMWD,270,T,268,M,12,N,6.2,M", true, Takes<MWD>},
        {"$WIMWD,,,268,M,12,N,6.2,M", false, Takes<MWD>},
        {"$WIMWD,270,T,268,M,,,6.2,M", false, Takes<MWD>},
        {"$IIVHW,,,,,5.1,N,,", true, Takes<VHW>},
        {"$IIVHW,,,12.5,M,,,,", true, Takes<VHW>},
        {"$IIVHW,15.5,T,,,,,9.4,K", false, Takes<VHW>},
        {"$HCHDG", true, Takes<HDG>},
        {"$SDDPT", true, Takes<DPT>},
        {"$SDDBT,10.0,f,3.05,M,1.67,F", true, Takes<DBT>},
        {"$SDDBT,10.0,f,,,,", false, Takes<DBT>},
        {"$IIMTW,17.9,C", true, Takes<MTW>},
        {"$IIMTW,64.2,F", false, Takes<MTW>},
        {"$IIRPM,E,1,2418.2,10.5,A", true, Takes<RPM>},
        {"$IIRPM,E,1,2418.2,10.5,V", false, Takes<RPM>},
        {"$IIRSA,10.5,A", true, Takes<RSA>},
        {"$IIRSA,10.5,V", false, Takes<RSA>},
        {"$IIXDR", true, Takes<XDR>},
    };
    for (const CCase& c : cases) EXPECT_EQ(c.takes(c.text), c.taken) << c.text;
}

TEST(InstrumentSentences, WindSpeedsByUnit)
{
    struct CCase {
        char unit;
        double knots;
    };
    const CCase cases[] = {
        {'N', 1852.0}, {'M', 1.0}, {'S', 1852.0 / 1.1507794857025146}, {'K', 1852.0 * 0.53995680809021}, {'X', 1852.0}};
    for (const CCase& c : cases) {
        MWV mwv;
        ASSERT_TRUE(Read(mwv, std::string("$WIMWV,214.8,T,1852,") + c.unit + ",A"));
        EXPECT_FLOAT_EQ(mwv.speed, static_cast<float>(c.knots)) << c.unit;
        EXPECT_EQ(mwv.angle, 214.8F);
        EXPECT_TRUE(mwv.is_true);
    }
}

TEST(InstrumentSentences, FieldsInTheirPlaces)
{
    MWD mwd;
    ASSERT_TRUE(Read(mwd, "$WIMWD,270.5,T,268.1,M,12.2,N,6.3,M"));
    EXPECT_EQ(mwd.direction, 270.5F);
    EXPECT_EQ(mwd.speed, 12.2F);
    HDG hdg;
    ASSERT_TRUE(Read(hdg, "$HCHDG,98.3,1.5,E,12.6,W"));
    EXPECT_EQ(hdg.heading, 98.3F);
    EXPECT_EQ(hdg.deviation, 1.5F);
    EXPECT_EQ(hdg.variation, -12.6F);
    ASSERT_TRUE(Read(hdg, "$HCHDG,98.3,1.5,W,12.6,E"));
    EXPECT_EQ(hdg.deviation, -1.5F);
    EXPECT_EQ(hdg.variation, 12.6F);
    DBT dbt;
    ASSERT_TRUE(Read(dbt, "$SDDBT,10.0,f,3.05,M,1.67,F"));
    EXPECT_EQ(dbt.depth, 3.05F);
    MTW mtw;
    ASSERT_TRUE(Read(mtw, "$IIMTW,-1.9,C"));
    EXPECT_EQ(mtw.temperature, -1.9F);
}

TEST(InstrumentSentences, DepthOffsetsGoToOneSide)
{
    DPT dpt;
    ASSERT_TRUE(Read(dpt, "$SDDPT,12.3,-1.5"));
    EXPECT_EQ(dpt.depth, 12.3F);
    EXPECT_EQ(dpt.offset_keel, 1.5F);
    EXPECT_EQ(dpt.offset_waterline, 0.0F);
    ASSERT_TRUE(Read(dpt, "$SDDPT,12.3,0.5"));
    EXPECT_EQ(dpt.offset_keel, 0.0F);
    EXPECT_EQ(dpt.offset_waterline, 0.5F);
}

TEST(InstrumentSentences, WhatASentenceDoesNotTellStays)
{
    VHW vhw;
    ASSERT_TRUE(Read(vhw, "$IIVHW,,,12.5,M,6.5,N,,"));
    ASSERT_TRUE(Read(vhw, "$IIVHW,,,13.5,M,,,,"));
    EXPECT_FALSE(vhw.has_speed);
    EXPECT_EQ(vhw.speed, 6.5F);
    EXPECT_EQ(vhw.heading, 13.5F);
    RPM rpm;
    ASSERT_TRUE(Read(rpm, "$IIRPM,E,2,1800,,A"));
    EXPECT_EQ(rpm.engine_1, 0.0F);
    ASSERT_TRUE(Read(rpm, "$IIRPM,E,1,900,,A"));
    EXPECT_FALSE(Read(rpm, "$IIRPM,E,0,950,,V")); // counts as engine 1, and is stored all the same
    ASSERT_TRUE(Read(rpm, "$IIRPM,E,3,100,,A"));
    EXPECT_EQ(rpm.engine_1, 950.0F);
    EXPECT_EQ(rpm.engine_2, 1800.0F);
    MTW mtw;
    EXPECT_FALSE(Read(mtw, "$IIMTW,64.2,F"));
    EXPECT_EQ(mtw.temperature, 64.2F);
    DBT dbt;
    ASSERT_TRUE(Read(dbt, "$SDDBT,,f,3.05,M,,F"));
    EXPECT_FALSE(Read(dbt, "$SDDBT,,f,9,f,,F"));
    EXPECT_EQ(dbt.depth, 3.05F);
}

TEST(InstrumentSentences, RudderIsAveragedBySentences)
{
    RSA rsa;
    ASSERT_TRUE(Read(rsa, "$IIRSA,10,A"));
    EXPECT_EQ(rsa.average, 10.0F);
    ASSERT_TRUE(Read(rsa, "$IIRSA,-20,A"));
    EXPECT_FALSE(Read(rsa, "$IIRSA,99,V"));
    EXPECT_EQ(rsa.angle, -20.0F);
    EXPECT_FLOAT_EQ(rsa.average, 10.0F - 30.0F * 0.0115F);
}

TEST(InstrumentSentences, TransducerGroups)
{
    XDR xdr;
    ASSERT_TRUE(Read(xdr, "$IIXDR,A,5.5,D,PITCH,A,-3.5,D,ROLL"));
    EXPECT_EQ(xdr.first_type, 'A');
    EXPECT_EQ(xdr.first_value, 5.5F);
    EXPECT_EQ(xdr.first_name, "PITCH");
    EXPECT_EQ(xdr.second_type, 'A');
    EXPECT_EQ(xdr.second_value, -3.5F);
    EXPECT_EQ(xdr.second_name, "ROLL");
    ASSERT_TRUE(Read(xdr, "$IIXDR,P,1.013,B,Barometer"));
    EXPECT_EQ(xdr.first_name, "Barometer");
    EXPECT_EQ(xdr.second_type, 0);
}

TEST(Sentences, AbsurdNumbersReadAsNone)
{
    for (const char* number : {"1e30", "-1e30", "nan", "inf", "-inf", "1000000001", "99999999999999999999", "1e400"}) {
        const std::string n = number;
        HDG hdg;
        ASSERT_TRUE(Read(hdg, "$HCHDG," + n + "," + n + ",W," + n + ",W"));
        EXPECT_EQ(hdg.heading, 0.0F) << n;
        EXPECT_EQ(hdg.variation, 0.0F) << n;
        GSV gsv;
        ASSERT_TRUE(Read(gsv, "$GPGSV,1,1," + n));
        EXPECT_LE(std::abs(gsv.satellites_in_view), 1) << n; // whole numbers end at the "e"
        RSA rsa;
        ASSERT_TRUE(Read(rsa, "$IIRSA," + n + ",A"));
        EXPECT_EQ(rsa.average, 0.0F) << n;
    }
    VTG vtg;
    ASSERT_TRUE(Read(vtg, "$GPVTG,1e9,T,,M,-999999999,N"));
    EXPECT_EQ(vtg.speed, -1e6F);
    EXPECT_EQ(vtg.course, 1e9F);
    MWV mwv;
    ASSERT_TRUE(Read(mwv, "$WIMWV,1,R,5000000,N,A"));
    EXPECT_EQ(mwv.speed, 1e6F);
}
