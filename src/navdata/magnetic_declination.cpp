#include "navdata/magnetic_declination.h"

#include "navdata/magnetic_model.h"

#include <cmath>

#include <QDir>

namespace {

constexpr double kMetresPerKilometre = 1000.0;
constexpr double kSecondsPerYear = 3.14712e7; // the program's own
constexpr double kUnixEpoch = 1970.0;

bool IsPlace(double lat, double lon, double altitude_metres)
{
    constexpr double kLargestAltitude = 1e6; ///< metres; the model's limit is 850 km
    return std::fabs(lat) <= 90.0 && std::fabs(lon) <= 360.0 && std::fabs(altitude_metres) <= kLargestAltitude;
}

} // namespace

double DecimalYear(double time)
{
    return time / kSecondsPerYear + kUnixEpoch;
}

float get_magnetic_declination(const char* path, double lat, double lon, double altitude_metres, double time)
{
    if (!IsPlace(lat, lon, altitude_metres) || !std::isfinite(time)) return 0.0F;
    auto model = WMM_AllocateModelMemory();
    auto at_date = WMM_AllocateModelMemory();
    if (model == nullptr || at_date == nullptr) return 0.0F;

    WMM_Ellipsoid ellipsoid;
    WMM_SetDefaults(ellipsoid);
    if (!WMM_readMagneticModel(path, *model)) return 0.0F;

    const WMM_Geodetic geodetic = {lat, lon, altitude_metres / kMetresPerKilometre};
    WMM_Spherical spherical;
    WMM_Elements elements;
    WMM_GeodeticToSpherical(ellipsoid, geodetic, spherical);
    WMM_TimelyModifyMagneticModel(DecimalYear(time), *model, *at_date);
    WMM_Geomag(ellipsoid, spherical, geodetic, *at_date, elements);
    WMM_CalculateGridVariation(geodetic, elements);
    WMM_FreeMagneticModelMemory(model);
    WMM_FreeMagneticModelMemory(at_date);
    return static_cast<float>(elements.declination);
}

std::string MagneticModelFile(double time)
{
    const auto model = WMM_AllocateModelMemory();
    if (model == nullptr) return {};
    const double year = DecimalYear(time);
    const QDir folder(QStringLiteral(":/wmm"));
    std::string best;
    // Their names sort by epoch: the latest that has begun, or the first.
    for (const QString& name : folder.entryList({QStringLiteral("WMM_COF*.txt")}, QDir::Files, QDir::Name)) {
        const std::string path = folder.filePath(name).toStdString();
        if (!WMM_readMagneticModel(path.c_str(), *model)) continue;
        if (best.empty() || model->epoch <= year) best = path;
    }
    return best;
}
