#pragma once

#include "nmea/nmea_sentence.h"

#include <string>

/// Sentences of the boat's instruments. Each class has its registry entry `type`.
namespace CNMEA_Instruments {

/// Wind over the bow.
class MWV : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    bool is_true = false; ///< else apparent
    float speed = 0.0F;   ///< knots; a speed in metres per second is divided by 1852
    float angle = 0.0F;   ///< degrees
};

/// True wind.
class MWD : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    float speed = 0.0F;     ///< knots
    float direction = 0.0F; ///< degrees true
};

/// Speed through water and heading.
class VHW : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    bool has_speed = false;
    bool has_heading = false;
    float speed = 0.0F;   ///< knots
    float heading = 0.0F; ///< degrees magnetic
};

/// Compass heading.
class HDG : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    float heading = 0.0F;   ///< degrees
    float variation = 0.0F; ///< degrees, east positive
    float deviation = 0.0F; ///< degrees, east positive
};

/// Depth.
class DPT : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    float depth = 0.0F;            ///< metres below the transducer
    float offset_waterline = 0.0F; ///< metres
    float offset_keel = 0.0F;      ///< metres
};

/// Depth below the transducer.
class DBT : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    float depth = 0.0F; ///< metres
};

/// Water temperature.
class MTW : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    float temperature = 0.0F; ///< Celsius
};

/// Engine revolutions. The other engine's value is that of its own last sentence.
class RPM : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    float engine_1 = 0.0F; ///< revolutions a minute
    float engine_2 = 0.0F; ///< revolutions a minute
};

/// Rudder angle, with an average over many sentences.
class RSA : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;
    /// Takes an angle into the average.
    void Update(float new_angle);

    float angle = 0.0F;     ///< degrees
    float average = 0.0F;   ///< degrees
    float smoothing = 0.0F; ///< weight of the old average; 0 before the first sentence
};

/// Transducer values.
class XDR : public CNMEASentence {
public:
    class Type;
    static Type type;
    bool Init(char* text) override;

    char first_type = 0;
    float first_value = 0.0F;
    std::string first_name;
    char second_type = 0; ///< 0 when there is no second group
    float second_value = 0.0F;
    std::string second_name;
};

} // namespace CNMEA_Instruments
