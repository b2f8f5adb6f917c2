#pragma once

#include <cstdint>
#include <optional>

/// Reads a word-form stream (see CHuffmanEncoding) node by node and bit by bit. The header must have been checked: word
/// 0 is at least 1 and below the number of words.
class RunStream {
public:
    struct Node {
        enum class Kind { leaf, branch, bad };
        Kind kind;
        unsigned symbol;    ///< of a leaf: pixel and run class
        std::uint32_t left; ///< of a branch: index of the left child; the right one may lie outside the tree
        std::uint32_t right;
    };

    RunStream(const unsigned int* stream, unsigned int word_count)
        : words(stream)
        , node_count(2 * (stream[0] - 1))
        , bit(32 * std::uint64_t{stream[0]})
        , bit_end(32 * std::uint64_t{word_count})
    {}

    static unsigned Pixel(unsigned symbol) { return symbol & 0x7F; }
    static unsigned RunClass(unsigned symbol) { return symbol >> 8 & 3; }
    /// Bits that follow a leaf of a class, and the run length without them.
    static unsigned ExtraBits(unsigned run_class) { return run_class == 0 ? 0 : 1U << run_class; }
    static unsigned RunBase(unsigned run_class)
    {
        constexpr unsigned kBase[4] = {1, 2, 6, 22};
        return kBase[run_class];
    }

    Node NodeAt(std::uint32_t index) const
    {
        if (index >= node_count) return {Node::Kind::bad, 0, 0, 0};
        const int value = static_cast<std::int16_t>(words[1 + index / 2] >> (index % 2 != 0 ? 16 : 0) & 0xFFFF);
        if (value >= 0) return {Node::Kind::leaf, static_cast<unsigned>(value), 0, 0};
        return {Node::Kind::branch, 0, index + 1, index + 1 + static_cast<std::uint32_t>(-value)};
    }
    /// The leaf that the next bits lead to from the root; nothing when tree or bits run out.
    std::optional<unsigned> Symbol()
    {
        for (std::uint32_t index = 0;;) {
            const Node node = NodeAt(index);
            if (node.kind == Node::Kind::leaf) return node.symbol;
            const auto decision = node.kind == Node::Kind::bad ? std::nullopt : Bit();
            if (!decision) return {};
            index = *decision != 0 ? node.right : node.left;
        }
    }
    std::optional<unsigned> RunLength(unsigned run_class)
    {
        unsigned value = 0;
        for (unsigned i = ExtraBits(run_class); i > 0; --i) {
            const auto next = Bit();
            if (!next) return {};
            value = value << 1 | *next;
        }
        return RunBase(run_class) + value;
    }

    /// Place of the next bit, counted from the start of word 0.
    std::uint64_t BitPosition() const { return bit; }
    void SetBitPosition(std::uint64_t position) { bit = position; }
    /// Behind the last word of which a bit was taken.
    const unsigned int* WordPosition() const { return words + (bit + 31) / 32; }

private:
    std::optional<unsigned> Bit()
    {
        if (bit >= bit_end) return {};
        const unsigned value = words[bit / 32] >> bit % 32 & 1;
        ++bit;
        return value;
    }

    const unsigned int* words;
    std::uint32_t node_count;
    std::uint64_t bit;
    std::uint64_t bit_end;
};

/// Whether a word form's lengths can be true: see CHuffmanEncoding::decode_run.
bool HasGoodRunHeader(const unsigned int* words, unsigned int word_count, unsigned int count);
/// Decodes `count` pixels from where the stream stands; false when it is bad.
bool PlainDecodeRunFrom(RunStream& stream, unsigned char* out, unsigned int count);
