#include "tools/zt_chart/make_source.h"

#ifdef ZT_WITH_GDAL

#include <cmath>
#include <memory>

#include <gdal.h>
#include <gdal_alg.h>

namespace {

struct CCloseDataset {
    void operator()(void* dataset) const { GDALClose(dataset); }
};
using CDataset = std::unique_ptr<void, CCloseDataset>;

constexpr int kMostRasterSide = 1 << 20;
constexpr double kMostRasterPixels = 1e9;

/// One band as bytes; values of a wider type are spread from their smallest to their greatest.
bool ReadBand(GDALDatasetH dataset, int number, int width, int height, std::vector<unsigned char>& out)
{
    GDALRasterBandH band = GDALGetRasterBand(dataset, number);
    out.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    if (GDALGetRasterDataType(band) == GDT_Byte) {
        return GDALRasterIO(band, GF_Read, 0, 0, width, height, out.data(), width, height, GDT_Byte, 0, 0) == CE_None;
    }
    std::vector<float> values(out.size());
    if (GDALRasterIO(band, GF_Read, 0, 0, width, height, values.data(), width, height, GDT_Float32, 0, 0) != CE_None)
        return false;
    double range[2] = {0.0, 0.0};
    if (GDALComputeRasterMinMax(band, FALSE, range) != CE_None) return false;
    const double step = range[1] > range[0] ? 255.0 / (range[1] - range[0]) : 0.0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double value = (double{values[i]} - range[0]) * step;
        out[i] = static_cast<unsigned char>(value > 0.0 ? std::min(value, 255.0) : 0.0);
    }
    return true;
}

QList<QRgb> ColourTable(GDALDatasetH dataset)
{
    QList<QRgb> colours;
    GDALColorTableH table = GDALGetRasterColorTable(GDALGetRasterBand(dataset, 1));
    for (int i = 0; i < 256; ++i) {
        const GDALColorEntry* entry = table != nullptr ? GDALGetColorEntry(table, i) : nullptr;
        if (entry == nullptr && table != nullptr) break;
        colours.append(entry != nullptr ? qRgb(entry->c1, entry->c2, entry->c3) : qRgb(i, i, i));
    }
    return colours;
}

QImage ReadImage(GDALDatasetH dataset, int width, int height)
{
    const bool coloured = GDALGetRasterCount(dataset) >= 3;
    std::vector<unsigned char> bands[3];
    for (int i = 0; i < (coloured ? 3 : 1); ++i) {
        if (!ReadBand(dataset, i + 1, width, height, bands[i])) return {};
    }
    QImage image(width, height, coloured ? QImage::Format_RGB32 : QImage::Format_Indexed8);
    if (image.isNull()) return image;
    if (!coloured) image.setColorTable(ColourTable(dataset));
    for (int y = 0; y < height; ++y) {
        const std::size_t row = static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
        if (!coloured) {
            std::copy_n(&bands[0][row], width, image.scanLine(y));
            continue;
        }
        auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (std::size_t x = 0; x < static_cast<std::size_t>(width); ++x) {
            to[x] = qRgb(bands[0][row + x], bands[1][row + x], bands[2][row + x]);
        }
    }
    return image;
}

/// From pixels to WGS 84 degrees by whatever the data set knows of its place; keeps the data set open.
class CGdalPlace {
public:
    explicit CGdalPlace(std::shared_ptr<void> of_dataset) : dataset(std::move(of_dataset))
    {
        const char* const options[] = {"DST_SRS=EPSG:4326", nullptr};
        transformer = GDALCreateGenImgProjTransformer2(dataset.get(), nullptr, const_cast<char**>(options));
    }
    ~CGdalPlace()
    {
        if (transformer != nullptr) GDALDestroyGenImgProjTransformer(transformer);
    }
    CGdalPlace(const CGdalPlace&) = delete;
    CGdalPlace& operator=(const CGdalPlace&) = delete;

    bool Good() const { return transformer != nullptr; }

    std::optional<CControlPoint> At(double x, double y)
    {
        double lon = x;
        double lat = y;
        double height = 0.0;
        int good = 0;
        if (!GDALGenImgProjTransform(transformer, FALSE, 1, &lon, &lat, &height, &good) || good == 0)
            return std::nullopt;
        if (!first_lon) first_lon = lon;
        lon -= 360.0 * std::round((lon - *first_lon) / 360.0); // continuous over the date line
        return CControlPoint{x, y, lat, lon};
    }

private:
    std::shared_ptr<void> dataset;
    void* transformer = nullptr;
    std::optional<double> first_lon;
};

} // namespace

bool ReadGdalSource(const std::string& path, bool with_image, CMakeSource& out, std::string& error)
{
    CPLPushErrorHandler(CPLQuietErrorHandler);
    GDALAllRegister();
    const std::shared_ptr<void> dataset(CDataset(GDALOpen(path.c_str(), GA_ReadOnly)));
    if (!dataset) {
        error = "neither Qt nor GDAL reads " + path;
        return false;
    }
    const int width = GDALGetRasterXSize(dataset.get());
    const int height = GDALGetRasterYSize(dataset.get());
    if (width < 1 || height < 1 || width > kMostRasterSide || height > kMostRasterSide ||
        double{1} * width * height > kMostRasterPixels || GDALGetRasterCount(dataset.get()) < 1) {
        error = "no raster of a usable size in " + path;
        return false;
    }
    if (with_image) out.image = ReadImage(dataset.get(), width, height);
    const auto place = std::make_shared<CGdalPlace>(dataset);
    if (place->Good()) out.position = [place](double x, double y) { return place->At(x, y); };
    if (!out.image.isNull()) return true;
    error = "cannot read the picture of " + path;
    return false;
}

#else

bool ReadGdalSource(const std::string& path, bool with_image, CMakeSource&, std::string& error)
{
    if (!with_image) return true; // the place may come from elsewhere
    error = "Qt cannot read " + path + ", and this build is without GDAL";
    return false;
}

#endif
