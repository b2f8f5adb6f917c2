#include "decoder_support.h"

#include "chart/plain_decoder.h"
#include "chart/rastelle.h"

namespace {

std::vector<std::uint8_t> RandomTree(std::mt19937& random, int leaves)
{
    if (leaves == 1) return {static_cast<std::uint8_t>(random() % kPaletteSize)};
    // Mostly lopsided: that is where codes get long.
    const int left_leaves = random() % 3 != 0 ? 1 : 1 + static_cast<int>(random() % static_cast<unsigned>(leaves - 1));
    auto left = RandomTree(random, left_leaves);
    auto right = RandomTree(random, leaves - left_leaves);
    if (random() % 2 != 0 && left.size() == right.size()) std::swap(left, right);
    const int skip = -static_cast<int>(left.size());
    std::vector<std::uint8_t> tree{static_cast<std::uint8_t>(skip)};
    if (skip < -127 || random() % 8 == 0) {
        tree = {0x80, static_cast<std::uint8_t>(skip), static_cast<std::uint8_t>(skip >> 8)};
    }
    tree.insert(tree.end(), left.begin(), left.end());
    tree.insert(tree.end(), right.begin(), right.end());
    return tree;
}

} // namespace

DecodedTile Decode(std::span<const std::uint8_t> block, int rows)
{
    DecodedTile tile;
    const auto count = static_cast<std::size_t>(rows * kTileSide);
    tile.pixels.resize(count + kTileMargin);
    tile.note = CRastelle::UnpackBlock(block, tile.pixels.data(), rows, tile.placeholder);
    tile.pixels.resize(count);
    return tile;
}

DecodedTile DecodePlainly(std::span<const std::uint8_t> block, int rows)
{
    DecodedTile tile;
    tile.pixels.resize(static_cast<std::size_t>(rows * kTileSide));
    PlainUnpackBlock(block, tile.pixels.data(), rows, tile.placeholder);
    return tile;
}

std::vector<std::uint8_t> RandomHuffmanBlock(std::mt19937& random, int leaves, int bit_bytes)
{
    std::vector<std::uint8_t> block{0x00};
    const auto tree = RandomTree(random, leaves);
    block.insert(block.end(), tree.begin(), tree.end());
    for (int i = 0; i < bit_bytes; ++i) block.push_back(static_cast<std::uint8_t>(random()));
    return block;
}
