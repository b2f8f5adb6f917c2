#include "navdata/magnetic_declination.h"

#include "navdata/magnetic_model.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

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

struct CShippedModel {
    std::string path;
    WMM_MagneticModel model;
};

/// The models that the program brings, read once. Their names sort by epoch.
const std::vector<CShippedModel>& ShippedModels()
{
    static const std::vector<CShippedModel> models = [] {
        std::vector<CShippedModel> read;
        const QDir folder(QStringLiteral(":/wmm"));
        for (const QString& name : folder.entryList({QStringLiteral("WMM_COF*.txt")}, QDir::Files, QDir::Name)) {
            CShippedModel shipped{folder.filePath(name).toStdString(), {}};
            if (WMM_readMagneticModel(shipped.path.c_str(), shipped.model)) read.push_back(std::move(shipped));
        }
        return read;
    }();
    return models;
}

const WMM_MagneticModel* FindShipped(const char* path)
{
    if (path == nullptr) return nullptr;
    for (const CShippedModel& shipped : ShippedModels())
        if (shipped.path == path) return &shipped.model;
    return nullptr;
}

float Declination(const WMM_MagneticModel& model, double lat, double lon, double altitude_metres, double time)
{
    WMM_Ellipsoid ellipsoid;
    WMM_SetDefaults(ellipsoid);
    const WMM_Geodetic geodetic = {lat, lon, altitude_metres / kMetresPerKilometre};
    WMM_Spherical spherical;
    WMM_MagneticModel at_date;
    WMM_Elements elements;
    WMM_GeodeticToSpherical(ellipsoid, geodetic, spherical);
    WMM_TimelyModifyMagneticModel(DecimalYear(time), model, at_date);
    WMM_Geomag(ellipsoid, spherical, geodetic, at_date, elements);
    WMM_CalculateGridVariation(geodetic, elements);
    return static_cast<float>(elements.declination);
}

} // namespace

double DecimalYear(double time)
{
    return time / kSecondsPerYear + kUnixEpoch;
}

float get_magnetic_declination(const char* path, double lat, double lon, double altitude_metres, double time)
{
    if (!IsPlace(lat, lon, altitude_metres) || !std::isfinite(time)) return 0.0F;
    if (const WMM_MagneticModel* shipped = FindShipped(path))
        return Declination(*shipped, lat, lon, altitude_metres, time);
    auto model = WMM_AllocateModelMemory();
    if (model == nullptr || !WMM_readMagneticModel(path, *model)) return 0.0F;
    const float declination = Declination(*model, lat, lon, altitude_metres, time);
    WMM_FreeMagneticModelMemory(model);
    return declination;
}

const char* MagneticModelFile(double time)
{
    const double year = DecimalYear(time);
    const char* best = "";
    for (const CShippedModel& shipped : ShippedModels())
        if (*best == 0 || shipped.model.epoch <= year) best = shipped.path.c_str();
    return best;
}
