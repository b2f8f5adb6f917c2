#include "core/text.h"
#include "navdata/unit_tables.h"
#include "navdata/units.h"

#include <cmath>

namespace {

/// Of the main unit of distance, from which on the small one is left.
constexpr double kLargestInSmallUnit = 0.1;
constexpr const char* kNoDepthText = "---";

/// "%.*f"; empty for what is no number.
void SetFixed(std::string& text, int decimals, double value)
{
    text.clear();
    if (std::isfinite(value)) text = stringprintf("%.*f", decimals, value);
}

/// "%.*g", but never with an exponent for large numbers: from where that would begin, by its rounding, whole ones.
void SetDigits(std::string& text, int digits, double value)
{
    const double power = std::pow(10.0, digits);
    if (std::fabs(value) < power - 0.5)
        text = stringprintf("%.*g", digits, value);
    else
        SetFixed(text, 0, value);
}

void AppendUnit(std::string& text, const char* unit)
{
    if (!text.empty()) text.append(" ").append(unit);
}

} // namespace

void CUnits::FormatDistance(double metres, std::string& value, std::string& unit) const
{
    std::int32_t row = dist;
    if (metres * tab_dist_factors[row] <= kLargestInSmallUnit) row = small_dist;
    const double distance = metres * tab_dist_factors[row];
    SetFixed(value, distance >= 100.0 ? 0 : distance >= 10.0 ? 1 : 2, distance);
    unit = tab_dist_units[row];
}

std::string CUnits::FormatDistance(double metres) const
{
    std::string text, unit;
    FormatDistance(metres, text, unit);
    AppendUnit(text, unit.c_str());
    return text;
}

void CUnits::FormatDistanceValue(double metres, std::string& value) const
{
    const double distance = metres * tab_dist_factors[dist];
    SetDigits(value, 3, distance < 0.001 ? 0.0 : distance);
}

const char* CUnits::GetDistanceUnit() const
{
    return tab_dist_units[dist];
}

void CUnits::FormatSpeed(double knots, std::string& text) const
{
    FormatSpeedValue(knots, text);
    AppendUnit(text, GetSpeedUnit());
}

void CUnits::FormatSpeedValue(double knots, std::string& value) const
{
    const double in_units = knots * tab_speed_factors[speed];
    SetFixed(value, in_units < 1.0 ? 2 : 1, in_units);
}

const char* CUnits::GetSpeedUnit() const
{
    return tab_speed_units[speed];
}

void CUnits::FormatDepth(double metres, std::string& text) const
{
    if (metres <= kNoDepth) {
        text = kNoDepthText;
        return;
    }
    const double in_units = metres * tab_depth_factors[depth];
    SetFixed(text, in_units >= 10.0 ? 0 : 1, in_units);
    AppendUnit(text, GetDepthUnit());
}

void CUnits::FormatDepthValue(double metres, std::string& value) const
{
    const double in_units = metres * tab_depth_factors[depth];
    if (metres <= kNoDepth)
        value = kNoDepthText;
    else
        SetDigits(value, 2, std::fabs(in_units) <= 0.01 ? 0.0 : in_units);
}

const char* CUnits::GetDepthUnit() const
{
    return tab_depth_units[depth];
}

void CUnits::FormatTemperatureValue(double celsius, std::string& value) const
{
    SetFixed(value, 1, temperature == kFahrenheit ? celsius * 1.8 + 32.0 : celsius);
}

const char* CUnits::GetTemperatureUnit() const
{
    return temperature == kFahrenheit ? "°F" : "°C";
}

void CUnits::FormatBearing(double degrees_true, std::string& text) const
{
    FormatBearingValue(degrees_true, text);
    if (!text.empty()) text += GetBearingUnit();
}

void CUnits::FormatBearingValue(double degrees_true, std::string& value) const
{
    value.clear();
    if (!std::isfinite(degrees_true) || degrees_true > kNoBearing) return;
    constexpr double kJustUnderHalf = 0.4999; // a half goes down
    double degrees = degrees_true;
    if (bearings == kMagneticNorth) degrees -= static_cast<double>(magnetic_variation);
    degrees = std::fmod(degrees, 360.0);
    if (degrees < 0.0) degrees += 360.0;
    value = stringprintf("%03d", static_cast<int>(degrees + kJustUnderHalf) % 360);
}

const char* CUnits::GetBearingUnit() const
{
    return bearings == kMagneticNorth ? "°M" : "°T";
}
