#pragma once

#include "core/bounds.h"
#include "core/polygon.h"

#include <cstdint>
#include <string>

struct IChartBytes;

/// One record of the catalogue: what the head of a chart file says. Main thread only.
class CChartOutline {
public:
    /// Reads a chart's record without mapping the file. False for anything that is not a whole chart of a known kind
    /// (no message); the record is then left with scale 0. At most 7 system calls for a file whose strings lie
    /// together.
    bool Read(const std::string& chart_path);
    /// The same for a file named relative to an open folder, `name` being the last part of `chart_path`.
    bool ReadAt(int folder, const char* name, const std::string& chart_path);
    /// The same from bytes that stand for the file `chart_path`.
    bool ReadFrom(IChartBytes& bytes, std::string chart_path);
    /// Reads the outline's points into `polygon`; false when they cannot be read.
    bool ReadPolygon() const;
    bool ReadPolygonFrom(IChartBytes& bytes) const;

    /// Positions and areas are tried as they are and once round the world in both directions.
    bool doesContain(double lat, double lon) const;
    /// By the bounds alone.
    bool mightOverlap(const CBounds& area) const;
    bool doesOverlap(const CPolygon& area) const;
    bool doesOverlap(const CBounds& area) const;
    /// Whether the chart's type is among those shown.
    bool typeIsSelected() const;
    /// By date, then by the number of the folder, then by the file's time.
    bool is_newer_than(const CChartOutline* other) const;
    /// Where the chart stands in a tree of charts, parts divided by "|".
    std::string getPathForTree() const;
    /// One line of the header's texts, or what is wrong with the file.
    std::string getMiscDetails() const;
    /// Opens a chunked chart to ask it.
    bool appearsFullyDownloadedWithin(const CBounds& area) const;

    /// More detailed charts first.
    friend bool operator<(const CChartOutline& a, const CChartOutline& b) { return a.scale < b.scale; }

    double scale = 0.0; ///< nautical miles per pixel at the chart's middle; 0: failed to read
    std::string title;  ///< never empty after a read: the path stands in
    std::string path;
    std::string type;
    std::uint32_t date = 0; ///< rises with the date, 0 unknown; see parse_date_for_comparison
    bool chunked = false;
    std::uint32_t flags = 0;
    bool fully_downloaded = false; ///< of chunked charts
    CBounds bounds;
    mutable CPolygon polygon; ///< x longitude, y latitude; empty until first needed when the file has an outline

private:
    bool HasPolygon() const { return !polygon.empty() || ReadPolygon(); }
};

/// A number that rises with the date in a text: day/month/year (month first where only that can be), year-month-day, a
/// name of a month before or behind its day, or a year alone. 0 when there is none.
std::uint32_t parse_date_for_comparison(const std::string& text);
/// Appends ". " when something stands there already, then "label: value"; nothing for an empty value.
void append_header_string(int file, unsigned pointer, const char* label, std::string& out);
/// Whether the first file was written before the second; a missing one is older than any.
bool fileIsOlder(const std::string& path, const std::string& than);
