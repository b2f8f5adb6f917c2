#include "tools/zt_chart/cli.h"
#include "tools/zt_chart/opened_chart.h"

#include "chart/polynomial_projection.h"

#include <cstdio>

int LocateCommand(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption xy_option("xy", "", "X,Y");
    const QCommandLineOption latlon_option("latlon", "", "LAT,LON");
    parser.addOptions({xy_option, latlon_option});
    if (!ParseArguments(parser, arguments, 1, 1)) return kWrongUse;
    const bool from_pixel = parser.isSet(xy_option);
    if (from_pixel == parser.isSet(latlon_option)) return WrongUse("give either --xy X,Y or --latlon LAT,LON");
    const auto numbers = ParseNumbers(parser.value(from_pixel ? xy_option : latlon_option), 2);
    if (!numbers) return WrongUse("two numbers parted by a comma are wanted");

    const COpenedChart opened(parser.positionalArguments().front().toStdString(), COpenedChart::Need::header);
    if (!opened.chart) return Fail(opened.error);
    const CRastelle& chart = *opened.chart;
    const auto& geo = chart.header->georeferencing;
    CPolynomialProjection projection;
    projection.init(geo.forward, geo.inverse, chart.width_px, chart.height_px, chart.datum_lat_shift,
                    chart.datum_lon_shift);
    double first = 0.0;
    double second = 0.0;
    if (from_pixel) {
        projection.xy_to_latlong(numbers->front(), numbers->back(), first, second);
        std::printf("{\"lat\": %.15g, \"lon\": %.15g}\n", first, second);
    } else {
        projection.latlong_to_xy(numbers->front(), numbers->back(), first, second);
        std::printf("{\"x\": %.15g, \"y\": %.15g}\n", first, second);
    }
    return kDone;
}
