#include "navdata/feeds/feed_gps_position.h"

#include "navdata/units.h"
#include "nmea/data_connection.h"
#include "overlays/gps_position.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

constexpr char kCombined = 'N'; ///< of GN
constexpr char kGPS = 'P';      ///< of GP

/// Status by the quality of GGA.
constexpr std::uint32_t kStatusOfQuality[] = {
    CDataGPSPosition::kNoFix,
    CDataGPSPosition::kFix,
    CDataGPSPosition::kDifferential,
    CDataGPSPosition::kPrecise,
    CDataGPSPosition::kRealTimeKinematic,
    CDataGPSPosition::kRealTimeKinematic,
    CDataGPSPosition::kEstimated,
    CDataGPSPosition::kManual,
    CDataGPSPosition::kSimulated,
};

COverlayGPSPosition& OwnShip()
{
    return COverlayGPSPosition::theLatestPosition;
}

/// A comparison with what is not a number is false.
bool IsPosition(double lat, double lon)
{
    return std::abs(lat) <= 90.0 && std::abs(lon) <= 180.0 && (lat != 0.0 || lon != 0.0);
}

bool IsSimulated(const CNMEASentence& sentence)
{
    return sentence.connection != nullptr && sentence.connection->simulated;
}

void TakeIfFinite(float& value, float taken)
{
    if (std::isfinite(taken)) value = taken;
}

} // namespace

CFeedRMC_to_GPSPosition CFeedRMC_to_GPSPosition::the_feed;

CFeedRMC_to_GPSPosition::CFeedRMC_to_GPSPosition()
{
    Listener<CNMEA_GPS::RMC>::Connect();
    Listener<CNMEA_GPS::GGA>::Connect();
    Listener<CNMEA_GPS::VTG>::Connect();
    Listener<CNMEA_GPS::GSV>::Connect();
    Listener<CNMEA_GPS::GSA>::Connect();
    Listener<CNMEA_Instruments::HDG>::Connect();
}

bool CFeedRMC_to_GPSPosition::check_talker(char talker, char& current)
{
    if (talker == current) return true;
    if (talker != kCombined) {
        if (OwnShip().status == CDataGPSPosition::kNoFix) {
            current = 0;
        } else if (current == kCombined || current == kGPS) {
            return false;
        }
    }
    current = talker;
    return true;
}

void CFeedRMC_to_GPSPosition::TakePosition(double lat, double lon)
{
    OwnShip().source_mark = this;
    OwnShip().set_latlon(lat, lon);
}

void CFeedRMC_to_GPSPosition::OnUpdate(CNMEA_GPS::RMC& sentence)
{
    if (!check_talker(sentence.talker, rmc_talker)) return;
    COverlayGPSPosition& ship = OwnShip();
    if (std::isfinite(sentence.time)) ship.time = sentence.time;
    if (!IsPosition(sentence.latitude, sentence.longitude)) return;
    TakePosition(sentence.latitude, sentence.longitude);
    ship.set_course(sentence.course, sentence.speed);
    if (!sentence.valid)
        ship.status = CDataGPSPosition::kNoFix;
    else if (IsSimulated(sentence))
        ship.status = CDataGPSPosition::kSimulated;
    else if (ship.status == CDataGPSPosition::kNoFix)
        ship.status = CDataGPSPosition::kFix;
    ship.DispatchPositionUpdate();
    rmc_seen = true;
}

void CFeedRMC_to_GPSPosition::OnUpdate(CNMEA_GPS::GGA& sentence)
{
    COverlayGPSPosition& ship = OwnShip();
    TakeIfFinite(ship.altitude, sentence.altitude);
    TakeIfFinite(ship.accuracy, sentence.hdop);
    ship.satellites_in_use = sentence.satellites;
    if (sentence.quality >= 0 && sentence.quality < static_cast<int>(std::size(kStatusOfQuality)))
        ship.status = kStatusOfQuality[sentence.quality];
    if (IsSimulated(sentence)) ship.status = CDataGPSPosition::kSimulated;
    gga_seen = true;
    if (rmc_seen || !IsPosition(sentence.latitude, sentence.longitude)) return;
    TakePosition(sentence.latitude, sentence.longitude);
    ship.time = Listener<CNMEA_GPS::GGA>::pDatasource->Timestamp(); // the sentence has no date
    ship.DispatchPositionUpdate();
}

void CFeedRMC_to_GPSPosition::OnUpdate(CNMEA_GPS::VTG& sentence)
{
    if (!rmc_seen) OwnShip().set_course(sentence.course, sentence.speed);
}

void CFeedRMC_to_GPSPosition::OnUpdate(CNMEA_GPS::GSA& sentence)
{
    std::copy(std::begin(sentence.satellites), std::end(sentence.satellites), std::begin(active));
    const auto none = std::count(std::begin(active), std::end(active), std::uint8_t{0});
    OwnShip().satellites_in_use = CNMEA_GPS::GSA::kChannels - static_cast<int>(none);
}

void CFeedRMC_to_GPSPosition::OnUpdate(CNMEA_GPS::GSV& sentence)
{
    if (!check_talker(sentence.talker, gsv_talker)) return;
    CDataGPSSatelliteSignals& sky = OwnShip();
    sky.satellites_in_view = sentence.satellites_in_view;
    if (sentence.message_number == 1) sky.ClearTable();
    constexpr int kMessages = CDataGPSSatelliteSignals::kSlots / CNMEA_GPS::GSV::kGroups;
    if (sentence.message_number >= 1 && sentence.message_number <= kMessages) {
        auto* slot = sky.table + (sentence.message_number - 1) * CNMEA_GPS::GSV::kGroups;
        for (const auto& heard : sentence.satellites) {
            if (heard.prn != 0) {
                const bool in_use = std::find(std::begin(active), std::end(active), heard.prn) != std::end(active);
                *slot = {heard.prn, heard.elevation, in_use, heard.azimuth, heard.snr};
            }
            ++slot;
        }
    }
    if (sentence.message_number == sentence.total_messages) DispatchToListeners(sky);
}

void CFeedRMC_to_GPSPosition::OnUpdate(CNMEA_Instruments::HDG& sentence)
{
    if (!std::isfinite(sentence.heading)) return;
    const float heading =
        COverlayGPSPosition::compass_cal.Adjust(sentence.heading) + CUnits::Default->magnetic_variation;
    OwnShip().set_heading(heading, Listener<CNMEA_Instruments::HDG>::pDatasource->Timestamp());
}
