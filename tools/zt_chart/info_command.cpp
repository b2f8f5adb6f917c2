#include "tools/zt_chart/cli.h"
#include "tools/zt_chart/opened_chart.h"

#include "chart/polynomial_projection.h"
#include "core/files.h"
#include "core/text.h"

#include <array>
#include <cmath>
#include <cstring>
#include <numbers>

#include <QJsonArray>

namespace {

constexpr const char* kKeys[] = {"magic",           "version",         "family",      "width_px",   "height_px",
                                 "title",           "long_title",      "identifier",  "edition",    "revision",
                                 "copyright",       "scale_text",      "depth_units", "type",       "has_datum_shift",
                                 "datum_lat_shift", "datum_lon_shift", "outline",     "centre_lon", "scale",
                                 "rotation",        "bounds",          "chunked",     "flags"};

QString Hex(std::uint32_t value)
{
    return QString::fromStdString(stringprintf("0x%08X", value));
}

const char* FamilyName(std::uint32_t family)
{
    if (family == CRastelleHeader::kFamilyFlat) return "flat";
    if (CRastelleHeader::IsChunked(family)) return "chunked";
    return family == CRastelleHeader::kFamilyRL2 ? "RL2" : "unknown";
}

/// What the first words say, which also a chart that does not open has.
void AddFirstWords(const std::string& path, QJsonObject& info)
{
    std::array<std::uint32_t, 4> words{};
    FILE* file = openRegularFile(path, "rb");
    if (file == nullptr) return;
    const std::size_t got = std::fread(words.data(), sizeof words[0], words.size(), file);
    std::fclose(file);
    if (got >= 1) info["magic"] = Hex(words[0]);
    if (got < 2 || (words[0] | 1U) != CRastelleHeader::kMagic) return;
    const std::uint32_t family = words[1] & CRastelleHeader::kFamilyMask;
    info["version"] = Hex(words[1]);
    info["family"] = FamilyName(family);
    info["chunked"] = family != 0;
}

QString HeaderText(CRastelle& chart, std::uint32_t pointer)
{
    std::string text;
    chart.GetHeaderString(pointer, text);
    return QString::fromStdString(text);
}

void AddTexts(CRastelle& chart, QJsonObject& info)
{
    const CRastelleHeader& header = *chart.header;
    info["title"] = QString::fromStdString(chart.GetTitle());
    info["long_title"] = HeaderText(chart, header.long_title);
    info["identifier"] = HeaderText(chart, header.identifier);
    info["edition"] = HeaderText(chart, header.edition);
    info["revision"] = HeaderText(chart, header.revision);
    info["copyright"] = HeaderText(chart, header.copyright);
    info["scale_text"] = HeaderText(chart, header.scale_text);
    info["depth_units"] = HeaderText(chart, header.depth_units);
    info["type"] = QString::fromStdString(chart.GetMapType());
}

QJsonArray StoredOutline(CRastelle& chart)
{
    QJsonArray outline;
    for (std::int64_t i = 0; i < chart.header->outline_count; ++i) {
        CRastelle::BlockReader reader(chart);
        const auto bytes = reader.Bytes(chart.header->outline + std::uint64_t{16} * static_cast<std::uint64_t>(i));
        double point[2];
        if (bytes.size() < sizeof point) break;
        std::memcpy(point, bytes.data(), sizeof point);
        outline.append(QJsonArray{point[0], point[1]});
    }
    return outline;
}

void AddPlace(CRastelle& chart, QJsonObject& info)
{
    const auto& geo = chart.header->georeferencing;
    CPolynomialProjection projection;
    projection.init(geo.forward, geo.inverse, chart.width_px, chart.height_px, chart.datum_lat_shift,
                    chart.datum_lon_shift);
    float cosine = 1.0F;
    float sine = 0.0F;
    projection.get_rotation(chart.width_px / 2, chart.height_px / 2, cosine, sine);
    info["rotation"] = std::atan2(double{sine}, double{cosine}) * 180.0 / std::numbers::pi;
    info["scale"] = chart.get_scale(chart.width_px / 2, chart.height_px / 2);
    info["centre_lon"] = chart.centre_lon;
    CPolygon boundary;
    chart.getBoundaryPolygon(boundary);
    const CBounds bounds = boundary.bounds();
    info["bounds"] = QJsonObject{{"lat_min", bounds.lat_min},
                                 {"lat_max", bounds.lat_max},
                                 {"lon_min", bounds.lon_min},
                                 {"lon_max", bounds.lon_max}};
}

void AddChart(CRastelle& chart, QJsonObject& info)
{
    info["width_px"] = chart.width_px;
    info["height_px"] = chart.height_px;
    AddTexts(chart, info);
    info["has_datum_shift"] = chart.has_datum_shift;
    info["datum_lat_shift"] = chart.datum_lat_shift;
    info["datum_lon_shift"] = chart.datum_lon_shift;
    info["outline"] = StoredOutline(chart);
    AddPlace(chart, info);
    info["flags"] = static_cast<qint64>(chart.header->flags);
}

} // namespace

int InfoCommand(const QStringList& arguments)
{
    QCommandLineParser parser;
    if (!ParseArguments(parser, arguments, 1, 1)) return kWrongUse;
    const std::string path = parser.positionalArguments().front().toStdString();
    const COpenedChart opened(path, COpenedChart::Need::header);
    QJsonObject info;
    for (const char* key : kKeys) info[QLatin1String(key)] = QJsonValue::Null;
    AddFirstWords(path, info);
    if (opened.chart) AddChart(*opened.chart, info);
    info["error"] = opened.error.empty() ? QJsonValue(QJsonValue::Null) : QString::fromStdString(opened.error);
    PrintJson(info);
    return opened.error.empty() ? kDone : kFailed;
}
