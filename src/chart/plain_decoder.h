#pragma once

#include "chart/rastelle_header.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// The decoders written straight from the format, one bit or run at a time: what every fast path is compared with, and
/// falls back to for whatever it does not handle. None writes behind its pixels or reads behind its span.

/// The most decisions of a byte-form code: 128 leaves make a tree at most 127 deep, so a longer path is damage.
inline constexpr int kDeepestCode = 127;

/// A node of a byte-form tree.
struct HuffmanNode {
    enum class Kind { leaf, branch, bad };
    Kind kind;
    std::uint8_t pixel; ///< of a leaf
    std::size_t left;   ///< of a branch: offset of the left child
    std::size_t right;
};
/// The node at `offset`; bad when it lies outside the tree, or its right child does or does not lie ahead.
inline HuffmanNode HuffmanNodeAt(std::span<const std::uint8_t> tree, std::size_t offset)
{
    using enum HuffmanNode::Kind;
    if (offset >= tree.size()) return {bad, 0, 0, 0};
    const std::uint8_t value = tree[offset];
    if (value < 0x80) return {leaf, value, 0, 0};
    std::size_t left = offset + 1;
    int skip = 256 - value;
    if (value == 0x80) {
        if (tree.size() - offset < 3) return {bad, 0, 0, 0};
        skip = -static_cast<std::int16_t>(tree[offset + 1] | tree[offset + 2] << 8);
        left = offset + 3;
    }
    if (skip <= 0 || tree.size() - left <= static_cast<std::size_t>(skip)) return {bad, 0, 0, 0};
    return {branch, 0, left, left + static_cast<std::size_t>(skip)};
}
/// Offset of the first byte of bits: behind the rightmost leaf; the size of the tree when that is not reached.
std::size_t HuffmanBitsBegin(std::span<const std::uint8_t> tree);
/// One pixel: goes down from `node`, which `depth` decisions led to, taking bits from `bit` on; nothing when tree or
/// bits run out.
std::optional<std::uint8_t> DescendTree(std::span<const std::uint8_t> tree, std::size_t node, int depth,
                                        std::size_t& bit);
/// Decodes `count` pixels from bit `bit` on, counted from the start of the tree; index 0 for all that cannot be
/// decoded. Returns the bit reached.
std::size_t PlainHuffmanFrom(std::span<const std::uint8_t> tree, std::size_t bit, unsigned char* out, int count);

/// A byte-form stream; see CHuffmanEncoding::decode.
std::size_t PlainHuffman(std::span<const std::uint8_t> tree, unsigned char* out, int count);
/// A word-form stream; see CHuffmanEncoding::decode_run.
const unsigned int* PlainDecodeRun(const unsigned int* words, unsigned int word_count, unsigned char* out,
                                   unsigned int count);
/// Tags 0x01 to 0x7F: a list of colours and bytes of run length and colour number.
void PlainRunLength(std::span<const std::uint8_t> block, unsigned char* out, int count);
/// Tags 0x81 to 0xFE: a list of colours and words of colour numbers.
void PlainBitPacked(std::span<const std::uint8_t> block, unsigned char* out, int count);
/// Any block; see CRastelle::UnpackBlock.
void PlainUnpackBlock(std::span<const std::uint8_t> block, unsigned char* out, int rows, bool& placeholder);

/// Colours of a list -> bits of a pixel code: the least from 1 upward that can tell them apart; 0 for one colour of a
/// run-length block.
int CodeWidth(int colours);
/// The index of an empty or one-colour block; above 127 counts as 0.
inline std::uint8_t FillIndex(std::span<const std::uint8_t> block, std::size_t offset)
{
    return offset < block.size() && block[offset] < kPaletteSize ? block[offset] : 0;
}

/// Colours a tile (rows in stored order) into `dest`, rows `stride` pixels apart.
void PlainColourTile(const unsigned char* tile, const std::uint32_t* palette, std::uint32_t* dest, int stride);
/// Reduces a tile that was read at level - 1 by 2^level, into (64 >> level) squared pixels of `dest`. `matrix` is the
/// chart's table of mixes; an index above 127 that it gives counts as 0.
void PlainReduceTile(const unsigned char* tile, int level, const std::uint8_t* matrix, const std::uint32_t* palette,
                     std::uint32_t* dest, int stride);
