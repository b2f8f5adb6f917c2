#include "tools/common/quantiser.h"
#include "tools/zt_chart/chart_picture.h"
#include "tools/zt_chart/cli.h"
#include "tools/zt_chart/make_source.h"
#include "tools/zt_chart/opened_chart.h"

#include "chart/chart_writer.h"
#include "core/files.h"
#include "core/text.h"

#include <cstring>

#include <QFileInfo>

namespace {

struct CTextOption {
    const char* name;
    CChartWriter& (*set)(CChartWriter&, const std::string&);
};

constexpr CTextOption kTexts[] = {
    {"title", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.Title(t); }},
    {"long-title", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.LongTitle(t); }},
    {"identifier", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.Identifier(t); }},
    {"edition", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.Edition(t); }},
    {"revision", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.Revision(t); }},
    {"copyright", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.Copyright(t); }},
    {"scale-text", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.ScaleText(t); }},
    {"depth-units", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.DepthUnits(t); }},
    {"height-units", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.HeightUnits(t); }},
    {"source-file", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.SourceFileName(t); }},
    {"type", [](CChartWriter& w, const std::string& t) -> CChartWriter& { return w.Type(t); }},
};

/// Everything that the command line asks for.
struct CMakeRequest {
    std::string input;
    std::string output;
    CMakePlace place;
    int colours = kPaletteSize;
    std::vector<GeoPoint> outline;
    std::vector<double> datum_shift; ///< latitude, longitude; or empty
    CChartWriter writer;
};

/// "LAT,LON LAT,LON ..." as one row of numbers.
std::optional<std::vector<double>> ParsePositions(const QString& text)
{
    const QString commas = text.simplified().replace(QLatin1Char(' '), QLatin1Char(','));
    const auto count = static_cast<std::size_t>(commas.count(QLatin1Char(',')) + 1);
    if (count % 2 != 0) return std::nullopt;
    return ParseNumbers(commas, count);
}

bool ParsePlace(const QCommandLineParser& parser, CMakePlace& place)
{
    place.world_file = parser.value("world-file").toStdString();
    place.mercator = parser.isSet("mercator");
    if (parser.isSet("bounds")) {
        const auto bounds = ParseNumbers(parser.value("bounds"), 4);
        if (!bounds || bounds->at(0) >= bounds->at(2)) return false;
        place.bounds = *bounds;
    }
    if (parser.isSet("corners")) {
        const auto corners = ParsePositions(parser.value("corners"));
        if (!corners || corners->size() != 8) return false;
        place.corners = *corners;
    }
    return parser.isSet("world-file") + parser.isSet("bounds") + parser.isSet("corners") <= 1;
}

bool ParseOutline(const QCommandLineParser& parser, std::vector<GeoPoint>& outline)
{
    if (!parser.isSet("outline")) return true;
    const auto numbers = ParsePositions(parser.value("outline"));
    if (!numbers || numbers->size() < 6) return false;
    for (std::size_t i = 0; i < numbers->size(); i += 2) outline.push_back({(*numbers)[i], (*numbers)[i + 1]});
    return true;
}

int ParseRequest(const QStringList& arguments, CMakeRequest& request)
{
    QCommandLineParser parser;
    for (const CTextOption& text : kTexts) parser.addOption({QString::fromLatin1(text.name), "", "TEXT"});
    parser.addOptions({{{"o", "output"}, "", "OUT.rlt"}, {"world-file", "", "FILE"}, {"bounds", "", "S,W,N,E"}});
    parser.addOptions({{"corners", "", "LAT,LON x 4"}, {"outline", "", "LAT,LON ..."}, {"colours", "", "N", "128"}});
    parser.addOptions({{"datum-shift", "", "DLAT,DLON"}, QCommandLineOption("mercator")});
    if (!ParseArguments(parser, arguments, 1, 1)) return kWrongUse;
    request.input = parser.positionalArguments().front().toStdString();
    request.output = parser.value("o").toStdString();
    if (request.output.empty()) return WrongUse("-o OUT.rlt is missing");
    if (IsSameFile(request.input, request.output)) return WrongUse("the output is the input");
    if (!ParsePlace(parser, request.place))
        return WrongUse("one of --world-file FILE, --bounds S,W,N,E and --corners \"LAT,LON LAT,LON LAT,LON LAT,LON\"");
    if (!ParseOutline(parser, request.outline)) return WrongUse("--outline takes three or more LAT,LON");
    const auto colours = ParseWhole(parser.value("colours"));
    if (!colours || *colours < 2 || *colours > kPaletteSize) return WrongUse("--colours takes 2 to 128");
    request.colours = *colours;
    if (parser.isSet("datum-shift")) {
        const auto shift = ParseNumbers(parser.value("datum-shift"), 2);
        if (!shift) return WrongUse("--datum-shift takes DLAT,DLON");
        request.datum_shift = *shift;
        request.writer.DatumShift(shift->front(), shift->back());
    }
    request.writer.Title(QFileInfo(parser.positionalArguments().front()).completeBaseName().toStdString());
    for (const CTextOption& text : kTexts) {
        const QString name = QString::fromLatin1(text.name);
        if (parser.isSet(name)) text.set(request.writer, parser.value(name).toStdString());
    }
    return kDone;
}

/// The picture on whole tiles; what lies beside it has the index that is shown beside every chart.
CIndexImage OnWholeTiles(const CIndexImage& picture)
{
    const auto whole = [](int pixels) { return (pixels + kTileSide - 1) / kTileSide * kTileSide; };
    CIndexImage padded{whole(picture.width), whole(picture.height), picture.palette, {}};
    if (padded.palette.size() < 2) padded.palette.push_back(0xFFFFFF);
    const auto width = static_cast<std::size_t>(padded.width);
    padded.indices.assign(width * static_cast<std::size_t>(padded.height), 1);
    for (int y = 0; y < picture.height; ++y) {
        const auto row = static_cast<std::size_t>(y);
        std::copy_n(&picture.indices[row * static_cast<std::size_t>(picture.width)], picture.width,
                    &padded.indices[row * width]);
    }
    return padded;
}

/// The edge of the picture, when the chart is larger than it: what lies beside shall not hide other charts.
std::vector<GeoPoint> EdgeOutline(const CMakeSource& source)
{
    constexpr int kParts = 8; // of each side: an edge may be curved
    const double width = source.image.width();
    const double height = source.image.height();
    const DblPoint corners[] = {{0, 0}, {width, 0}, {width, height}, {0, height}, {0, 0}};
    std::vector<GeoPoint> outline;
    for (int side = 0; side < 4; ++side) {
        for (int part = 0; part < kParts; ++part) {
            const double t = static_cast<double>(part) / kParts;
            const DblPoint& a = corners[side];
            const DblPoint& b = corners[side + 1];
            const auto point = source.position(a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t);
            if (point) outline.push_back({point->lat, point->lon});
        }
    }
    return outline;
}

/// The cubics lead to positions before the datum shift.
std::optional<CGeoFit> FitSource(const CMakeSource& source, const std::vector<double>& shift)
{
    auto points = ControlGrid(source.image.width(), source.image.height(), source.position);
    for (CControlPoint& point : points) {
        if (shift.empty()) break;
        point.lat -= shift[0];
        point.lon -= shift[1];
    }
    return FitGeoReference(points);
}

/// Whether the finished chart gives every index back.
bool ReadsBack(const std::string& path, const CIndexImage& picture)
{
    const COpenedChart opened(path);
    if (!opened.chart || opened.chart->width_px != picture.width) return false;
    for (int top = 0; top < picture.height; top += kTileSide) {
        const QImage band = ReadIndexPicture(*opened.chart, {0, top, picture.width, kTileSide}, 0);
        for (int row = 0; row < kTileSide; ++row) {
            const std::size_t at = static_cast<std::size_t>(top + row) * static_cast<std::size_t>(picture.width);
            if (std::memcmp(band.constScanLine(row), &picture.indices[at], static_cast<std::size_t>(picture.width)) !=
                0)
                return false;
        }
    }
    return true;
}

int MakeChart(CMakeRequest& request)
{
    CMakeSource source;
    std::string error;
    if (!ReadMakeSource(request.input, request.place, source, error)) return Fail(error);
    if (IsSameFile(source.world_file, request.output)) return WrongUse("the output is the picture's world file");
    const auto fit = FitSource(source, request.datum_shift);
    if (!fit) return Fail("the positions of " + request.input + " cannot be told by cubics");
    const CIndexImage picture = OnWholeTiles(QuantiseImage(source.image, request.colours));
    const bool padded = picture.width != source.image.width() || picture.height != source.image.height();
    if (request.outline.empty() && padded) request.outline = EdgeOutline(source);
    for (GeoPoint& point : request.outline) { // the reader adds the shift to outlines
        if (request.datum_shift.empty()) break;
        point.lat -= request.datum_shift[0];
        point.lon -= request.datum_shift[1];
    }
    request.writer.Size(picture.width / kTileSide, picture.height / kTileSide)
        .Palette(picture.palette)
        .Georeferencing(fit->coefficients);
    if (!request.outline.empty()) request.writer.Outline(request.outline);
    const auto image = request.writer.Image(picture.indices.data(), static_cast<std::size_t>(picture.width));
    if (!request.writer.Write(request.output, image)) return Fail("cannot write " + request.output);
    if (!ReadsBack(request.output, picture)) return Fail(request.output + " does not give the picture back");
    PrintJson({{"width_px", picture.width},
               {"height_px", picture.height},
               {"colours", static_cast<int>(picture.palette.size())},
               {"residual_px", fit->forward_px},
               {"inverse_residual_px", fit->inverse_px},
               {"bytes", static_cast<qint64>(fileSize(request.output))}});
    return kDone;
}

} // namespace

int MakeCommand(const QStringList& arguments)
{
    CMakeRequest request;
    const int parsed = ParseRequest(arguments, request);
    return parsed == kDone ? MakeChart(request) : parsed;
}
