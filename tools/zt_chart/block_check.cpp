#include "tools/zt_chart/block_check.h"

#include "chart/plain_decoder.h"
#include "core/text.h"

#include <algorithm>

namespace {

/// A list of colours that holds one which no palette has.
std::string FaultOfList(std::span<const std::uint8_t> list)
{
    for (const std::uint8_t index : list) {
        if (index >= kPaletteSize) return stringprintf("colour list holds index %d", index);
    }
    return {};
}

std::string FaultOfCode(unsigned code, std::size_t colours, int pixel)
{
    if (code < colours) return {};
    return stringprintf("pixel %d names colour %u of %zu", pixel, code, colours);
}

std::string FaultOfRunLength(std::span<const std::uint8_t> block)
{
    const std::size_t colours = block[0];
    if (block.size() < 1 + colours) return "colour list cut short";
    const int width = CodeWidth(static_cast<int>(colours));
    int pixels = 0;
    for (const std::uint8_t run : block.subspan(1 + colours)) {
        if (pixels >= kTilePixels) break;
        std::string fault = FaultOfCode(run & ((1U << width) - 1), colours, pixels);
        if (!fault.empty()) return fault;
        pixels += run >> width;
    }
    if (pixels < kTilePixels) return stringprintf("runs end after %d pixels", pixels);
    return FaultOfList(block.subspan(1, colours));
}

std::string FaultOfBitPacked(std::span<const std::uint8_t> block)
{
    const std::size_t colours = 256U - block[0];
    if (block.size() < 1 + colours) return "colour list cut short";
    const int width = CodeWidth(static_cast<int>(colours));
    const int per_word = 32 / width;
    const int words = (kTilePixels + per_word - 1) / per_word;
    const auto packed = block.subspan(1 + colours);
    if (packed.size() < 4 * static_cast<std::size_t>(words)) return "packed pixels cut short";
    for (int pixel = 0; pixel < kTilePixels; ++pixel) {
        const std::uint8_t* bytes = &packed[4 * static_cast<std::size_t>(pixel / per_word)];
        const std::uint32_t word =
            bytes[0] | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16 | std::uint32_t{bytes[3]} << 24;
        std::string fault = FaultOfCode(word >> (pixel % per_word * width) & ((1U << width) - 1), colours, pixel);
        if (!fault.empty()) return fault;
    }
    return FaultOfList(block.subspan(1, colours));
}

std::string FaultOfHuffman(std::span<const std::uint8_t> tree)
{
    using enum HuffmanNode::Kind;
    const std::size_t begin = HuffmanBitsBegin(tree);
    if (begin >= tree.size() && HuffmanNodeAt(tree, 0).kind != leaf) return "code tree has no end";
    std::size_t bit = begin * 8;
    for (int pixel = 0; pixel < kTilePixels; ++pixel) {
        std::size_t offset = 0;
        HuffmanNode node = HuffmanNodeAt(tree, offset);
        for (int depth = 0; node.kind == branch; ++depth) {
            if (depth > kDeepestCode) return stringprintf("code of pixel %d does not end", pixel);
            if (bit / 8 >= tree.size()) return stringprintf("bits end at pixel %d", pixel);
            offset = (tree[bit / 8] >> bit % 8 & 1) != 0 ? node.right : node.left;
            ++bit;
            node = HuffmanNodeAt(tree, offset);
        }
        if (node.kind == bad) return stringprintf("branch out of the code tree at byte %zu, pixel %d", offset, pixel);
    }
    return {};
}

std::string FaultOfFill(std::span<const std::uint8_t> block, std::size_t offset)
{
    if (offset >= block.size()) return "block cut short";
    return FaultOfList(block.subspan(offset, 1));
}

} // namespace

std::string FaultOfBlock(std::span<const std::uint8_t> block)
{
    if (block.empty()) return "block lies outside the file";
    const std::uint8_t tag = block[0];
    if (tag == 0x00) return FaultOfHuffman(block.subspan(1));
    if (tag < 0x80) return FaultOfRunLength(block);
    if (tag == 0x80) return FaultOfFill(block, 3);
    return tag == 0xFF ? FaultOfFill(block, 1) : FaultOfBitPacked(block);
}
