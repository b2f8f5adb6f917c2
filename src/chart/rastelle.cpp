#include "chart/rastelle.h"

#include "chart/mix_tables.h"
#include "chart/rastelle3.h"
#include "core/file_names.h"
#include "core/files.h"
#include "core/text.h"

#include <algorithm>
#include <cstring>
#include <unistd.h>

namespace {

constexpr std::uint64_t kViewStep = 0x2000000;  ///< where views start
constexpr std::uint64_t kViewBytes = 0x2004000; ///< longer than a step, so that a block across one is whole in a view
constexpr std::size_t kLongestText = 0xFFFF;    ///< bytes that are looked at for the end of a string

std::string TextFrom(std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) return {};
    const auto* begin = reinterpret_cast<const char*>(bytes.data());
    return Latin1ToUtf8({begin, strnlen(begin, std::min(bytes.size(), kLongestText))});
}

} // namespace

const unsigned char CRastelle::bitrev[64] = {
    0,  32, 16, 48, 8,  40, 24, 56, 4,  36, 20, 52, 12, 44, 28, 60, 2,  34, 18, 50, 10, 42,
    26, 58, 6,  38, 22, 54, 14, 46, 30, 62, 1,  33, 17, 49, 9,  41, 25, 57, 5,  37, 21, 53,
    13, 45, 29, 61, 3,  35, 19, 51, 11, 43, 27, 59, 7,  39, 23, 55, 15, 47, 31, 63,
};

CRastelle::CRastelle() = default;

CRastelle::~CRastelle()
{
    Close();
}

void CRastelle::Close()
{
    open = false;
    header = nullptr;
    has_datum_shift = false;
    boundary.reset();
    base_view.Unmap();
    {
        const CMutexLocker hold(view_lock);
        high_view.Unmap();
        high_view_start = ~0ULL;
    }
    if (file >= 0) ::close(file);
    file = -1;
}

std::span<const std::uint8_t> CRastelle::BaseBytes(std::uint64_t position) const
{
    const auto view = base_view.Bytes();
    return position < view.size() ? view.subspan(position) : view.first(0);
}

std::span<const std::uint8_t> CRastelle::HighBytes(std::uint64_t position)
{
    const std::uint64_t start = position / kViewStep * kViewStep;
    if (start != high_view_start) {
        high_view.Unmap();
        high_view_start = ~0ULL;
        if (start >= file_size || !high_view.Map(file, start, std::min(kViewBytes, file_size - start))) return {};
        high_view_start = start;
    }
    const auto view = high_view.Bytes();
    return position - start < view.size() ? view.subspan(position - start) : view.first(0);
}

const void* CRastelle::get_addr(std::uint64_t position)
{
    const auto bytes = BlockReader(*this).Bytes(position);
    return bytes.empty() ? nullptr : bytes.data();
}

bool CRastelle::BlockReader::MovesView(std::uint64_t position) const
{
    return position >= kViewStep && lock.owns_lock() && position / kViewStep * kViewStep != chart.high_view_start;
}

std::span<const std::uint8_t> CRastelle::BlockReader::Bytes(std::uint64_t position)
{
    if (position < kViewStep) return chart.BaseBytes(position);
    if (!lock.owns_lock()) lock = CMutexLocker(chart.view_lock);
    return chart.HighBytes(position);
}

std::uint32_t CRastelle::TilePointer(int x, int y) const
{
    const std::uint64_t tile = std::uint64_t{header->width} * static_cast<unsigned>(y) + static_cast<unsigned>(x);
    std::uint32_t pointer;
    std::memcpy(&pointer, base_view.Bytes().data() + Header::kTilePointers + 4 * tile, sizeof(pointer));
    return pointer;
}

void CRastelle::GetHeaderString(unsigned pointer, std::string& out)
{
    out.clear();
    if (pointer == 0 || header == nullptr) return;
    BlockReader reader(*this);
    out = TextFrom(reader.Bytes(pointer));
}

void CRastelle::GetString(int file, unsigned pointer, std::string& out)
{
    constexpr std::size_t kMostBytes = 1023;
    out.clear();
    std::uint8_t buffer[kMostBytes];
    if (pointer == 0 || lseek(file, static_cast<off_t>(pointer), SEEK_SET) < 0) return;
    const ssize_t got = read(file, buffer, sizeof(buffer));
    if (got > 0) out = TextFrom({buffer, static_cast<std::size_t>(got)});
}

std::string CRastelle::GetMapType()
{
    std::string type;
    if (header != nullptr) GetHeaderString(extended.chart_type, type);
    return type;
}

std::string CRastelle::GetCopyright()
{
    std::string copyright;
    if (header != nullptr) GetHeaderString(header->copyright, copyright);
    return copyright;
}

std::string CRastelle::GetTitle()
{
    std::string title;
    if (header == nullptr) return title;
    for (const unsigned choice : {header->title, header->long_title, header->identifier}) {
        if (title.empty()) GetHeaderString(choice, title);
    }
    if (title.empty()) title = filename(path);
    const std::string type = GetMapType();
    const auto is = [&type](const char* word) { return type.find(word) != std::string::npos; };
    if (header->depth_units != 0 && (is("Nautical") || is("Marine") || is("Hydro"))) {
        std::string units;
        GetHeaderString(header->depth_units, units);
        title += ". Soundings in " + units;
    }
    return title;
}

void CRastelle::xy_to_latlong(int x, int y, double& lat, double& lon) const
{
    lat = lon = 0.0;
    if (header == nullptr) return;
    header->georeferencing.xy_to_latlong(x, y, lat, lon);
    if (!has_datum_shift) return;
    lat += datum_lat_shift;
    lon += datum_lon_shift;
}

void CRastelle::latlong_to_xy(double lat, double lon, double& x, double& y) const
{
    x = y = 0.0;
    if (header == nullptr) return;
    if (has_datum_shift) {
        lat -= datum_lat_shift;
        lon -= datum_lon_shift;
    }
    header->georeferencing.latlong_to_xy(lat, lon, x, y, centre_lon);
}

double CRastelle::get_scale(double x, double y) const
{
    return header != nullptr ? header->georeferencing.get_scale(x, y) : 0.0;
}

int CRastelle::ReadBlockRow(int x, int y, int count, int level, ThreadDataForRead* thread)
{
    int failed = 0;
    for (int i = 0; i < count; ++i) {
        const auto slot = static_cast<std::size_t>(i);
        failed |= ReadBlock(x + i, y, level, thread->tiles[slot].data(), thread);
        thread->notes[slot] = {};
    }
    return failed != 0 ? 1 : 0;
}

long CRastelle::getRltFileSize(const std::string& path)
{
    long size = std::max<long>(fileSize(path), 0);
    const bool upper_case = extension(path) == "RLT";
    std::string folder = filename_with_extension(path, upper_case ? "RL3" : "rl3");
    if (!isDirectory(folder)) folder = filename_with_extension(path, "rl3");
    if (isDirectory(folder)) size += getDirectorySizeSingleLevel(folder);
    return size;
}

bool CRastelle::appearsFullyDownloaded(const std::string& path)
{
    return !CRastelle3::ChunkPath(path).empty();
}
