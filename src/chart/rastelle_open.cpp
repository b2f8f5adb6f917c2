#include "chart/mix_tables.h"
#include "chart/rastelle.h"
#include "core/files.h"
#include "core/message_sink.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sys/stat.h>

namespace {

constexpr std::uint64_t kFirstViewBytes = 0x2004000;
const char* const kTitle = "Problem";
const char* const kCannotMap = "Failed to open map: \"%s\"\nTry rebooting...";
// Capital letter and stop are as users have always seen them.
const char* const kCannotMapWhole = "Failed to open map: \"%s\"\n. Try Rebooting...";
const char* const kNoChart = "Not a Rastelle: \"%s\"";
const char* const kTooNew = "To open this map you need a newer version of your software.\n\n%s is version %x.";
const char* const kHeaderOnly = "This map is a catalog header and has not been completely converted.";

} // namespace

const char* const CRastelle::kRL2Message = "This RL2 map is not compatible";

void CRastelle::Open(ZT_HWND parent, const char* new_path, std::function<void(bool)> done)
{
    Close();
    const auto problem = MapAndCheck(new_path);
    if (!problem) {
        open = true;
        if (OnOpen()) {
            // The callback may give the chart back: nothing of it is touched afterwards.
            done(true);
            return;
        }
    } else if (!problem->empty()) {
        ShowMessage(parent, kTitle, *problem);
    }
    Close();
    done(false);
}

std::optional<std::string> CRastelle::MapAndCheck(const char* new_path)
{
    file = openRegularHandle(new_path);
    struct stat status = {};
    if (file < 0 || fstat(file, &status) != 0) return std::string();
    file_size = static_cast<std::uint64_t>(status.st_size);
    if (!base_view.Map(file, 0, std::min(file_size, kFirstViewBytes))) return stringprintf(kCannotMap, new_path);
    path = new_path;
    if (auto problem = CheckHeader(new_path)) return problem;
    header = reinterpret_cast<const Header*>(base_view.Bytes().data());
    LoadExtendedBlock();
    width_px = static_cast<int>(header->width) * kTileSide;
    height_px = static_cast<int>(header->height) * kTileSide;
    GetHeaderString(extended.extra_name, extra_name);
    LoadPalette();
    if (header->Family() == Header::kFamilyFlat && TilePointer(0, 0) == 0) return kHeaderOnly;
    LoadDatumShift();
    double lat;
    xy_to_latlong(width_px / 2, height_px / 2, lat, centre_lon);
    return {};
}

std::optional<std::string> CRastelle::CheckHeader(const char* new_path)
{
    // Only the first words are looked at before the view is known to hold the rest.
    const auto view = base_view.Bytes();
    std::uint32_t words[4] = {};
    std::memcpy(words, view.data(), std::min(view.size(), sizeof(words)));
    const auto [magic, version, width, height] = words;
    const std::uint32_t family = version & Header::kFamilyMask;
    if ((magic | 1U) != Header::kMagic) return stringprintf(kNoChart, new_path);
    if ((version & Header::kVersionMask) > Header::kHighestVersion) return stringprintf(kTooNew, new_path, version);
    if (family == Header::kFamilyRL2) return kRL2Message;
    if (width > Header::kMaximumTiles || height > Header::kMaximumTiles) return stringprintf(kNoChart, new_path);
    std::uint64_t needed = Header::kFixedBytes;
    if (family == Header::kFamilyFlat) needed += 4 * std::uint64_t{width} * height;
    if (view.size() >= needed) return {};
    if (file_size < needed || !base_view.Map(file, 0, needed)) return stringprintf(kCannotMapWhole, new_path);
    return {};
}

template <class T>
bool CRastelle::CopyFrom(std::uint64_t position, T& out, std::size_t bytes)
{
    BlockReader reader(*this);
    const auto source = reader.Bytes(position);
    if (position == 0 || source.size() < bytes) return false;
    std::memcpy(&out, source.data(), bytes);
    return true;
}

void CRastelle::LoadExtendedBlock()
{
    extended = {};
    download = {};
    if (!CopyFrom(header->extended_block, extended) || extended.download_record == 0) return;
    std::uint32_t size = 0;
    if (CopyFrom(extended.download_record, size)) {
        CopyFrom(extended.download_record, download, std::min<std::size_t>(size, sizeof(download)));
    }
}

void CRastelle::LoadPalette()
{
    for (int i = 0; i < kPaletteSize; ++i) palette[i] = header->palette[i] | 0xFF000000;
    mix = std::make_unique<CMixTables>(header->interpolation_matrix, palette);
}

void CRastelle::LoadDatumShift()
{
    double shift[2] = {};
    has_datum_shift = CopyFrom(extended.datum_shift, shift) && std::isfinite(shift[0]) && std::isfinite(shift[1]);
    datum_lat_shift = has_datum_shift ? shift[0] : 0.0;
    datum_lon_shift = has_datum_shift ? shift[1] : 0.0;
}
