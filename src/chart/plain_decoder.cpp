#include "chart/plain_decoder.h"

#include "chart/huffman_encoding.h"
#include "chart/rastelle.h"
#include "chart/run_stream.h"

#include <algorithm>
#include <cstring>

namespace {

bool ListHolds(std::span<const std::uint8_t> list, unsigned code, std::uint8_t& index)
{
    index = code < list.size() ? list[code] : 0; // a code that the list does not have
    return index < kPaletteSize;
}

} // namespace

std::size_t HuffmanBitsBegin(std::span<const std::uint8_t> tree)
{
    std::size_t offset = 0;
    for (int depth = 0; depth <= kDeepestCode; ++depth) {
        const HuffmanNode node = HuffmanNodeAt(tree, offset);
        if (node.kind == HuffmanNode::Kind::leaf) return offset + 1;
        if (node.kind == HuffmanNode::Kind::bad) break;
        offset = node.right;
    }
    return tree.size();
}

std::optional<std::uint8_t> DescendTree(std::span<const std::uint8_t> tree, std::size_t node, int depth,
                                        std::size_t& bit)
{
    const std::size_t end = tree.size() * 8;
    for (; depth <= kDeepestCode; ++depth) {
        const HuffmanNode at = HuffmanNodeAt(tree, node);
        if (at.kind == HuffmanNode::Kind::leaf) return at.pixel;
        if (at.kind == HuffmanNode::Kind::bad || bit >= end) return {};
        node = (tree[bit / 8] >> bit % 8 & 1) != 0 ? at.right : at.left;
        ++bit;
    }
    return {};
}

std::size_t PlainHuffmanFrom(std::span<const std::uint8_t> tree, std::size_t bit, unsigned char* out, int count)
{
    for (int i = 0; i < count; ++i) {
        const auto pixel = DescendTree(tree, 0, 0, bit);
        if (!pixel) {
            std::memset(out + i, 0, static_cast<std::size_t>(count - i));
            break;
        }
        out[i] = *pixel;
    }
    return bit;
}

std::size_t PlainHuffman(std::span<const std::uint8_t> tree, unsigned char* out, int count)
{
    return (PlainHuffmanFrom(tree, HuffmanBitsBegin(tree) * 8, out, count) + 7) / 8;
}

bool HasGoodRunHeader(const unsigned int* words, unsigned int word_count, unsigned int count)
{
    constexpr unsigned kMost = CHuffmanEncoding::kMostWords;
    if (words == nullptr || word_count < 1 || word_count > kMost || count < 1 || count > kMost) return false;
    return words[0] >= 1 && words[0] < word_count;
}

bool PlainDecodeRunFrom(RunStream& stream, unsigned char* out, unsigned int count)
{
    while (count > 0) {
        const auto symbol = stream.Symbol();
        if (!symbol) return false;
        const auto run = stream.RunLength(RunStream::RunClass(*symbol));
        if (!run) return false;
        const unsigned length = std::min(*run, count);
        std::memset(out, static_cast<int>(RunStream::Pixel(*symbol)), length);
        out += length;
        count -= length;
    }
    return true;
}

const unsigned int* PlainDecodeRun(const unsigned int* words, unsigned int word_count, unsigned char* out,
                                   unsigned int count)
{
    if (!HasGoodRunHeader(words, word_count, count)) return nullptr;
    RunStream stream(words, word_count);
    return PlainDecodeRunFrom(stream, out, count) ? stream.WordPosition() : nullptr;
}

int CodeWidth(int colours)
{
    if (colours == 1) return 0;
    int width = 1;
    while (1 << width < colours) ++width;
    return width;
}

void PlainRunLength(std::span<const std::uint8_t> block, unsigned char* out, int count)
{
    std::memset(out, 0, static_cast<std::size_t>(count));
    const std::size_t colours = block[0];
    if (block.size() < 1 + colours) return;
    const auto list = block.subspan(1, colours);
    const int width = CodeWidth(static_cast<int>(colours));
    for (const std::uint8_t code : block.subspan(1 + colours)) {
        if (count <= 0) return;
        std::uint8_t index;
        if (!ListHolds(list, code & ((1U << width) - 1), index)) return;
        const int length = std::min(code >> width, count);
        std::memset(out, index, static_cast<std::size_t>(length));
        out += length;
        count -= length;
    }
}

void PlainBitPacked(std::span<const std::uint8_t> block, unsigned char* out, int count)
{
    std::memset(out, 0, static_cast<std::size_t>(count));
    const std::size_t colours = 256 - block[0];
    if (block.size() < 1 + colours) return;
    const auto list = block.subspan(1, colours);
    const int width = CodeWidth(static_cast<int>(colours));
    auto packed = block.subspan(1 + colours);
    while (count > 0 && packed.size() >= 4) {
        std::uint32_t word;
        std::memcpy(&word, packed.data(), sizeof(word));
        packed = packed.subspan(sizeof(word));
        for (int i = 0; i < 32 / width && count > 0; ++i) {
            if (!ListHolds(list, word & ((1U << width) - 1), *out)) {
                *out = 0;
                return;
            }
            ++out;
            --count;
            word >>= width;
        }
    }
}

void PlainUnpackBlock(std::span<const std::uint8_t> block, unsigned char* out, int rows, bool& placeholder)
{
    const int count = rows * kTileSide;
    const auto fill = [&](std::uint8_t index) { std::memset(out, index, static_cast<std::size_t>(count)); };
    if (block.empty()) return fill(0);
    const std::uint8_t tag = block[0];
    if (tag == 0x00) {
        PlainHuffman(block.subspan(1), out, count);
    } else if (tag < 0x80) {
        PlainRunLength(block, out, count);
    } else if (tag == 0x80) {
        placeholder = true;
        fill(FillIndex(block, 3));
    } else if (tag == 0xFF) {
        fill(FillIndex(block, 1));
    } else {
        PlainBitPacked(block, out, count);
    }
}

void PlainColourTile(const unsigned char* tile, const std::uint32_t* palette, std::uint32_t* dest, int stride)
{
    for (int row = 0; row < kTileSide; ++row) {
        const unsigned char* from = tile + CRastelle::bitrev[row] * kTileSide;
        std::uint32_t* to = dest + static_cast<std::ptrdiff_t>(row) * stride;
        for (int column = 0; column < kTileSide; ++column) to[column] = palette[from[column] & 0x7F];
    }
}

void PlainReduceTile(const unsigned char* tile, int level, const std::uint8_t* matrix, const std::uint32_t* palette,
                     std::uint32_t* dest, int stride)
{
    constexpr unsigned kMatrixMask = kPaletteSize * kPaletteSize - 1;
    const auto mix = [matrix](unsigned a, unsigned b) -> unsigned {
        return matrix[(a * kPaletteSize + b) & kMatrixMask];
    };
    const int side = kTileSide >> level;
    const int step = 1 << level;
    const int half = step / 2;
    for (int row = 0; row < side; ++row) {
        const unsigned char* a = tile + (CRastelle::bitrev[2 * row] >> (level - 1)) * kTileSide;
        const unsigned char* b = tile + (CRastelle::bitrev[2 * row + 1] >> (level - 1)) * kTileSide;
        for (int column = 0; column < side; ++column) {
            const int i = column * step;
            const unsigned index = mix(mix(a[i], b[i + half]), mix(b[i], a[i + half]));
            dest[static_cast<std::ptrdiff_t>(row) * stride + column] = palette[index < kPaletteSize ? index : 0];
        }
    }
}
