#include "chart/chart_writer.h"

#include "core/safe_replace.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <QString>

class CChartWriter::Output {
public:
    virtual ~Output() = default;
    virtual bool WriteAt(std::uint64_t position, const void* data, std::size_t size) = 0;

    /// Appends, behind what was written last.
    bool Append(const void* data, std::size_t size)
    {
        const std::uint64_t at = end;
        end += size;
        return end <= 0xFFFFFFFF && WriteAt(at, data, size);
    }
    std::uint64_t end = 0;
};

namespace {

std::string Latin1(const std::string& utf8)
{
    return QString::fromStdString(utf8).toLatin1().toStdString();
}

unsigned Part(std::uint32_t colour, int shift)
{
    return colour >> shift & 0xFF;
}

int SquaredDistance(std::uint32_t colour, unsigned red, unsigned green, unsigned blue)
{
    const auto square = [](int d) { return d * d; };
    return square(static_cast<int>(Part(colour, 16) - red)) + square(static_cast<int>(Part(colour, 8) - green)) +
           square(static_cast<int>(Part(colour, 0) - blue));
}

} // namespace

std::vector<std::uint8_t> BuildInterpolationMatrix(std::span<const std::uint32_t> palette)
{
    std::vector<std::uint8_t> matrix(kPaletteSize * kPaletteSize, 0);
    const std::size_t colours = std::min<std::size_t>(palette.size(), kPaletteSize);
    for (std::size_t a = 0; a < colours; ++a) {
        for (std::size_t b = 0; b <= a; ++b) {
            const auto mean = [&](int shift) { return (Part(palette[a], shift) + Part(palette[b], shift)) / 2; };
            const unsigned red = mean(16), green = mean(8), blue = mean(0);
            const auto farther = [&](std::uint32_t one, std::uint32_t other) {
                return SquaredDistance(one, red, green, blue) < SquaredDistance(other, red, green, blue);
            };
            const auto nearest =
                std::min_element(palette.begin(), palette.begin() + static_cast<std::ptrdiff_t>(colours), farther);
            // A colour with itself is itself, even if the palette holds it twice.
            const auto index =
                static_cast<std::uint8_t>(a == b ? static_cast<std::ptrdiff_t>(a) : nearest - palette.begin());
            matrix[a * kPaletteSize + b] = index;
            matrix[b * kPaletteSize + a] = index;
        }
    }
    return matrix;
}

CChartWriter::CChartWriter() : header{}
{
    header.magic = CRastelleHeader::kMagic;
    header.version = CRastelleHeader::kHighestVersion;
    Size(1, 1);
}

CChartWriter& CChartWriter::Size(int tiles_across, int tiles_down)
{
    header.width = static_cast<std::uint32_t>(tiles_across);
    header.height = static_cast<std::uint32_t>(tiles_down);
    return *this;
}

CChartWriter& CChartWriter::Text(std::uint32_t CRastelleHeader::*field, const std::string& text)
{
    texts.emplace_back(field, text);
    return *this;
}

CChartWriter& CChartWriter::Type(const std::string& text)
{
    type = text;
    return *this;
}

CChartWriter& CChartWriter::ExtraName(const std::string& text)
{
    extra_name = text;
    return *this;
}

CChartWriter& CChartWriter::DownloadUrl(const std::string& text)
{
    download_url = text;
    return *this;
}

CChartWriter& CChartWriter::Flags(std::uint32_t flags)
{
    header.flags = flags;
    return *this;
}

CChartWriter& CChartWriter::DatumShift(double lat, double lon)
{
    has_datum_shift = true;
    datum_shift[0] = lat;
    datum_shift[1] = lon;
    return *this;
}

CChartWriter& CChartWriter::Outline(std::vector<GeoPoint> points)
{
    outline = std::move(points);
    return *this;
}

CChartWriter& CChartWriter::Georeferencing(const Geo_ref_coeff_t& coefficients)
{
    header.georeferencing = coefficients;
    return *this;
}

CChartWriter& CChartWriter::Palette(std::span<const std::uint32_t> colours)
{
    palette_size = std::min<std::size_t>(colours.size(), kPaletteSize);
    std::fill(std::begin(header.palette), std::end(header.palette), 0);
    for (std::size_t i = 0; i < palette_size; ++i) header.palette[i] = colours[i] & 0x00FFFFFF;
    return *this;
}

CChartWriter& CChartWriter::Matrix(std::vector<std::uint8_t> indices)
{
    matrix = std::move(indices);
    return *this;
}

CChartWriter& CChartWriter::Coding(TileCoding new_coding)
{
    coding = new_coding;
    return *this;
}

CChartWriter& CChartWriter::Magic(std::uint32_t magic)
{
    header.magic = magic;
    return *this;
}

CChartWriter& CChartWriter::Version(std::uint32_t version_with_family)
{
    header.version = version_with_family;
    return *this;
}

CChartWriter& CChartWriter::RawTile(int x, int y, std::vector<std::uint8_t> block)
{
    raw_tiles[{x, y}] = std::move(block);
    return *this;
}

CChartWriter& CChartWriter::BlocksFrom(std::uint32_t position)
{
    blocks_from = position;
    return *this;
}

CChartWriter::band_source CChartWriter::Image(const unsigned char* indices, std::size_t stride) const
{
    const std::size_t across = std::size_t{header.width} * kTileSide;
    return [indices, stride, across](int tile_y, unsigned char* band) {
        for (int row = 0; row < kTileSide; ++row) {
            std::memcpy(band + static_cast<std::size_t>(row) * across,
                        indices +
                            (static_cast<std::size_t>(tile_y) * kTileSide + static_cast<std::size_t>(row)) * stride,
                        across);
        }
        return true;
    };
}

CChartWriter::band_source CChartWriter::Plain(unsigned char index) const
{
    const std::size_t bytes = std::size_t{header.width} * kTilePixels;
    return [index, bytes](int, unsigned char* band) {
        std::memset(band, index, bytes);
        return true;
    };
}

bool CChartWriter::WriteTexts(Output& output, CRastelleHeader& finished) const
{
    bool good = true;
    const auto put = [&](const void* data, std::size_t size) {
        const auto position = static_cast<std::uint32_t>(output.end);
        good = output.Append(data, size) && good;
        return position;
    };
    const auto put_text = [&](const std::string& text) -> std::uint32_t {
        if (text.empty()) return 0;
        const std::string stored = Latin1(text);
        return put(stored.c_str(), stored.size() + 1);
    };
    for (const auto& [field, text] : texts) finished.*field = put_text(text);
    CRastelleExtendedBlock extended = {};
    extended.chart_type = put_text(type);
    extended.extra_name = put_text(extra_name);
    if (has_datum_shift) extended.datum_shift = put(datum_shift, sizeof(datum_shift));
    if (!download_url.empty()) {
        const CRastelleDownloadRecord record{sizeof(CRastelleDownloadRecord), put_text(download_url)};
        extended.download_record = put(&record, sizeof(record));
    }
    const bool has_extended = !type.empty() || !extra_name.empty() || has_datum_shift || !download_url.empty();
    if (has_extended) finished.extended_block = put(&extended, sizeof(extended));
    finished.outline_count = static_cast<std::int32_t>(outline.size());
    if (!outline.empty()) finished.outline = put(outline.data(), outline.size() * sizeof(outline[0]));
    return good;
}

std::vector<std::uint8_t> CChartWriter::Block(int x, int y, const unsigned char* band) const
{
    if (const auto raw = raw_tiles.find({x, y}); raw != raw_tiles.end()) return raw->second;
    unsigned char tile[kTilePixels];
    const std::size_t across = std::size_t{header.width} * kTileSide;
    for (int row = 0; row < kTileSide; ++row) {
        std::memcpy(tile + row * kTileSide,
                    band + static_cast<std::size_t>(row) * across + static_cast<std::size_t>(x) * kTileSide, kTileSide);
    }
    return EncodeTile(tile, coding);
}

bool CChartWriter::WriteTiles(Output& output, const band_source& source, std::vector<std::uint32_t>& pointers) const
{
    std::vector<unsigned char> band(std::size_t{header.width} * kTilePixels);
    std::uint32_t one_colour_blocks[kPaletteSize] = {};
    for (int y = 0; y < static_cast<int>(header.height); ++y) {
        if (!source(y, band.data())) return false;
        for (int x = 0; x < static_cast<int>(header.width); ++x) {
            const auto block = Block(x, y, band.data());
            // Tiles of one colour share a block: on a chart with much sea that is most of them.
            std::uint32_t own = 0;
            std::uint32_t& place =
                block.size() == 2 && block[0] == 0xFF && block[1] < kPaletteSize ? one_colour_blocks[block[1]] : own;
            if (place == 0) {
                place = static_cast<std::uint32_t>(output.end);
                if (!output.Append(block.data(), block.size())) return false;
            }
            pointers.push_back(place);
        }
    }
    return true;
}

bool CChartWriter::WriteTo(Output& output, const band_source& source) const
{
    static_assert(sizeof(GeoPoint) == 2 * sizeof(double));
    if (header.width > CRastelleHeader::kMaximumTiles || header.height > CRastelleHeader::kMaximumTiles) return false;
    CRastelleHeader finished = header;
    auto mixes = matrix.empty() ? BuildInterpolationMatrix({header.palette, palette_size}) : matrix;
    mixes.resize(sizeof(finished.interpolation_matrix));
    std::memcpy(finished.interpolation_matrix, mixes.data(), mixes.size());
    output.end = CRastelleHeader::kFixedBytes + 4 * std::uint64_t{header.width} * header.height;
    if (output.end > 0xFFFFFFFF || !WriteTexts(output, finished)) return false;
    std::vector<std::uint32_t> pointers;
    if (!CRastelleHeader::IsChunked(header.Family())) {
        output.end = std::max<std::uint64_t>(output.end, blocks_from);
        if (!WriteTiles(output, source, pointers)) return false;
    }
    // A chart without anything behind its table still reaches the size that readers ask for.
    const std::uint64_t nothing = 0;
    return output.WriteAt(CRastelleHeader::kFixedBytes - sizeof(nothing) +
                              4 * std::uint64_t{header.width} * header.height,
                          &nothing, sizeof(nothing)) &&
           output.WriteAt(0, &finished, sizeof(finished)) &&
           output.WriteAt(CRastelleHeader::kTilePointers, pointers.data(), pointers.size() * sizeof(pointers[0]));
}

bool CChartWriter::Write(const std::string& path, const band_source& source) const
{
    struct FileOutput : Output {
        explicit FileOutput(FILE* opened) : file(opened) {}
        bool WriteAt(std::uint64_t position, const void* data, std::size_t size) override
        {
            if (size == 0) return true;
            if (ftell(file) != static_cast<long>(position) && fseek(file, static_cast<long>(position), SEEK_SET) != 0)
                return false;
            return fwrite(data, 1, size, file) == size;
        }
        FILE* file;
    };
    CSafeReplace replace(path);
    if (replace.File() == nullptr) return false;
    FileOutput output(replace.File());
    return WriteTo(output, source) && replace.Commit();
}

std::vector<std::uint8_t> CChartWriter::Bytes(const band_source& source) const
{
    struct MemoryOutput : Output {
        bool WriteAt(std::uint64_t position, const void* data, std::size_t size) override
        {
            if (bytes.size() < position + size) bytes.resize(position + size);
            if (size != 0) std::memcpy(bytes.data() + position, data, size);
            return true;
        }
        std::vector<std::uint8_t> bytes;
    };
    MemoryOutput output;
    return WriteTo(output, source) ? std::move(output.bytes) : std::vector<std::uint8_t>();
}
