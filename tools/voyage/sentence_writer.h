#pragma once

#include <string>

/// Completes sentences and collects them as lines of a log.
class CSentenceWriter {
public:
    /// Adds `body` ("$GPRMC,..." or "!AIVDM,...", without checksum) with its checksum and a line end.
    void Add(const std::string& body);
    const std::string& Text() const { return text; }
    std::size_t Lines() const { return lines; }

private:
    std::string text;
    std::size_t lines = 0;
};

/// "ddmm.mmmm,N" of a latitude, degrees.
std::string LatitudeFields(double lat);
/// "dddmm.mmmm,E" of a longitude, degrees.
std::string LongitudeFields(double lon);
/// "hhmmss.00" of a time, seconds since 1970.
std::string TimeField(double time);
/// "ddmmyy" of a time, seconds since 1970.
std::string DateField(double time);
