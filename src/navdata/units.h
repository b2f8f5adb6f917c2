#pragma once

#include <cstdint>
#include <string>

/// Turns quantities into text in the user's units, and positions from text. Quantities come in base units whatever the
/// user chose: metres (distance, depth), knots, degrees Celsius, degrees true, seconds since 1970. A formatter replaces
/// the text it is given; for a number that is not finite the text is empty. Texts do not depend on the locale. Main
/// thread only.
class CUnits {
public:
    /// Families of units; the value is the row of the distance table.
    enum e_dist_units : std::int32_t { kStatute = 0, kNautical = 1, kMetric = 2 };
    enum e_bearings : std::int32_t { kTrueNorth = 0, kMagneticNorth = 1 };
    enum e_temperature : std::int32_t { kCelsius = 0, kFahrenheit = 1 };
    enum e_speed : std::int32_t { kMilesPerHour = 0, kKnots = 1, kKilometresPerHour = 2, kMetresPerSecond = 3 };
    enum e_depth : std::int32_t { kDepthFeet = 0, kDepthMetres = 1, kFathoms = 2 };

    /// Rows of the distance table for short distances.
    static constexpr std::int32_t kMetres = 3, kFeet = 4, kYards = 5;
    /// A bearing above this is none.
    static constexpr double kNoBearing = 900.0;
    /// A depth or an altitude of this or less is none, metres.
    static constexpr double kNoDepth = -9999.0;

    /// A way to write positions: a static object, in the list from the moment it is made.
    class PositionFormatType;
    class PosFmtLatLon;
    class PosFmtDeg;
    class PosFmtDegMin;
    class PosFmtDMS;
    /// The entry of the settings menu.
    class CUnitSettingsType;

    /// A copy of the program's units.
    CUnits() : CUnits(*Default) {}

    const PositionFormatType* position_format; ///< never null
    e_dist_units dist = kNautical;
    std::int32_t small_dist = kYards; ///< row of the distance table for short distances
    std::int32_t speed = kKnots;      ///< e_speed
    std::int32_t depth = kDepthMetres;
    std::int32_t bearings = kTrueNorth;
    std::int32_t temperature = kCelsius;
    float magnetic_variation = 0.0F; ///< degrees, east positive
    double bearing_lat = 999.0;      ///< the place of the variation, degrees; 999: none yet
    double bearing_lon = 999.0;      ///< degrees
    double bearing_time = 999.0;     ///< seconds since 1970

    /// Takes the family: its distances and speed, and, but for the nautical one, depth and temperature.
    void set_unit_family(e_dist_units family);
    e_dist_units get_unit_family() const { return dist; }

    /// "1.25" and "NM": a tenth of the main unit and less is given in the small one.
    void FormatDistance(double metres, std::string& value, std::string& unit) const;
    /// "1.25 NM".
    std::string FormatDistance(double metres) const;
    /// Always in the main unit, three digits.
    void FormatDistanceValue(double metres, std::string& value) const;
    const char* GetDistanceUnit() const;

    /// The longest round distance (1, 2 or 5 times a power of ten) that fits a scale bar of `longest` pixels, as text,
    /// and the bar's width in pixels: above 40 per cent of `longest`, at most `longest`. 0, and no text, for a scale
    /// (nautical miles per pixel) outside 1e-20 to 1e20 or without room.
    double format_scale(double nautical_miles_per_pixel, std::string& text, double longest) const;

    /// "5.4 kts".
    void FormatSpeed(double knots, std::string& text) const;
    void FormatSpeedValue(double knots, std::string& value) const;
    const char* GetSpeedUnit() const;

    /// "4.2 m"; "---" for kNoDepth.
    void FormatDepth(double metres, std::string& text) const;
    /// Two digits below 100; "---" for kNoDepth.
    void FormatDepthValue(double metres, std::string& value) const;
    const char* GetDepthUnit() const;

    void FormatTemperatureValue(double celsius, std::string& value) const;
    /// "°F" or "°C".
    const char* GetTemperatureUnit() const;

    /// "045°M"; empty for kNoBearing.
    void FormatBearing(double degrees_true, std::string& text) const;
    /// "000" to "359", from the north that the user chose; empty for kNoBearing.
    void FormatBearingValue(double degrees_true, std::string& value) const;
    /// "°T" or "°M".
    const char* GetBearingUnit() const;

    /// "45s", "5:09", "1:05:09", "12h:05", "3D 4h:05"; a negative time has "Negative " in front.
    static void FormatElapsedTime(double seconds, std::string& text);
    /// Local time, "1:05pm".
    static void FormatTimeOfDay(double time, std::string& text);
    /// Local time, "13:05:09".
    static void Get24hTime(double time, std::string& text);
    /// Local date, "2026-11-24".
    static void FormatDate(double time, std::string& text);

    /// Computes the variation for this place and time, if the place is a degree or more from that of the last one.
    void SetBearingLocation(double lat, double lon, double time);
    /// Computes the variation anew for the place and the time of the last one.
    void ChangedBearingUnits();
    /// To be called after a choice was changed: the program's units are saved, and published through Listener<CUnits>.
    /// Without effect on other units than the program's.
    void Changed();

    /// The units of the program, never null.
    static CUnits* Default;

protected:
    constexpr explicit CUnits(const PositionFormatType* format) : position_format(format) {}

private:
    void SettingsModified();
};

/// The units of the program, kept in the settings group of this name.
class CDefaultUnits : public CUnits {
public:
    class Persistant;

    static CDefaultUnits u;

private:
    constexpr CDefaultUnits();
    CDefaultUnits(const CDefaultUnits&) = delete;
    CDefaultUnits& operator=(const CDefaultUnits&) = delete;
};

/// Appends latitude and longitude. Styles: 0 degrees, 1 degrees and minutes, 2 degrees, minutes and seconds, each with
/// its hemisphere letter; 3 degrees with a sign. Appends nothing for numbers that are no angles.
void appendPosition(std::string& out, double lat, double lon, int style);
