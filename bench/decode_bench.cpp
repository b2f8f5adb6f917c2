#include "chart/bit_packed_tile.h"
#include "chart/chart_writer.h"
#include "chart/colour_tile.h"
#include "chart/huffman_encoding.h"
#include "chart/instruction_set.h"
#include "chart/mix_tables.h"
#include "chart/plain_decoder.h"
#include "chart/polynomial_projection.h"
#include "chart/rastelle.h"
#include "chart/tile_decoder.h"
#include "ratio.h"
#include "support/chart_samples.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <random>

#include <benchmark/benchmark.h>
#include <zlib.h>

namespace {

constexpr int kTiles = 32; ///< along a sample's sides
using block_bytes = std::vector<std::uint8_t>;

const ChartSample& Sample(ChartKind kind)
{
    static std::map<ChartKind, ChartSample> samples;
    auto [entry, is_new] = samples.try_emplace(kind);
    if (is_new) entry->second = MakeChartSample(kind, kTiles);
    return entry->second;
}

/// The coded blocks of a sample, padded as by the rest of a file, with room for what they decode to.
struct CodedTiles {
    CodedTiles(ChartKind kind, TileCoding coding) : sample(Sample(kind))
    {
        for (int y = 0; y < kTiles; ++y) {
            for (int x = 0; x < kTiles; ++x) blocks.push_back(EncodeTile(sample.Tile(x, y).data(), coding));
        }
        Pad();
    }
    /// Random tiles that use all codes of a width.
    explicit CodedTiles(int code_width) : sample(Sample(ChartKind::clean))
    {
        std::mt19937 random(1);
        const unsigned colours = std::min(127U, 1U << code_width);
        for (int tile = 0; tile < 64; ++tile) {
            std::vector<unsigned char> pixels(kTilePixels);
            for (unsigned i = 0; i < kTilePixels; ++i)
                pixels[i] = static_cast<unsigned char>(i < colours ? i : random() % colours);
            blocks.push_back(EncodeTile(pixels.data(), TileCoding::bit_packed));
        }
        Pad();
    }
    void Decode()
    {
        bool placeholder = false;
        for (std::size_t i = 0; i < blocks.size(); i += jobs.size()) {
            for (std::size_t k = 0; k < jobs.size(); ++k) jobs[k] = {blocks[i + k], buffers.tiles[k].data(), {}};
            UnpackBlocks(jobs, kTileSide, placeholder);
            benchmark::ClobberMemory();
        }
    }
    void DecodePlainly()
    {
        bool placeholder = false;
        for (const auto& block : blocks) {
            PlainUnpackBlock(block, buffers.tiles[0].data(), kTileSide, placeholder);
            benchmark::ClobberMemory();
        }
    }
    void CopyTiles()
    {
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            std::memcpy(buffers.tiles[1].data(), buffers.tiles[0].data(), kTilePixels);
            benchmark::ClobberMemory();
        }
    }

private:
    void Pad()
    {
        for (auto& block : blocks) block.resize(block.size() + 32);
    }

    const ChartSample& sample;
    std::vector<block_bytes> blocks;
    ThreadDataForRead buffers;
    std::array<TileJob, ThreadDataForRead::kTilesInStep> jobs;
};

/// A scene made when it is first asked for.
template <class Scene, class... Arguments>
std::function<Scene&()> Lazily(Arguments... arguments)
{
    auto scene = std::make_shared<std::unique_ptr<Scene>>();
    return [scene, arguments...]() -> Scene& {
        if (*scene == nullptr) *scene = std::make_unique<Scene>(arguments...);
        return **scene;
    };
}

/// The same work with no more than the instructions of a set.
std::function<void()> WithSet(InstructionSet set, std::function<void()> work)
{
    return [set, work = std::move(work)] {
        const InstructionSet before = SetInstructionSet(set);
        work();
        SetInstructionSet(before);
    };
}
std::function<void()> Portably(std::function<void()> work)
{
    return WithSet(InstructionSet::portable, std::move(work));
}

void RegisterBoth(const std::string& row, const std::function<void()>& ours, const std::string& baseline_name,
                  const std::function<void()>& baseline)
{
    RegisterRatio(row, ours, baseline_name, baseline);
    RegisterRatio(row + " (portable)", Portably(ours), baseline_name, baseline);
}

/// Decoded tiles and the pixels they become.
struct ColouredTiles {
    /// One tile of random indices: no two neighbours alike.
    explicit ColouredTiles(int index_limit) : tiles(1)
    {
        std::mt19937 random(1);
        for (auto& pixel : tiles[0]) pixel = static_cast<unsigned char>(random() % static_cast<unsigned>(index_limit));
        note.index_limit = index_limit;
        for (auto& colour : palette) colour = static_cast<std::uint32_t>(random()) | 0xFF000000;
    }
    /// Every eighth tile of a sample.
    explicit ColouredTiles(ChartKind kind) : ColouredTiles(kPaletteSize)
    {
        tiles.clear();
        for (int tile = 0; tile < kTiles * kTiles; tile += 8) {
            const auto image = Sample(kind).Tile(tile % kTiles, tile / kTiles);
            std::copy(image.begin(), image.end(), tiles.emplace_back().begin());
        }
    }
    void Colour()
    {
        for (const auto& tile : tiles) {
            ColourTile(tile.data(), note, palette.data(), pixels.data(), kTileSide);
            benchmark::ClobberMemory();
        }
    }
    void Copy()
    {
        for (std::size_t i = 0; i < tiles.size(); ++i) {
            std::memcpy(copy.data(), pixels.data(), sizeof(pixels));
            benchmark::ClobberMemory();
        }
    }

    std::vector<ThreadDataForRead::tile_buffer> tiles;
    TileNote note;
    std::array<std::uint32_t, kPaletteSize> palette;
    alignas(64) std::array<std::uint32_t, kTilePixels> pixels;
    alignas(64) std::array<std::uint32_t, kTilePixels> copy;
};

/// The chunk of 1024 x 1024 pixels of a sample, in the word form.
struct CodedChunk {
    static constexpr unsigned kPixels = 1024 * 1024;
    explicit CodedChunk(ChartKind kind) : out(kPixels), words(CHuffmanEncoding::MostRunWords(kPixels))
    {
        const ChartSample& sample = Sample(kind);
        for (int row = 0; row < 1024; ++row) {
            const auto begin = sample.indices.begin() + std::ptrdiff_t{row} * sample.side();
            pixels.insert(pixels.end(), begin, begin + 1024);
        }
        words.resize(
            CHuffmanEncoding().encode_run(pixels.data(), kPixels, words.data(), static_cast<int>(words.size())));
        uLongf length = compressBound(kPixels);
        deflated.resize(length);
        if (compress(deflated.data(), &length, pixels.data(), kPixels) != Z_OK) std::abort();
        deflated.resize(length);
    }
    void Decode()
    {
        Check(CHuffmanEncoding::decode_run(words.data(), static_cast<unsigned>(words.size()), out.data(), kPixels));
    }
    void DecodePlainly()
    {
        Check(PlainDecodeRun(words.data(), static_cast<unsigned>(words.size()), out.data(), kPixels));
    }

    /// The same pixels as zlib keeps them at its usual level.
    void Inflate()
    {
        uLongf length = kPixels;
        if (uncompress(out.data(), &length, deflated.data(), deflated.size()) != Z_OK) std::abort();
        benchmark::ClobberMemory();
    }

    std::vector<unsigned char> pixels;
    std::vector<unsigned char> out;
    std::vector<unsigned int> words;
    std::vector<unsigned char> deflated;

private:
    static void Check(const unsigned int* end)
    {
        if (end == nullptr) std::abort();
        benchmark::ClobberMemory();
    }
};

struct MappedPoints {
    MappedPoints()
    {
        std::mt19937 random(1);
        const auto number = [&random] { return static_cast<double>(random()) / 4294967296.0 - 0.5; };
        for (auto* cubics : {projection.forward, projection.inverse}) {
            for (int i = 0; i < 20; ++i) cubics[i / 10][i % 10] = number();
        }
        for (auto& position : positions) position = {number() * 60, number() * 360};
    }
    void Map()
    {
        projection.latlong_to_xy(positions, points);
        benchmark::ClobberMemory();
    }
    void Copy()
    {
        std::memcpy(static_cast<void*>(points.data()), positions.data(), sizeof(points));
        benchmark::ClobberMemory();
    }

    static constexpr std::size_t kPoints = 4096;
    CPolynomialProjection projection;
    std::array<GeoPoint, kPoints> positions;
    std::array<DblPoint, kPoints> points;
};

const char* CodingName(TileCoding coding)
{
    return coding == TileCoding::huffman ? "Huffman tile" : "run-length tile";
}

const bool decode_rows = [] {
    for (const ChartKind kind : {ChartKind::clean, ChartKind::antialiased, ChartKind::scanned}) {
        const std::string letter = std::string(" ") + ChartKindName(kind);
        for (const TileCoding coding : {TileCoding::huffman, TileCoding::run_length}) {
            const auto tiles = Lazily<CodedTiles>(kind, coding);
            RegisterBoth(
                CodingName(coding) + letter, [=] { tiles().Decode(); }, "plain decoder",
                [=] { tiles().DecodePlainly(); });
        }
        const auto coloured = Lazily<ColouredTiles>(kind);
        RegisterRatio("palette expansion, 128 indices," + letter + " (portable)",
                      Portably([=] { coloured().Colour(); }), "memory copy of the pixels", [=] { coloured().Copy(); });
        const auto chunk = Lazily<CodedChunk>(kind);
        RegisterBoth(
            "run stream" + letter, [=] { chunk().Decode(); }, "plain decode_run", [=] { chunk().DecodePlainly(); });
        RegisterRatio(
            "run stream," + letter + " against zlib", [=] { chunk().Decode(); }, "zlib on the same pixels",
            [=] { chunk().Inflate(); });
    }
    for (int width = 1; width <= 7; ++width) {
        const auto tiles = Lazily<CodedTiles>(width);
        const std::string row = "bit-packed tile, width " + std::to_string(width);
        RegisterRatio(
            row, [=] { tiles().Decode(); }, "memory copy of the tile", [=] { tiles().CopyTiles(); });
        RegisterRatio(row + " (portable)", Portably([=] { tiles().Decode(); }), "plain decoder",
                      [=] { tiles().DecodePlainly(); });
    }
    for (const int limit : {16, 32, 64, 128}) {
        const auto tiles = Lazily<ColouredTiles>(limit);
        const std::string row = "palette expansion, " + std::to_string(limit) + " indices";
        RegisterRatio(
            row, [=] { tiles().Colour(); }, "memory copy of the pixels", [=] { tiles().Copy(); });
        RegisterRatio(row + " (AVX2)", WithSet(InstructionSet::avx2, [=] { tiles().Colour(); }),
                      "memory copy of the pixels", [=] { tiles().Copy(); });
    }
    const auto points = Lazily<MappedPoints>();
    RegisterBoth(
        "position to pixel, 4096 points", [=] { points().Map(); }, "memory copy of the points",
        [=] { points().Copy(); });
    return true;
}();

} // namespace
