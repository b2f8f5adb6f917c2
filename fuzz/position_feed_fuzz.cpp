#include "built_seeds.h"
#include "core/clock.h"
#include "core/heartbeat.h"
#include "navdata/feeds/feed_gps_position.h"
#include "overlays/gps_position.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

double clock_now = 1.7e9;

/// Sentence fields out of the fuzzer's bytes: half of the numbers are ordinary, half any bit pattern.
class CFields {
public:
    CFields(const std::uint8_t* data, std::size_t size) : at(data), end(data + size) {}
    bool more() const { return at < end; }
    std::uint8_t byte() { return more() ? *at++ : 0; }
    template <class T>
    T any()
    {
        T value{};
        auto* const bytes = reinterpret_cast<std::uint8_t*>(&value);
        for (std::size_t i = 0; i < sizeof value; ++i) bytes[i] = byte();
        return value;
    }
    template <class T>
    T number(double scale, double offset = 0.0)
    {
        if ((byte() & 1) != 0) return any<T>();
        return static_cast<T>(any<std::int16_t>() / 32768.0 * scale + offset);
    }
    char talker() { return "PNLA"[byte() & 3]; }

private:
    const std::uint8_t* at;
    const std::uint8_t* end;
};

void SendRMC(CFeedRMC_to_GPSPosition& feed, CFields& fields)
{
    CNMEA_GPS::RMC rmc;
    rmc.talker = fields.talker();
    rmc.valid = (fields.byte() & 3) != 0;
    rmc.latitude = fields.number<double>(95.0);
    rmc.longitude = fields.number<double>(190.0);
    rmc.time = fields.number<double>(1000.0, clock_now);
    rmc.speed = fields.number<float>(30.0);
    rmc.course = fields.number<float>(400.0);
    feed.OnUpdate(rmc);
}

void SendGGA(CFeedRMC_to_GPSPosition& feed, CFields& fields)
{
    CNMEA_GPS::GGA gga;
    gga.talker = fields.talker();
    gga.latitude = fields.number<double>(95.0);
    gga.longitude = fields.number<double>(190.0);
    gga.altitude = fields.number<float>(1000.0);
    gga.hdop = fields.number<float>(30.0);
    gga.satellites = fields.number<int>(20.0);
    gga.quality = fields.number<int>(12.0);
    feed.OnUpdate(gga);
}

void SendSky(CFeedRMC_to_GPSPosition& feed, CFields& fields)
{
    CNMEA_GPS::GSA gsa;
    for (auto& satellite : gsa.satellites) satellite = fields.byte();
    feed.OnUpdate(gsa);
    CNMEA_GPS::GSV gsv;
    gsv.talker = fields.talker();
    gsv.total_messages = fields.number<int>(8.0);
    gsv.message_number = fields.number<int>(8.0);
    gsv.satellites_in_view = fields.number<int>(30.0);
    for (auto& heard : gsv.satellites)
        heard = {fields.byte(), fields.byte(), fields.byte(), fields.any<std::uint16_t>()};
    feed.OnUpdate(gsv);
}

void SendMotion(CFeedRMC_to_GPSPosition& feed, CFields& fields)
{
    CNMEA_GPS::VTG vtg;
    vtg.speed = fields.number<float>(30.0);
    vtg.course = fields.number<float>(400.0);
    feed.OnUpdate(vtg);
    CNMEA_Instruments::HDG hdg;
    hdg.heading = fields.number<float>(400.0);
    feed.OnUpdate(hdg);
}

void Require(bool holds)
{
    if (!holds) __builtin_trap();
}

struct CDispatched : Listener<CDataGPSPosition> {
    CDispatched() { Connect(); }
    void OnUpdate(CDataGPSPosition& ship) override
    {
        Require(std::abs(ship.latitude) <= 90.0 && std::abs(ship.longitude) <= 180.0);
        Require(std::isfinite(ship.time) && std::isfinite(ship.accuracy) && std::isfinite(ship.altitude));
        Require(ship.status <= CDataGPSPosition::kManual);
        Require(ship.speed >= 0.0F && ship.speed <= 1e6F && std::isfinite(ship.course));
        Require(std::isfinite(ship.average_speed) && std::isfinite(ship.average_course));
        Require(std::isfinite(ship.compass.heading));
        for (const float part : {ship.best_sin, ship.best_cos, ship.average_sin, ship.average_cos, ship.heading_sin,
                                 ship.heading_cos, ship.course_sin, ship.course_cos})
            Require(std::abs(part) <= 1.001F);
        Require(std::isfinite(ship.get_heading()) && std::isfinite(ship.get_speed()));
    }
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    SetClock([] { return clock_now; });
    // To some 20 sentences, twice what the history of positions holds.
    AddBuiltSeeds(argc, argv, {std::string(40, 0)}, 400);
    return 0;
}

/// Sentences with absurd values, ticks and settings in any order: the position stays one, and the averages finite.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    COverlayGPSPosition& ship = COverlayGPSPosition::theLatestPosition;
    ship.reset_history();
    ship.odometer_total = 0.0;
    CDispatched dispatched;
    CFeedRMC_to_GPSPosition feed;
    CFields fields(data, size);
    while (fields.more()) {
        switch (fields.byte() % 7) {
        case 0:
        case 1:
            SendRMC(feed, fields);
            break;
        case 2:
            SendGGA(feed, fields);
            break;
        case 3:
            SendSky(feed, fields);
            break;
        case 4:
            SendMotion(feed, fields);
            break;
        case 5:
            // Less than the watchdog's 50, or more.
            for (int ticks = fields.byte() % 2 == 0 ? 1 : 51; ticks > 0; --ticks) CHeartbeat::TheHeartbeat.Pulse();
            break;
        default:
            clock_now += fields.byte();
        }
        Listener<CNMEA_GPS::GGA>::pDatasource->ClearTimestamp();
        Listener<CNMEA_Instruments::HDG>::pDatasource->ClearTimestamp();
        Require(std::isfinite(ship.odometer()) && ship.odometer() >= 0.0);
    }
    return 0;
}
