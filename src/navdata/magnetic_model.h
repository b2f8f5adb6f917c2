#pragma once

#include <array>
#include <memory>
#include <string>

/// The World Magnetic Model, a published standard: the field of the earth's core as spherical harmonics to degree 12.
/// The formulas are those of "The US/UK World Magnetic Model for 2020-2025: Technical Report" (NOAA, BGS), equations 4
/// to 19. Magnetic quantities are nanotesla, angles degrees, lengths kilometres.

constexpr int kWMMDegree = 12;
constexpr int kWMMCoefficients = (kWMMDegree + 1) * (kWMMDegree + 2) / 2; ///< 91, with that of degree 0

/// Schmidt semi-normalised coefficients, by n (n + 1) / 2 + m.
struct WMM_MagneticModel {
    static constexpr std::size_t Index(int n, int m) { return static_cast<std::size_t>(n * (n + 1) / 2 + m); }

    double epoch = 0.0; ///< year
    std::string name;
    std::array<double, kWMMCoefficients> g;
    std::array<double, kWMMCoefficients> h;
    std::array<double, kWMMCoefficients> g_dot; ///< change in a year
    std::array<double, kWMMCoefficients> h_dot; ///< change in a year
};

struct WMM_Ellipsoid {
    double a;  ///< equatorial semi-axis
    double e2; ///< squared eccentricity
    double re; ///< the model's reference radius
};

struct WMM_Geodetic {
    double lat;
    double lon;
    double height; ///< above the ellipsoid
};

struct WMM_Spherical {
    double lat; ///< geocentric
    double lon;
    double r; ///< from the centre
};

struct WMM_Elements {
    double x, y, z; ///< north, east, down
    double declination;
    double grid_variation; ///< of polar stereographic charts; 0 below 55 degrees of latitude
};

/// All zero; null without memory.
std::unique_ptr<WMM_MagneticModel> WMM_AllocateModelMemory();
void WMM_FreeMagneticModelMemory(std::unique_ptr<WMM_MagneticModel>& model);
/// The ellipsoid of WGS84 and the reference radius.
void WMM_SetDefaults(WMM_Ellipsoid& ellipsoid);
/// Reads a coefficient file or resource (":/..."). False when it is missing, cut short, or holds anything but each
/// coefficient once; the model is then undefined.
bool WMM_readMagneticModel(const char* path, WMM_MagneticModel& model);
void WMM_GeodeticToSpherical(const WMM_Ellipsoid& ellipsoid, const WMM_Geodetic& geodetic, WMM_Spherical& spherical);
/// The model's coefficients at a date, years.
void WMM_TimelyModifyMagneticModel(double year, const WMM_MagneticModel& model, WMM_MagneticModel& at_date);
/// The field in geodetic directions and its declination. Defined at the poles too: north is along the meridian of
/// `lon`.
void WMM_Geomag(const WMM_Ellipsoid& ellipsoid, const WMM_Spherical& spherical, const WMM_Geodetic& geodetic,
                const WMM_MagneticModel& at_date, WMM_Elements& elements);
void WMM_CalculateGridVariation(const WMM_Geodetic& geodetic, WMM_Elements& elements);
