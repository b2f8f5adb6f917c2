#pragma once

#include "core/text.h"
#include "nmea/gps_sentences.h"
#include "nmea/instrument_sentences.h"
#include "nmea/sentence_tools.h"

#include <cmath>
#include <tuple>
#include <vector>

/// A listener of each class that does no more than count.
template <class... T>
class CHearings {
public:
    int Count() const
    {
        return std::apply([](const auto&... hearing) { return (hearing.count + ...); }, hearings);
    }

private:
    std::tuple<CHearing<T>...> hearings;
};

using CHearingOfAll =
    CHearings<CNMEA_GPS::RMC, CNMEA_GPS::GGA, CNMEA_GPS::VTG, CNMEA_GPS::GSA, CNMEA_GPS::GSV, CNMEA_Instruments::MWV,
              CNMEA_Instruments::MWD, CNMEA_Instruments::VHW, CNMEA_Instruments::HDG, CNMEA_Instruments::DPT,
              CNMEA_Instruments::DBT, CNMEA_Instruments::MTW, CNMEA_Instruments::RPM, CNMEA_Instruments::RSA,
              CNMEA_Instruments::XDR>;

/// What a boat's instruments send in the `second`-th second of a passage: 19 sentences with their checksums.
inline void AppendSecond(int second, std::vector<std::string>& out)
{
    const double phase = second * 0.01;
    const double minutes = 30.0 + 20.0 * std::sin(phase);
    const std::string place = stringprintf("50%07.4f,N,001%07.4f,W", minutes, 50.0 - minutes / 2);
    const std::string time = stringprintf("%02d%02d%02d.00", second / 3600 % 24, second / 60 % 60, second % 60);
    const double speed = 5.5 + std::sin(7 * phase);
    const double course = 180.0 + 170.0 * std::sin(3 * phase);
    const auto add = [&out](const std::string& text) { out.push_back(WithChecksum(text)); };
    add("$GPRMC," + time + ",A," + place + stringprintf(",%.1f,%.1f,", speed, course) + "150626,3.1,W,A");
    add("$GPGGA," + time + "," + place + stringprintf(",1,08,%.1f,%.1f,M,46.9,M,,", 0.9 + speed / 50, 2.5 + phase));
    add("$GPGSA,A,3,04,05,,09,12,,,24,,,,,2.5,1.3,2.1");
    add("$GPGSV,3,1,11,03,03,111,00,04,15,270,40,06,01,010,38,13,06,292,27");
    add("$GPGSV,3,2,11,14,25,170,45,16,57,208,39,18,67,296,40,19,40,246,31");
    add("$GPGSV,3,3,11,22,42,067,42,24,14,311,43,27,05,244,35,,,,");
    add("$GPVTG," + stringprintf("%.1f,T,%.1f,M,", course, course + 3) +
        stringprintf("%.1f,N,%.1f,K,A", speed, speed * 1.852));
    add("$HCHDG," + stringprintf("%.1f,,,%.1f,W", course - 2, 3.1));
    add("$WIMWV," + stringprintf("%.1f,R,%.1f,N,A", 40 + 5 * speed, 2.5 * speed));
    add("$WIMWV," + stringprintf("%.1f,T,%.1f,N,A", 60 + 5 * speed, 2.1 * speed));
    add("$WIMWD," + stringprintf("%.1f,T,%.1f,M,", 230 + speed, 233 + speed) +
        stringprintf("%.1f,N,%.1f,M", 15.1, 7.8));
    add("$IIVHW,," + stringprintf("T,%.1f,M,%.2f,N,,K", course, speed - 0.3));
    add("$SDDPT," + stringprintf("%.1f,%.1f,100.0", 12 + speed, -0.5));
    add("$SDDBT," + stringprintf("%.1f,f,%.2f,M,6.6,F", 40 + 3 * speed, 12 + speed));
    add("$IIMTW," + stringprintf("%.1f,C", 14 + phase));
    add("$IIRSA," + stringprintf("%.1f,A,%.1f,V", 5 * std::sin(9 * phase), 0.0));
    add("$IIRPM,E," + stringprintf("%.0f,%.1f,10.5,A", second % 2 + 1.0, 2100 + 10 * speed));
    add("$IIXDR,P," + stringprintf("%.4f,B,Barometer,C,%.1f,C,AirTemp", 1.0131, 18.5));
    add("!AIVDM,1,1,,A,13u?etPv2;0n:dDPwUM1U1Cb069D,0");
}

/// `count` sentences of one passage.
inline std::vector<std::string> MixedSentences(std::size_t count)
{
    std::vector<std::string> sentences;
    for (int second = 36000; sentences.size() < count; ++second) AppendSecond(second, sentences);
    sentences.resize(count);
    return sentences;
}
