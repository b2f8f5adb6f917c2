#include "core/clock.h"
#include "navdata/feeds/feed_gps_position.h"
#include "navdata/feeds/feed_gps_time.h"
#include "navdata/units.h"
#include "nmea/data_connection.h"
#include "overlays/gps_position.h"
#include "support/allocation_counter.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace {

using Ship = COverlayGPSPosition;
using Status = CDataGPSPosition::Status;

constexpr double kNow = 1.7e9;

struct CSimulatedConnection : CDataConnection {
    bool Open() override { return true; }
    void Close() override {}
};

struct CPositionLog : Listener<CDataGPSPosition>, Listener<CDataGPSSatelliteSignals> {
    CPositionLog()
    {
        Listener<CDataGPSPosition>::Connect();
        Listener<CDataGPSSatelliteSignals>::Connect();
    }
    void OnUpdate(CDataGPSPosition&) override { ++positions; }
    void OnUpdate(CDataGPSSatelliteSignals&) override { ++skies; }
    int positions = 0;
    int skies = 0;
};

/// A feed of its own, so that what it has seen does not reach the next test.
class PositionFeed : public testing::Test {
protected:
    void SetUp() override
    {
        SetClock([] { return kNow; });
        Reset();
    }
    void TearDown() override
    {
        Reset();
        SetClock(nullptr);
    }
    static void Reset()
    {
        static_cast<CDataSpeedDirection&>(ship) = CDataSpeedDirection();
        ship.set_latlon(999.0, 999.0);
        ship.status = Status::kNoFix;
        ship.time = 0.0;
        ship.accuracy = 0.0F;
        ship.altitude = -99999.0F;
        ship.source_mark = nullptr;
        ship.reset_history();
        ship.ClearTable();
        ship.satellites_in_use = ship.satellites_in_view = 0;
        ship.compass_cal = {};
        CDataSource::timestamp_correction = 0.0;
        Listener<CNMEA_GPS::GGA>::pDatasource->ClearTimestamp();
        Listener<CNMEA_Instruments::HDG>::pDatasource->ClearTimestamp();
    }
    template <class Sentence>
    void Send(Sentence& sentence)
    {
        feed->OnUpdate(sentence);
    }
    bool SendRMC(char talker, double lat, double lon, bool valid = true)
    {
        CNMEA_GPS::RMC rmc;
        rmc.talker = talker;
        rmc.latitude = lat;
        rmc.longitude = lon;
        rmc.valid = valid;
        rmc.time = clock += 1.0;
        rmc.speed = 5.0F;
        rmc.course = 90.0F;
        const int before = log.positions;
        Send(rmc);
        return log.positions > before;
    }
    void SendGGA(double lat, double lon, int quality)
    {
        CNMEA_GPS::GGA gga;
        gga.talker = 'P';
        gga.latitude = lat;
        gga.longitude = lon;
        gga.quality = quality;
        gga.satellites = 7;
        gga.hdop = 1.25F;
        gga.altitude = 12.5F;
        Send(gga);
    }
    void SendGSV(int number, int total, int first_prn, char talker = 'P')
    {
        CNMEA_GPS::GSV gsv;
        gsv.talker = talker;
        gsv.message_number = number;
        gsv.total_messages = total;
        gsv.satellites_in_view = 12;
        for (auto& heard : gsv.satellites) heard = {static_cast<std::uint8_t>(first_prn++), 40, 200, 33};
        Send(gsv);
    }

    static constexpr Ship& ship = Ship::theLatestPosition;
    CPositionLog log;
    std::optional<CFeedRMC_to_GPSPosition> feed{std::in_place};
    double clock = kNow;
};

TEST_F(PositionFeed, OneReceiverWins)
{
    const struct {
        const char* name;
        bool fix;
        std::string talkers;
        std::string taken;
    } cases[] = {
        {"combined_over_all", true, "PNPLN", "PNN"},
        {"gps_over_others", true, "LPLAP", "LPP"},
        {"the_first_of_others_gives_way_to_the_next", true, "LAL", "LAL"},
        {"without_fix_anybody", false, "NPLAN", "NPLAN"},
    };
    for (const auto& c : cases) {
        ship.status = c.fix ? Status::kFix : Status::kNoFix;
        char current = 0;
        std::string taken;
        for (const char talker : c.talkers)
            if (CFeedRMC_to_GPSPosition::check_talker(talker, current)) taken += talker;
        EXPECT_EQ(taken, c.taken) << c.name;
    }
}

TEST_F(PositionFeed, ARefusedReceiverTakesOverWhenTheFixIsLost)
{
    EXPECT_TRUE(SendRMC('N', 50.0, -1.0));
    EXPECT_FALSE(SendRMC('P', 51.0, -1.0));
    EXPECT_EQ(ship.latitude, 50.0);
    EXPECT_TRUE(SendRMC('N', 50.0, -1.0, false));
    EXPECT_EQ(ship.status, Status::kNoFix);
    EXPECT_TRUE(SendRMC('P', 51.0, -1.0));
    EXPECT_EQ(ship.latitude, 51.0);
}

TEST_F(PositionFeed, WhatIsNoPositionIsRefused)
{
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInf = std::numeric_limits<double>::infinity();
    constexpr struct {
        const char* name;
        double lat, lon;
        bool taken;
    } cases[] = {
        {"null_island", 0.0, 0.0, false},
        {"on_the_equator", 0.0, 3.0, true},
        {"on_greenwich", 3.0, 0.0, true},
        {"pole", 90.0, 0.0, true},
        {"antimeridian", 10.0, -180.0, true},
        {"beyond_the_pole", 90.01, 0.0, false},
        {"too_far_east", 1.0, 180.5, false},
        {"not_a_number", kNan, 1.0, false},
        {"lon_not_a_number", 1.0, kNan, false},
        {"infinite", 1.0, -kInf, false},
        {"absurd", 1e9, 1e9, false},
    };
    for (const auto& c : cases) {
        Reset();
        EXPECT_EQ(SendRMC('P', c.lat, c.lon), c.taken) << c.name;
        EXPECT_EQ(ship.latitude <= 90.0, c.taken) << c.name;
        EXPECT_EQ(ship.time, clock) << c.name << ": the time is taken in any case";
        CFeedRMC_to_GPSPosition gga_only;
        CNMEA_GPS::GGA gga;
        gga.latitude = c.lat;
        gga.longitude = c.lon;
        const int before = log.positions;
        gga_only.OnUpdate(gga);
        EXPECT_EQ(log.positions > before, c.taken) << c.name;
    }
}

TEST_F(PositionFeed, StatusFollowsTheSentences)
{
    constexpr std::uint32_t kStatus[] = {0, 1, 2, 6, 5, 5, 4, 7, 3};
    for (int quality = 0; quality <= 8; ++quality) {
        SendGGA(0.0, 0.0, quality);
        EXPECT_EQ(ship.status, kStatus[quality]) << quality;
    }
    for (const int quality : {9, -1, 1000000000}) {
        SendGGA(0.0, 0.0, quality);
        EXPECT_EQ(ship.status, Status::kSimulated) << quality << " leaves the last one";
    }
    SendGGA(0.0, 0.0, 2);
    SendRMC('P', 50.0, -1.0);
    EXPECT_EQ(ship.status, Status::kDifferential) << "RMC does not spoil a better fix";
    SendRMC('P', 50.0, -1.0, false);
    EXPECT_EQ(ship.status, Status::kNoFix);
    EXPECT_EQ(ship.latitude, 50.0);
    SendRMC('P', 50.0, -1.0);
    EXPECT_EQ(ship.status, Status::kFix);

    CSimulatedConnection connection;
    connection.simulated = true;
    CNMEA_GPS::RMC rmc;
    rmc.talker = 'P';
    rmc.connection = &connection;
    rmc.valid = true;
    rmc.latitude = 50.0;
    Send(rmc);
    EXPECT_EQ(ship.status, Status::kSimulated);
    CNMEA_GPS::GGA gga;
    gga.connection = &connection;
    gga.quality = 1;
    Send(gga);
    EXPECT_EQ(ship.status, Status::kSimulated);
}

TEST_F(PositionFeed, OtherSentencesGiveWayToTheFirstRMC)
{
    CNMEA_GPS::VTG vtg;
    vtg.course = 45.0F;
    vtg.speed = 7.0F;
    Send(vtg);
    SendGGA(40.0, 5.0, 1);
    EXPECT_EQ(ship.latitude, 40.0);
    EXPECT_EQ(ship.time, kNow) << "GGA has no date";
    EXPECT_EQ(ship.speed, 7.0F);
    EXPECT_EQ(ship.best_source, CDataSpeedDirection::kCourseOverGround);
    EXPECT_EQ(ship.source_mark, static_cast<const void*>(&*feed));

    EXPECT_TRUE(SendRMC('P', 50.0, -1.0));
    const int positions = log.positions;
    SendGGA(41.0, 6.0, 2);
    Send(vtg);
    EXPECT_EQ(log.positions, positions);
    EXPECT_EQ(ship.latitude, 50.0);
    EXPECT_EQ(ship.course, 90.0F);
    EXPECT_EQ(ship.status, Status::kDifferential);
    EXPECT_EQ(ship.altitude, 12.5F);
    EXPECT_EQ(ship.accuracy, 1.25F);
    EXPECT_EQ(ship.satellites_in_use, 7);
}

TEST_F(PositionFeed, SatellitesFillTheirSlots)
{
    CNMEA_GPS::GSA gsa;
    gsa.satellites[0] = 12;
    gsa.satellites[11] = 31;
    Send(gsa);
    EXPECT_EQ(ship.satellites_in_use, 2);
    SendGSV(1, 3, 11);
    SendGSV(3, 3, 31); // the second was lost
    EXPECT_EQ(log.skies, 1);
    for (int slot = 0; slot < CDataGPSSatelliteSignals::kSlots; ++slot) {
        const bool filled = slot < 4 || (slot >= 8 && slot < 12);
        EXPECT_EQ(ship.table[slot].prn != 0, filled) << slot;
        EXPECT_EQ(ship.table[slot].in_use, slot == 1 || slot == 8) << slot;
    }
    EXPECT_EQ(ship.table[0].a, 40);
    EXPECT_EQ(ship.table[0].b, 200);
    EXPECT_EQ(ship.table[0].c, 33);

    for (const int number : {0, -1, 7, 1000000000, -2000000000}) SendGSV(number, 3, 90);
    for (const auto& satellite : ship.table) EXPECT_LT(satellite.prn, 90);
    ship.status = Status::kFix;
    SendGSV(1, 1, 60, 'L');
    EXPECT_EQ(ship.table[0].prn, 11) << "another receiver's sky";
    SendGSV(1, 1, 0);
    EXPECT_EQ(ship.table[0].prn, 0) << "the first message clears the table, and satellite 0 is none";
    EXPECT_EQ(ship.table[1].prn, 1) << "an empty group still takes its slot";
}

TEST_F(PositionFeed, HeadingIsCorrectedAndWaitsForThePosition)
{
    ship.compass_cal.SetText("10,10,10,10,10,10,10,10,10,10,10,10");
    const float variation = CUnits::Default->magnetic_variation;
    CUnits::Default->magnetic_variation = -3.0F;
    CNMEA_Instruments::HDG hdg;
    hdg.heading = 355.0F;
    const int before = log.positions;
    Send(hdg);
    EXPECT_EQ(ship.compass.heading, 2.0F);
    EXPECT_EQ(log.positions, before);
    for (const float absurd : {9999.0F, -9999.0F, 360.0F, NAN, INFINITY}) {
        hdg.heading = absurd;
        Send(hdg);
        EXPECT_TRUE(ship.compass.heading >= 0.0F && ship.compass.heading <= 360.0F) << absurd;
    }
    CUnits::Default->magnetic_variation = variation;
}

TEST_F(PositionFeed, ThroughTheWireAndWithoutAllocation)
{
    const auto send = [](const char* text) {
        char line[200];
        std::snprintf(line, sizeof line - 4, "%s", text);
        CNMEASentence::compute_checksum(line);
        return CNMEASentence::DispatchSentence(line, nullptr);
    };
    const auto round = [&] {
        send("$GPRMC,120000,A,5030.000,N,00115.000,W,5.5,123.0,010126,,,A");
        send("$GPGGA,120000,5030.000,N,00115.000,W,1,08,0.9,10.0,M,,M,,");
        send("$GPGSA,A,3,01,02,03,,,,,,,,,,1.5,0.9,1.2");
        send("$GPGSV,1,1,03,01,40,083,46,02,17,308,41,03,07,344,39");
        send("$HCHDG,101.1,,,7.1,W");
    };
    feed.reset(); // the program's own feed is connected
    for (int i = 0; i < 10; ++i) round();
    EXPECT_EQ(ship.latitude, 50.5);
    EXPECT_EQ(ship.longitude, -1.25);
    EXPECT_EQ(ship.satellites_in_use, 3);
    const int before = log.positions;
    const CAllocationCounter allocations;
    for (int i = 0; i < 1000; ++i) round();
    EXPECT_EQ(allocations.Count(), 0U);
    EXPECT_EQ(log.positions - before, 1000);
}

TEST_F(PositionFeed, TimeStampsFollowARealFixOnly)
{
    constexpr struct {
        const char* name;
        std::uint32_t status;
        double time, correction;
    } cases[] = {
        {"real_fix", Status::kFix, kNow + 37.0, 37.0},
        {"receiver_behind", Status::kDifferential, kNow - 3600.0, -3600.0},
        {"no_fix", Status::kNoFix, kNow + 5.0, 0.5},
        {"simulated", Status::kSimulated, kNow + 5.0, 0.5},
        {"no_date", Status::kFix, 43200.0, 0.5},
        {"last_second_without_date", Status::kFix, 999999999.0, 0.5},
        {"not_a_number", Status::kFix, NAN, 0.5},
        {"the_programs_own_time", Status::kFix, kNow + 0.5 - 0.001, 0.5},
    };
    for (const auto& c : cases) {
        CDataSource::timestamp_correction = 0.5;
        CDataGPSPosition position;
        position.status = c.status;
        position.time = c.time;
        DispatchToListeners(position);
        EXPECT_EQ(CDataSource::timestamp_correction, c.correction) << c.name;
    }
}

} // namespace
