#pragma once

#include <cmath>
#include <string>
#include <string_view>

/// What the formats of grids share.

inline constexpr const char* kOffGrid = "<off grid>";

/// The longitude within -180 .. below 180; for longitudes that are no number no number.
inline double FoldLongitude(double lon)
{
    return lon >= -180.0 && lon < 180.0 ? lon : lon - 360.0 * std::floor((lon + 180.0) / 360.0);
}

inline bool IsPosition(double lat, double lon)
{
    return std::fabs(lat) <= 90.0 && std::isfinite(lon);
}

/// Reads the fields of a grid reference one after the other, each with the blanks in front of it.
class CGridScanner {
public:
    explicit CGridScanner(const char* text) : rest(text == nullptr ? "" : text) {}

    /// A decimal number with or without a fraction and a minus; false when none stands there.
    bool Number(double& value);
    /// One letter, as a capital.
    bool Letter(char& letter);
    /// Passes over `letter`, of either case, if it comes next.
    void Skip(char letter);
    /// All the digits that are left, without the blanks between them; false when there is anything else, or more than
    /// `most` of them.
    bool Digits(std::string& digits, std::size_t most);
    /// Whether nothing is left but blanks.
    bool AtEnd();

private:
    void SkipBlanks();
    std::string_view rest;
};
