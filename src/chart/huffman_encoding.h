#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// Huffman coding of palette indices, in the byte form of tiles and the word form, with run lengths, of chunks.
///
/// Byte form: tree nodes in pre-order, left subtree first. 0 to 127 is a leaf; 0x81 to 0xFF, as a signed -k, a branch
/// whose left subtree is k bytes long; 0x80 a branch with k in the two bytes behind it (signed, negated). Bit 0 goes
/// left. The bits follow the rightmost leaf, lowest bit of each byte first.
///
/// Word form: word 0 counts the words before the bits, itself included. Signed 16-bit nodes follow: -k is a branch over
/// k nodes, anything else a leaf of pixel (bits 0 to 6) and run class (bits 8, 9). Classes 1 to 3 are followed by
/// 2, 4 or 8 bits, highest first, that add to a run of 2, 6 or 22 pixels.
class CHuffmanEncoding {
public:
    CHuffmanEncoding();
    ~CHuffmanEncoding();

    static constexpr unsigned kLongestRun = 277;
    static constexpr unsigned kMostWords = 10000000; ///< of a word form, and most pixels
    /// Bytes that encode() needs at most for `count` pixels, and words for encode_run().
    static std::size_t MostBytes(int count) { return 1024 + static_cast<std::size_t>(count); }
    static std::size_t MostRunWords(int count) { return 2048 + static_cast<std::size_t>(count); }

    /// Decodes `count` pixels of a byte form that ends no later than the span. A tree or bits that run out, and a
    /// branch that does not lead forward, leave index 0 for the rest. `out` has kTileMargin bytes behind the pixels.
    /// Returns the bytes used.
    static std::size_t decode(std::span<const unsigned char> tree, unsigned char* out, int count);
    /// Decodes exactly `count` pixels of a word form. Returns the position behind the last word that was needed, or
    /// null when the stream is bad: a node outside the tree, or bits that end before the picture.
    static const unsigned int* decode_run(const unsigned int* words, unsigned int word_count, unsigned char* out,
                                          unsigned int count);

    /// Writes the byte form of `count` pixels (indices 0 to 127) to `out`, which holds MostBytes(count); returns its
    /// end.
    unsigned char* encode(const unsigned char* data, int count, unsigned char* out);
    /// Writes the word form; returns its words, or 0 when `capacity` words do not suffice or nothing is given.
    unsigned int encode_run(const unsigned char* data, int count, unsigned int* out, int capacity);

private:
    struct Node;
    struct Code {
        std::uint64_t bits = 0; ///< first decision in bit 0
        unsigned length = 0;    ///< below 48, since the counts of a tree grow as Fibonacci numbers at least
    };
    static constexpr std::size_t kSymbols = 1024;

    void BuildTree(std::span<const std::uint32_t, kSymbols> counts);
    void LayOutCodes(const Node& node, Code path);
    void FindRuns(const unsigned char* data, int count);

    std::unique_ptr<Node> root;
    std::vector<Code> codes; ///< by symbol
    std::vector<std::uint16_t> run_symbols;
    std::vector<std::uint16_t> run_lengths;
};
