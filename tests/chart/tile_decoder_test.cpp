#include "chart/chart_writer.h"
#include "chart/huffman_encoding.h"
#include "chart/rastelle.h"
#include "decoder_support.h"
#include "support/allocation_counter.h"
#include "support/chart_samples.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using block_bytes = std::vector<std::uint8_t>;

/// Both decoders of a block, at full and reduced rows, and the note's promises.
void ExpectFastTileIsPlain(const block_bytes& block, const std::string& what)
{
    for (const InstructionSet set : kInstructionSets) {
        const CWithInstructionSet with(set);
        for (const int rows : {64, 32, 8, 1}) {
            const DecodedTile plain = DecodePlainly(block, rows);
            const DecodedTile fast = Decode(block, rows);
            ASSERT_EQ(fast.pixels, plain.pixels) << what << ", rows " << rows;
            ASSERT_EQ(fast.placeholder, plain.placeholder) << what;
            const int highest = *std::max_element(plain.pixels.begin(), plain.pixels.end());
            ASSERT_LT(highest, fast.note.index_limit) << what;
            if (fast.note.solid >= 0) {
                const auto colour = static_cast<unsigned char>(fast.note.solid);
                ASSERT_EQ(std::count(plain.pixels.begin(), plain.pixels.end(), colour), rows * kTileSide) << what;
            }
        }
    }
}

/// The tile's rows in image order, as they were encoded.
std::vector<unsigned char> InImageOrder(const std::vector<unsigned char>& stored)
{
    std::vector<unsigned char> image(stored.size());
    for (int row = 0; row < kTileSide; ++row) {
        std::copy_n(stored.begin() + CRastelle::bitrev[row] * kTileSide, kTileSide, image.begin() + row * kTileSide);
    }
    return image;
}

class EveryKind : public testing::TestWithParam<ChartKind> {};

TEST_P(EveryKind, EveryCodingOfEveryTileDecodesToItsPixelsInEveryWay)
{
    const ChartSample sample = MakeChartSample(GetParam(), 6);
    for (int y = 0; y < sample.tiles; ++y) {
        for (int x = 0; x < sample.tiles; ++x) {
            const auto pixels = sample.Tile(x, y);
            for (const TileCoding coding :
                 {TileCoding::huffman, TileCoding::run_length, TileCoding::bit_packed, TileCoding::smallest}) {
                const auto block = EncodeTile(pixels.data(), coding);
                ASSERT_EQ(InImageOrder(DecodePlainly(block, 64).pixels), pixels);
                ASSERT_NO_FATAL_FAILURE(ExpectFastTileIsPlain(block, std::to_string(x) + "," + std::to_string(y)));
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Charts, EveryKind,
                         testing::Values(ChartKind::clean, ChartKind::antialiased, ChartKind::scanned),
                         [](const auto& kind) { return std::string(ChartKindName(kind.param)); });

TEST(BitPackedTile, EveryNumberOfColoursDecodesInEveryWay)
{
    std::mt19937 random(3);
    for (unsigned colours = 2; colours <= 127; ++colours) {
        std::vector<unsigned char> pixels(kTilePixels);
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = static_cast<unsigned char>(i < colours ? i : random() % colours);
        const auto block = EncodeTile(pixels.data(), TileCoding::bit_packed);
        ASSERT_EQ(block[0], 256 - colours);
        ASSERT_EQ(InImageOrder(DecodePlainly(block, 64).pixels), pixels);
        ASSERT_NO_FATAL_FAILURE(ExpectFastTileIsPlain(block, std::to_string(colours)));
    }
}

TEST(HuffmanTile, RandomTreesDecodeAlikeWholeAndCutAnywhere)
{
    std::mt19937 random(5);
    for (int round = 0; round < 400; ++round) {
        auto block =
            RandomHuffmanBlock(random, 1 + static_cast<int>(random() % 128), static_cast<int>(random() % 3000));
        ASSERT_NO_FATAL_FAILURE(ExpectFastTileIsPlain(block, "whole " + std::to_string(round)));
        block.resize(1 + random() % block.size());
        ASSERT_NO_FATAL_FAILURE(ExpectFastTileIsPlain(block, "cut " + std::to_string(round)));
    }
}

TEST(HuffmanTile, DamagedTreesDecodeAlike)
{
    std::mt19937 random(9);
    for (int round = 0; round < 2000; ++round) {
        auto block = RandomHuffmanBlock(random, 2 + static_cast<int>(random() % 40), 600);
        for (int damage = 0; damage < 3; ++damage) block[1 + random() % 60] = static_cast<std::uint8_t>(random());
        ASSERT_NO_FATAL_FAILURE(ExpectFastTileIsPlain(block, std::to_string(round)));
    }
}

TEST(HuffmanTile, NeighboursDecodedInStepDoNotMix)
{
    std::mt19937 random(13);
    for (const InstructionSet set : kInstructionSets) {
        const CWithInstructionSet with(set);
        for (int round = 0; round < 100; ++round) {
            std::vector<block_bytes> blocks;
            std::array<TileJob, 4> jobs;
            std::vector<std::vector<unsigned char>> out(4, std::vector<unsigned char>(kTilePixels + kTileMargin));
            for (std::size_t i = 0; i < 4; ++i)
                blocks.push_back(
                    RandomHuffmanBlock(random, 1 + static_cast<int>(random() % 20), static_cast<int>(random() % 4000)));
            for (std::size_t i = 0; i < 4; ++i) jobs[i] = {blocks[i], out[i].data(), {}};
            bool placeholder = false;
            UnpackBlocks(jobs, 64, placeholder);
            for (std::size_t i = 0; i < 4; ++i) {
                out[i].resize(kTilePixels);
                ASSERT_EQ(out[i], DecodePlainly(blocks[i], 64).pixels);
            }
        }
    }
}

struct BlockCase {
    const char* name;
    block_bytes block;
    std::vector<unsigned char> begins_with; ///< the first pixels
    int rest;                               ///< the index of all others
    bool placeholder = false;
};

/// `length` bytes of `value` behind a start.
block_bytes Followed(block_bytes start, std::size_t length, std::uint8_t value)
{
    start.insert(start.end(), length, value);
    return start;
}

/// A far branch whose left subtree, a comb of 64 leaves of index 5 (the last of them index 6), is `left` bytes long.
block_bytes FarBranch()
{
    block_bytes tree{0x00, 0x80, 0x81, 0xFF}; // -127: the comb below
    for (int i = 0; i < 63; ++i) tree.insert(tree.end(), {0xFF, 5});
    tree.insert(tree.end(), {6, 7});
    return tree;
}

/// The same with a left subtree of exactly 128 bytes.
block_bytes FarBranchOf128()
{
    // A whole tree has an odd number of bytes: one that nothing leads to makes it 128.
    block_bytes tree{0x00, 0x80, 0x80, 0xFF};
    for (int i = 0; i < 62; ++i) tree.insert(tree.end(), {0xFF, 5});
    tree.insert(tree.end(), {0xFE, 5, 0, 6, 7});
    return tree;
}

const BlockCase kBlocks[] = {
    {"nothing", {}, {}, 0},
    {"one_colour", {0xFF, 9}, {}, 9},
    {"one_colour_above_127", {0xFF, 200}, {}, 0},
    {"one_colour_cut", {0xFF}, {}, 0},
    {"empty_tile_is_a_placeholder", {0x80, 1, 2, 7}, {}, 7, true},
    {"empty_tile_above_127", {0x80, 1, 2, 130}, {}, 0, true},
    {"run_length_of_one_colour", Followed({0x01, 12}, 17, 255), {}, 12},
    {"run_length_skips_empty_runs", {0x02, 3, 4, 0x00, 0x01, 0x02, 0x03}, {3, 4}, 0},
    {"run_length_cut_in_its_list", {0x05, 1, 2}, {}, 0},
    {"run_length_without_runs", {0x02, 3, 4}, {}, 0},
    {"run_length_index_above_127", {0x02, 3, 255, 0x06, 0x03, 0x06}, {3, 3, 3}, 0},
    {"run_length_code_beyond_the_list", {0x03, 1, 2, 3, 0x04, 0x07, 0x05}, {1, 0, 2}, 0},
    {"bit_packed_first_word_only", {0xFE, 3, 4, 0x05, 0, 0, 0x80}, {4, 3, 4, 3}, -1},
    {"bit_packed_index_above_127", Followed({0xFE, 3, 128, 0x04}, 600, 0), {3, 3}, 0},
    {"huffman_single_leaf_reads_no_bit", {0x00, 33}, {}, 33},
    {"huffman_bits_run_out", {0x00, 0xFF, 1, 2, 0x05}, {2, 1, 2, 1, 1, 1, 1, 1}, 0},
    {"huffman_bits_end_at_a_word", {0x00, 0xFF, 1, 2, 0xFF, 0xFF, 0xFF, 0xFF}, std::vector<unsigned char>(32, 2), 0},
    {"huffman_tree_cut", {0x00, 0xF0, 1}, {}, 0},
    {"huffman_far_branch_backwards", {0x00, 0x80, 0x05, 0x00, 1, 2, 3, 4, 5}, {}, 0},
    {"huffman_far_branch_cut", {0x00, 0x80, 0x05}, {}, 0},
    {"huffman_far_branch_of_127_bytes", Followed(FarBranch(), 512, 0xFF), {}, 7},
    {"huffman_far_branch_of_128_bytes", Followed(FarBranchOf128(), 512, 0xFF), {}, 7},
    {"huffman_deeper_than_128_leaves", Followed({0x00}, 40000, 0xFF), {}, 0},
};

TEST(TileBlock, DamagedAndEdgeBlocksGiveTheirPixels)
{
    for (const BlockCase& c : kBlocks) {
        SCOPED_TRACE(c.name);
        const DecodedTile plain = DecodePlainly(c.block, 64);
        ASSERT_TRUE(std::equal(c.begins_with.begin(), c.begins_with.end(), plain.pixels.begin()));
        const auto is_rest = [&c](unsigned char pixel) { return c.rest < 0 || pixel == c.rest; };
        EXPECT_TRUE(std::all_of(plain.pixels.begin() + static_cast<std::ptrdiff_t>(c.begins_with.size()),
                                plain.pixels.end(), is_rest));
        EXPECT_EQ(plain.placeholder, c.placeholder);
        ExpectFastTileIsPlain(c.block, c.name);
    }
}

TEST(TileBlock, DecodingAllocatesNothing)
{
    const ChartSample sample = MakeChartSample(ChartKind::antialiased, 1);
    std::vector<unsigned char> out(kTilePixels + kTileMargin);
    for (const TileCoding coding : {TileCoding::huffman, TileCoding::run_length, TileCoding::bit_packed}) {
        const auto block = EncodeTile(sample.indices.data(), coding);
        bool placeholder = false;
        const CAllocationCounter counter;
        CRastelle::UnpackBlock(block, out.data(), 64, placeholder);
        EXPECT_EQ(counter.Count(), 0U);
    }
}

} // namespace
