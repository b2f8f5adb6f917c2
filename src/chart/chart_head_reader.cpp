#include "chart/chart_head_reader.h"

#include "chart/rastelle.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Where the catalogue looks for the last tile pointer, counted from the pointer before the first.
constexpr std::uint64_t kLastPointerBase = 17824;
constexpr std::uint64_t kPointerBytes = 4;
/// Outline points that are read at once.
constexpr std::size_t kPointsInStep = 1024;
/// A revision of at least this length with a "/" before its last four characters ends with a year.
constexpr std::size_t kShortestRevision = 6;
constexpr std::size_t kYearWithSlash = 5;

} // namespace

CChartHeadReader::CChartHeadReader(IChartBytes& chart_bytes) : bytes(chart_bytes), items(chart_bytes) {}

bool CChartHeadReader::ReadHead()
{
    if (bytes.Size() < CRastelleHeader::kFixedBytes) return false;
    const std::span scalars(reinterpret_cast<std::uint8_t*>(&head), CRastelleHeader::kScalarBytes);
    if (bytes.Read(0, scalars) != scalars.size()) return false;
    return head.HasChartMagic() && (head.version & CRastelleHeader::kVersionMask) <= CRastelleHeader::kHighestVersion &&
           head.Family() != CRastelleHeader::kFamilyRL2 && head.title < bytes.Size() && head.outline < bytes.Size();
}

std::uint64_t CChartHeadReader::LastPointer() const
{
    const std::uint64_t tiles = std::uint64_t{head.width} * head.height;
    return tiles > bytes.Size() / kPointerBytes ? 0 : kLastPointerBase + kPointerBytes * (tiles - 1);
}

void CChartHeadReader::PrefetchTexts()
{
    const bool flat = head.Family() == CRastelleHeader::kFamilyFlat;
    const std::array<std::uint64_t, 6> positions = {head.title,
                                                    head.edition,
                                                    head.revision,
                                                    head.extended_block,
                                                    HasOutline() ? head.outline : 0U,
                                                    flat ? LastPointer() : 0U};
    items.Prefetch(positions);
}

bool CChartHeadReader::ReadExtended()
{
    extended = {};
    shift[0] = shift[1] = 0.0;
    if (head.extended_block == 0) return true;
    if (!items.ReadInto(head.extended_block, extended)) return false;
    if (extended.chart_type >= bytes.Size() || extended.datum_shift >= bytes.Size()) return false;
    if (extended.datum_shift == 0) return true;
    if (!items.ReadInto(extended.datum_shift, shift)) return false;
    // The chart itself opens without such a shift.
    if (!std::isfinite(shift[0]) || !std::isfinite(shift[1])) shift[0] = shift[1] = 0.0;
    return true;
}

bool CChartHeadReader::HasWholePointerTable()
{
    const std::uint64_t position = LastPointer();
    std::uint32_t pointer = 0;
    return position != 0 && items.ReadInto(position, pointer) && pointer < bytes.Size();
}

template <class Take>
bool CChartHeadReader::ForEachOutlinePoint(Take take)
{
    if (head.outline_count > kMostOutlinePoints) return false;
    double centre_lat = 0.0;
    double centre_lon = 0.0;
    head.georeferencing.xy_to_latlong(head.width * 32.0, head.height * 32.0, centre_lat, centre_lon);
    std::array<std::array<double, 2>, kPointsInStep> points;
    const auto count = static_cast<std::size_t>(head.outline_count);
    for (std::size_t first = 0; first < count; first += kPointsInStep) {
        const std::span step = std::span(points).first(std::min(kPointsInStep, count - first));
        const std::span step_bytes(reinterpret_cast<std::uint8_t*>(step.data()), step.size_bytes());
        if (!items.Read(head.outline + first * sizeof(points[0]), step_bytes)) return false;
        for (const auto& [lat, lon] : step) {
            double near_lon = lon;
            if (near_lon - centre_lon < -180.0) near_lon += 360.0;
            if (near_lon - centre_lon > 180.0) near_lon -= 360.0;
            if (std::isfinite(lat) && std::isfinite(near_lon)) take(lat + shift[0], near_lon + shift[1]);
        }
    }
    return true;
}

/// The corners stand unshifted, as a chart's own boundary has them.
void CChartHeadReader::AddCorners(CChartOutline& out) const
{
    const double right = head.width * double{kTileSide};
    const double bottom = head.height * double{kTileSide};
    const double corners[4][2] = {{0.0, 0.0}, {right, 0.0}, {right, bottom}, {0.0, bottom}};
    out.polygon.vertices.reserve(std::size(corners));
    for (const auto& [x, y] : corners) {
        double lat = 0.0;
        double lon = 0.0;
        head.georeferencing.xy_to_latlong(x, y, lat, lon);
        out.polygon.add(lon, lat);
        out.bounds.add(lat, lon);
    }
}

std::uint32_t CChartHeadReader::Date()
{
    std::uint32_t date = 0;
    const std::string revision = items.Text(head.revision);
    if (revision.size() >= kShortestRevision && revision[revision.size() - kYearWithSlash] == '/')
        date = parse_date_for_comparison(revision);
    return date != 0 ? date : parse_date_for_comparison(items.Text(head.edition));
}

bool CChartHeadReader::ReadRecord(CChartOutline& out)
{
    if (!ReadHead()) return false;
    PrefetchTexts();
    if (!ReadExtended()) return false;
    out.chunked = head.Family() != CRastelleHeader::kFamilyFlat;
    out.flags = head.flags;
    if (!out.chunked && !HasWholePointerTable()) return false;
    out.title = items.Text(head.title);
    out.type = items.Text(extended.chart_type);
    out.bounds = CBounds();
    out.polygon.vertices.clear();
    if (!HasOutline()) {
        AddCorners(out);
    } else if (!ForEachOutlinePoint([&out](double lat, double lon) { out.bounds.add(lat, lon); })) {
        return false;
    }
    out.date = Date();
    out.scale = head.georeferencing.get_scale(head.width * 32.0, head.height * 32.0);
    return true;
}

bool CChartHeadReader::ReadOutline(CPolygon& out)
{
    if (!ReadHead() || !HasOutline() || !ReadExtended()) return false;
    out.vertices.clear();
    out.vertices.reserve(static_cast<std::size_t>(std::min(head.outline_count, kMostOutlinePoints)));
    if (ForEachOutlinePoint([&out](double lat, double lon) { out.add(lon, lat); })) return true;
    out.vertices.clear();
    return false;
}
