#pragma once

#include <string>

/// Turns quantities into text in the user's units. Distances come in metres.
class CUnits {
public:
    /// Families of distance units; the value is the row of the distance table.
    enum e_dist_units { kStatute = 0, kNautical = 1, kMetric = 2 };

    e_dist_units dist = kNautical;
    int small_dist = 5; ///< row of the distance table for short distances

    /// Takes the family with its short unit.
    void set_unit_family(e_dist_units family);
    e_dist_units get_unit_family() const { return dist; }

    /// The longest round distance (1, 2 or 5 times a power of ten) that fits a scale bar of `longest` pixels, as text,
    /// and the bar's width in pixels: above 40 per cent of `longest`, at most `longest`. 0, and no text, for a scale
    /// (nautical miles per pixel) outside 1e-20 to 1e20 or without room.
    double format_scale(double nautical_miles_per_pixel, std::string& text, double longest) const;

    /// The units of the program, never null.
    static CUnits* Default;
};
