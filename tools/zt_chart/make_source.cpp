#include "tools/zt_chart/make_source.h"

#include "chart/polynomial_projection.h"
#include "core/files.h"

#include <cmath>
#include <memory>
#include <numbers>

#include <QFileInfo>
#include <QImageReader>

namespace {

constexpr double kRadians = std::numbers::pi / 180.0;

bool IsPosition(double lat, double lon)
{
    return std::isfinite(lat) && std::isfinite(lon) && std::abs(lat) <= 90.0 && std::abs(lon) <= 540.0;
}

double MercatorY(double lat)
{
    return std::asinh(std::tan(lat * kRadians));
}

/// The world file that belongs to a picture by its name: a.png has a.pgw, a.pngw or a.wld, in either case.
std::string WorldFileBeside(const std::string& path)
{
    const QFileInfo info(QString::fromStdString(path));
    const QString suffix = info.suffix();
    QStringList candidates{QStringLiteral("wld"), suffix + QLatin1Char('w')};
    if (suffix.size() >= 3) candidates << QString(suffix.front()) + suffix.back() + QLatin1Char('w');
    for (const QString& candidate : candidates) {
        for (const QString& ending : {candidate.toLower(), candidate.toUpper()}) {
            const QString name = info.path() + QLatin1Char('/') + info.completeBaseName() + QLatin1Char('.') + ending;
            if (isRegularFile(name.toStdString())) return name.toStdString();
        }
    }
    return {};
}

bool PlaceByWorldFile(const std::string& world_file, CMakeSource& out, std::string& error)
{
    const auto projection = std::make_shared<CPolynomialProjection>();
    if (!isRegularFile(world_file) ||
        !projection->ReadGeoWorldFile(world_file.c_str(), out.image.width(), out.image.height())) {
        error = "no world file: " + world_file;
        return false;
    }
    out.world_file = world_file;
    out.position = [projection](double x, double y) {
        CControlPoint point{x, y, 0.0, 0.0};
        projection->xy_to_latlong(x, y, point.lat, point.lon);
        return std::optional(point);
    };
    return true;
}

void PlaceByBounds(const CMakePlace& place, CMakeSource& out)
{
    const double south = place.bounds[0];
    const double west = place.bounds[1];
    const double north = place.bounds[2];
    const double east = place.bounds[3] > west ? place.bounds[3] : place.bounds[3] + 360.0;
    const double width = out.image.width();
    const double height = out.image.height();
    out.position = [=, mercator = place.mercator](double x, double y) {
        const double down = y / height;
        double lat = north + (south - north) * down;
        if (mercator) {
            const double at = MercatorY(north) + (MercatorY(south) - MercatorY(north)) * down;
            lat = std::atan(std::sinh(at)) / kRadians;
        }
        return std::optional(CControlPoint{x, y, lat, west + (east - west) * x / width});
    };
}

/// Bilinear between the four corners.
void PlaceByCorners(std::vector<double> corners, CMakeSource& out)
{
    for (std::size_t i = 3; i < 8; i += 2) {
        corners[i] -= 360.0 * std::round((corners[i] - corners[1]) / 360.0); // one side of the date line
    }
    const double width = out.image.width();
    const double height = out.image.height();
    out.position = [=](double x, double y) {
        const double right = x / width;
        const double down = y / height;
        const auto between = [&](std::size_t i) {
            const double upper = corners[i] + (corners[2 + i] - corners[i]) * right;
            const double lower = corners[6 + i] + (corners[4 + i] - corners[6 + i]) * right;
            return upper + (lower - upper) * down;
        };
        return std::optional(CControlPoint{x, y, between(0), between(1)});
    };
}

bool PlaceByHand(const CMakePlace& place, CMakeSource& out, std::string& error)
{
    if (!place.world_file.empty()) return PlaceByWorldFile(place.world_file, out, error);
    if (!place.bounds.empty())
        PlaceByBounds(place, out);
    else
        PlaceByCorners(place.corners, out);
    return true;
}

bool CornersArePositions(const CMakeSource& source)
{
    for (const double x : {0.0, double{1} * source.image.width()}) {
        for (const double y : {0.0, double{1} * source.image.height()}) {
            const auto point = source.position(x, y);
            if (!point || !IsPosition(point->lat, point->lon)) return false;
        }
    }
    return true;
}

} // namespace

bool ReadMakeSource(const std::string& path, const CMakePlace& place, CMakeSource& out, std::string& error)
{
    if (!isRegularFile(path)) {
        error = "cannot open " + path + ": not a regular file";
        return false;
    }
    QImageReader::setAllocationLimit(4096); // MiB; charts are large
    out.image = QImage(QString::fromStdString(path));
    const std::string beside = WorldFileBeside(path);
    const bool place_known = place.Given() || !beside.empty();
    if (out.image.isNull() || !place_known) {
        if (!ReadGdalSource(path, out.image.isNull(), out, error)) return false;
    }
    if (place.Given() && !PlaceByHand(place, out, error)) return false;
    if (!out.position && !beside.empty() && !PlaceByWorldFile(beside, out, error)) return false;
    if (!out.position) {
        error = "nothing tells where " + path + " lies: give --bounds, --corners or --world-file";
        return false;
    }
    if (CornersArePositions(out)) return true;
    error = "the picture's corners are no positions in degrees";
    return false;
}
