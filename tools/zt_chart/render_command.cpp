#include "tools/zt_chart/chart_picture.h"
#include "tools/zt_chart/cli.h"
#include "tools/zt_chart/opened_chart.h"

#include <cmath>

#include <QSaveFile>

namespace {

constexpr double kMostPixels = 1 << 28;    // of one picture
constexpr double kFurthestPixel = 1 << 24; // outside of which no chart lies
constexpr double kLongestSide = 32767;

/// The whole chart when no rectangle is given.
CPictureRect WholeChart(const CRastelle& chart, int level)
{
    const auto scaled = [level](int pixels) { return level >= 0 ? pixels >> level : pixels << -level; };
    return {0, 0, std::max(1, scaled(chart.width_px)), std::max(1, scaled(chart.height_px))};
}

/// X, Y in chart pixels and W, H in output pixels, as ReadRectRGB takes them.
std::optional<CPictureRect> ParseRect(const QString& text, int level)
{
    const auto numbers = ParseNumbers(text, 4);
    if (!numbers) return std::nullopt;
    const auto& n = *numbers;
    for (const double number : n) {
        if (number != std::floor(number)) return std::nullopt;
    }
    if (std::abs(n[0]) > kFurthestPixel || std::abs(n[1]) > kFurthestPixel || n[2] < 1 || n[3] < 1 ||
        n[2] > kLongestSide || n[3] > kLongestSide)
        return std::nullopt;
    const double output_per_pixel = std::ldexp(1.0, -level);
    return CPictureRect{static_cast<int>(std::floor(n[0] * output_per_pixel)),
                        static_cast<int>(std::floor(n[1] * output_per_pixel)), static_cast<int>(n[2]),
                        static_cast<int>(n[3])};
}

int SavePng(const QImage& image, const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !image.save(&file, "PNG") || !file.commit())
        return Fail("cannot write " + path.toStdString());
    return kDone;
}

} // namespace

int RenderCommand(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption level_option("level", "", "L", "0");
    const QCommandLineOption rect_option("rect", "", "X,Y,W,H");
    const QCommandLineOption out_option({"o", "output"}, "", "OUT.png");
    const QCommandLineOption indices_option("indices");
    parser.addOptions({level_option, rect_option, out_option, indices_option});
    if (!ParseArguments(parser, arguments, 1, 1)) return kWrongUse;
    const auto level = ParseWhole(parser.value(level_option));
    if (!level || *level < kLowestLevel || *level > kHighestLevel) return WrongUse("--level takes -2 to 6");
    if (!parser.isSet(out_option)) return WrongUse("-o OUT.png is missing");
    std::optional<CPictureRect> rect;
    if (parser.isSet(rect_option)) {
        rect = ParseRect(parser.value(rect_option), *level);
        if (!rect) return WrongUse("--rect takes X,Y,W,H: whole numbers, W and H from 1 to 32767");
    }

    const std::string path = parser.positionalArguments().front().toStdString();
    const QString out = parser.value(out_option);
    if (IsSameFile(path, out.toStdString())) return WrongUse("the output is the input");
    const COpenedChart opened(path);
    if (!opened.chart) return Fail(opened.error);
    if (!rect) rect = WholeChart(*opened.chart, *level);
    if (double{1} * rect->width * rect->height > kMostPixels)
        return Fail("the picture would be too large: give a --rect or a higher --level");
    const QImage image = parser.isSet(indices_option) ? ReadIndexPicture(*opened.chart, *rect, *level)
                                                      : ReadPicture(*opened.chart, *rect, *level);
    if (image.isNull()) return Fail("cannot read the tiles of " + path);
    return SavePng(image, out);
}
