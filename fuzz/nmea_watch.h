#pragma once

#include "nmea/ais_sentences.h"
#include "nmea/gps_sentences.h"
#include "nmea/instrument_sentences.h"
#include "nmea/nmea_raw.h"

#include "core/listener.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <tuple>

/// Ends the run when a number is one that no field can mean.
inline void CheckNumber(double number, double most = 1e9)
{
    if (!(std::abs(number) <= most)) std::abort();
}

constexpr double kMostSpeed = 1e6;
constexpr std::size_t kLongestSentence = 256; ///< that a target sends

inline void Check(CNMEA_GPS::RMC& s)
{
    CheckNumber(s.latitude);
    CheckNumber(s.longitude);
    CheckNumber(s.time, 1e13);
    CheckNumber(s.speed, kMostSpeed);
    CheckNumber(s.course);
    CheckNumber(s.variation);
}
inline void Check(CNMEA_GPS::GGA& s)
{
    CheckNumber(s.latitude);
    CheckNumber(s.longitude);
    CheckNumber(s.altitude);
    CheckNumber(s.hdop);
    CheckNumber(s.satellites);
}
inline void Check(CNMEA_GPS::VTG& s)
{
    CheckNumber(s.speed, kMostSpeed);
    CheckNumber(s.course);
}
inline void Check(CNMEA_GPS::GSA& s)
{
    CheckNumber(s.pdop);
    CheckNumber(s.hdop);
    CheckNumber(s.vdop);
}
inline void Check(CNMEA_GPS::GSV& s)
{
    CheckNumber(s.total_messages);
    CheckNumber(s.message_number);
    CheckNumber(s.satellites_in_view);
}
inline void Check(CNMEA_Instruments::MWV& s)
{
    CheckNumber(s.speed, kMostSpeed);
    CheckNumber(s.angle);
}
inline void Check(CNMEA_Instruments::MWD& s)
{
    CheckNumber(s.speed, kMostSpeed);
    CheckNumber(s.direction);
}
inline void Check(CNMEA_Instruments::VHW& s)
{
    CheckNumber(s.speed, kMostSpeed);
    CheckNumber(s.heading);
}
inline void Check(CNMEA_Instruments::HDG& s)
{
    CheckNumber(s.heading);
    CheckNumber(s.variation);
    CheckNumber(s.deviation);
}
inline void Check(CNMEA_Instruments::DPT& s)
{
    CheckNumber(s.depth);
    CheckNumber(s.offset_keel);
    CheckNumber(s.offset_waterline);
}
inline void Check(CNMEA_Instruments::DBT& s)
{
    CheckNumber(s.depth);
}
inline void Check(CNMEA_Instruments::MTW& s)
{
    CheckNumber(s.temperature);
}
inline void Check(CNMEA_Instruments::RPM& s)
{
    CheckNumber(s.engine_1);
    CheckNumber(s.engine_2);
}
inline void Check(CNMEA_Instruments::RSA& s)
{
    CheckNumber(s.angle);
    CheckNumber(s.average);
}
inline void Check(CNMEA_Instruments::XDR& s)
{
    CheckNumber(s.first_value);
    CheckNumber(s.second_value);
    if (std::max(s.first_name.size(), s.second_name.size()) > kLongestSentence) std::abort();
}
inline void Check(CNEMA_AIS::CAIS_Sentence& s)
{
    if (s.bit_count < 0 || s.bit_count > s.kMostBits || std::strlen(s.description) > 24) std::abort();
}
inline void Check(CNMEA_Raw& raw)
{
    const std::size_t length = strnlen(raw.text, sizeof raw.text);
    if (length == sizeof raw.text || (length != 0 && std::strcmp(raw.text + length - 2, "\r\n") != 0)) std::abort();
}

template <class T>
class CWatch : public Listener<T> {
public:
    CWatch() { this->Connect(); }
    void OnUpdate(T& data) override { Check(data); }
};

/// Hears every class of sentence, and the raw text.
template <class... T>
using CWatches = std::tuple<CWatch<T>...>;

using CWatchOfAll =
    CWatches<CNMEA_GPS::RMC, CNMEA_GPS::GGA, CNMEA_GPS::VTG, CNMEA_GPS::GSA, CNMEA_GPS::GSV, CNMEA_Instruments::MWV,
             CNMEA_Instruments::MWD, CNMEA_Instruments::VHW, CNMEA_Instruments::HDG, CNMEA_Instruments::DPT,
             CNMEA_Instruments::DBT, CNMEA_Instruments::MTW, CNMEA_Instruments::RPM, CNMEA_Instruments::RSA,
             CNMEA_Instruments::XDR, CNEMA_AIS::VDM, CNEMA_AIS::VDO, CNMEA_Raw>;
