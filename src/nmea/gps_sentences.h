#pragma once

#include "nmea/nmea_sentence.h"

#include <cstdint>

/// Sentences of satellite receivers. Each class has its registry entry `type`. `talker` is the second letter of the
/// talker: P of GP, N of GN, L of GL.
namespace CNMEA_GPS {

/// Recommended minimum data.
class RMC : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    bool valid = false;     ///< status A, or V with a mode other than N
    double latitude = 0.0;  ///< degrees
    double longitude = 0.0; ///< degrees
    double time = 0.0;      ///< seconds since 1970; below 1e9 without a date
    float speed = 0.0F;     ///< knots
    float course = 0.0F;    ///< degrees true
    float variation = 0.0F; ///< degrees, west positive
    char talker = 0;
};

/// Fix data.
class GGA : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    double latitude = 0.0;  ///< degrees
    double longitude = 0.0; ///< degrees
    float altitude = 0.0F;  ///< metres
    float hdop = 0.0F;
    int satellites = 0;
    int quality = 0;
    char talker = 0;
};

/// Course and speed over ground.
class VTG : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    float speed = 0.0F;  ///< knots
    float course = 0.0F; ///< degrees true
    char talker = 0;
};

/// Satellites in use.
class GSA : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    static constexpr int kChannels = 12;
    char selection_mode = 0;
    std::uint8_t fix_type = 0;
    std::uint8_t satellites[kChannels] = {}; ///< satellite number of each channel; 0: none
    float pdop = 0.0F;
    float hdop = 0.0F;
    float vdop = 0.0F;
    char talker = 0;
};

/// Satellites in view, four a message.
class GSV : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    struct Satellite {
        std::uint8_t prn = 0;
        std::uint8_t elevation = 0; ///< degrees
        std::uint8_t azimuth = 0;   ///< degrees, the low 8 bits
        std::uint16_t snr = 0;      ///< dB
    };
    static constexpr int kGroups = 4;
    int total_messages = 0;
    int message_number = 0;
    int satellites_in_view = 0;
    Satellite satellites[kGroups];
    char talker = 0;
};

} // namespace CNMEA_GPS
