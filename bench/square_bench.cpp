#include "chart/instruction_set.h"
#include "chart/plain_decoder.h"
#include "chart/rastelle1.h"
#include "ratio.h"
#include "support/chart_samples.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstring>
#include <memory>
#ifdef ZT_HAVE_PNG
#include <png.h>
#endif
#ifdef ZT_HAVE_WEBP
#include <webp/decode.h>
#include <webp/encode.h>
#endif

namespace {

constexpr int kChartTiles = 32; ///< along a sample's sides
constexpr int kSquare = 256;
constexpr int kSquarePixels = kSquare * kSquare;
using bytes = std::vector<std::uint8_t>;

/// A chart on disk, its squares, and the same squares as other libraries keep them.
class Squares {
public:
    explicit Squares(ChartKind kind) : sample(MakeChartSample(kind, kChartTiles)), pixels(kSquarePixels)
    {
        const std::string path = folder.filePath("sample.rlt").toStdString();
        if (!sample.Writer().Write(path, sample.Source())) std::abort();
        chart.Open({}, path.c_str(), [](bool) {});
        if (!chart.open) std::abort();
    }
    void Read(int level)
    {
        ForEachSquare(level, [&](int x, int y) {
            chart.ReadRectRGB(x, y, kSquare, kSquare, kSquare, level, pixels.data(), thread.get());
        });
    }
    void ReadPlainly(int level)
    {
        ForEachSquare(level, [&](int x, int y) { ReadPlainSquare(x / kTileSide, y / kTileSide, level); });
    }
#ifdef ZT_HAVE_PNG
    void DecodePngs()
    {
        if (pngs.empty()) ForEachSquare(0, [&](int x, int y) { pngs.push_back(Png(x, y)); });
        for (const bytes& png : pngs) DecodePng(png);
    }
#endif
#ifdef ZT_HAVE_WEBP
    void DecodeWebps()
    {
        if (webps.empty()) ForEachSquare(0, [&](int x, int y) { webps.push_back(Webp(x, y)); });
        for (const bytes& webp : webps) {
            auto* out = reinterpret_cast<std::uint8_t*>(pixels.data());
            if (WebPDecodeBGRAInto(webp.data(), webp.size(), out, 4 * kSquarePixels, 4 * kSquare) == nullptr)
                std::abort();
        }
    }
#endif

private:
    template <class Work>
    void ForEachSquare(int level, Work work)
    {
        const int step = kSquare << level;
        for (int y = 0; y + step <= sample.side(); y += step) {
            for (int x = 0; x + step <= sample.side(); x += step) {
                work(x, y);
                benchmark::ClobberMemory();
            }
        }
    }
    void ReadPlainSquare(int tile_x, int tile_y, int level)
    {
        const int tiles = (kSquare << level) / kTileSide;
        const int side = kTileSide >> level;
        unsigned char* tile = thread->tiles[0].data();
        CRastelle::BlockReader reader(chart);
        for (int row = 0; row < tiles; ++row) {
            for (int column = 0; column < tiles; ++column) {
                std::uint32_t pointer;
                const int number = (tile_y + row) * kChartTiles + tile_x + column;
                std::memcpy(&pointer,
                            chart.get_addr(CRastelleHeader::kTilePointers + 4 * static_cast<unsigned>(number)), 4);
                bool placeholder;
                PlainUnpackBlock(reader.Bytes(pointer), tile, kTileSide >> std::max(level - 1, 0), placeholder);
                std::uint32_t* to = pixels.data() + row * side * kSquare + column * side;
                if (level == 0) {
                    PlainColourTile(tile, chart.palette, to, kSquare);
                } else {
                    PlainReduceTile(tile, level, chart.header->interpolation_matrix, chart.palette, to, kSquare);
                }
            }
        }
    }
#ifdef ZT_HAVE_PNG
    bytes Png(int x, int y) const
    {
        std::vector<png_byte> colours;
        for (const std::uint32_t colour : sample.palette) {
            for (int shift = 16; shift >= 0; shift -= 8) colours.push_back(static_cast<png_byte>(colour >> shift));
        }
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        image.width = image.height = kSquare;
        image.format = PNG_FORMAT_RGB_COLORMAP;
        image.colormap_entries = static_cast<png_uint_32>(sample.palette.size());
        const unsigned char* first = sample.indices.data() + std::ptrdiff_t{y} * sample.side() + x;
        png_alloc_size_t size = 0;
        png_image_write_to_memory(&image, nullptr, &size, 0, first, sample.side(), colours.data());
        bytes png(size);
        if (png_image_write_to_memory(&image, png.data(), &size, 0, first, sample.side(), colours.data()) == 0)
            std::abort();
        return png;
    }
    struct PngSource {
        const png_byte* from;
    };
    void DecodePng(const bytes& file)
    {
        PngSource source{file.data()};
        png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        png_set_read_fn(png, &source, [](png_structp reader, png_bytep to, png_size_t count) {
            auto* at = static_cast<PngSource*>(png_get_io_ptr(reader));
            std::memcpy(to, at->from, count);
            at->from += count;
        });
        png_read_info(png, info);
        png_set_palette_to_rgb(png);
        png_set_bgr(png);
        png_set_filler(png, 0xFF, PNG_FILLER_AFTER);
        png_read_update_info(png, info);
        for (int row = 0; row < kSquare; ++row) {
            png_read_row(png, reinterpret_cast<png_bytep>(pixels.data() + row * kSquare), nullptr);
        }
        png_destroy_read_struct(&png, &info, nullptr);
    }
    std::vector<bytes> pngs;
#endif
#ifdef ZT_HAVE_WEBP
    bytes Webp(int x, int y)
    {
        chart.ReadRectRGB(x, y, kSquare, kSquare, kSquare, 0, pixels.data(), thread.get());
        std::uint8_t* out = nullptr;
        const auto* from = reinterpret_cast<const std::uint8_t*>(pixels.data());
        const std::size_t size = WebPEncodeLosslessBGRA(from, kSquare, kSquare, 4 * kSquare, &out);
        if (size == 0) std::abort();
        bytes webp(out, out + size);
        WebPFree(out);
        return webp;
    }
    std::vector<bytes> webps;
#endif

    ChartSample sample;
    QTemporaryDir folder;
    CRastelle1 chart;
    std::unique_ptr<ThreadDataForRead> thread = std::make_unique<ThreadDataForRead>();
    std::vector<std::uint32_t> pixels;
};

Squares& SquaresOf(ChartKind kind)
{
    static std::unique_ptr<Squares> squares[3];
    auto& scene = squares[static_cast<int>(kind)];
    if (!scene) scene = std::make_unique<Squares>(kind);
    return *scene;
}

std::function<void()> Portably(ChartKind kind, int level)
{
    return [=] {
        const InstructionSet before = SetInstructionSet(InstructionSet::portable);
        SquaresOf(kind).Read(level);
        SetInstructionSet(before);
    };
}

const bool square_rows = [] {
    for (const ChartKind kind : {ChartKind::clean, ChartKind::antialiased, ChartKind::scanned}) {
        const std::string letter = std::string(" ") + ChartKindName(kind);
        [[maybe_unused]] const auto whole = [kind] { SquaresOf(kind).Read(0); };
#ifdef ZT_HAVE_PNG
        const auto png = [kind] { SquaresOf(kind).DecodePngs(); };
        RegisterRatio("square, level 0" + letter, whole, "libpng", png);
        RegisterRatio("square, level 0" + letter + " (portable)", Portably(kind, 0), "libpng", png);
#endif
#ifdef ZT_HAVE_WEBP
        RegisterRatio("square, level 0 to webp" + letter, whole, "libwebp lossless",
                      [kind] { SquaresOf(kind).DecodeWebps(); });
#endif
        for (int level = 1; level <= 3; ++level) {
            const std::string row = "square, level " + std::to_string(level) + letter;
            const auto plain = [=] { SquaresOf(kind).ReadPlainly(level); };
            RegisterRatio(
                row, [=] { SquaresOf(kind).Read(level); }, "plain decoder and reduce", plain);
            RegisterRatio(row + " (portable)", Portably(kind, level), "plain decoder and reduce", plain);
        }
    }
    return true;
}();

} // namespace
