#include "chart/huffman_encoding.h"

#include "chart/plain_decoder.h"
#include "chart/run_decoder.h"

#include <algorithm>
#include <array>
#include <cstring>

struct CHuffmanEncoding::Node {
    unsigned symbol = 0;
    std::uint32_t count = 0;
    std::unique_ptr<Node> left; ///< bit 0; both children or none
    std::unique_ptr<Node> right;

    bool IsLeaf() const { return left == nullptr; }
};

namespace {

/// Appends bits, lowest first, to bytes that are zero beforehand.
class BitWriter {
public:
    explicit BitWriter(unsigned char* begin) : bytes(begin) {}
    void Put(std::uint64_t bits, unsigned length)
    {
        for (unsigned i = 0; i < length; ++i, ++used)
            bytes[used / 8] |= static_cast<unsigned char>((bits >> i & 1) << used % 8);
    }
    std::size_t Bytes() const { return (used + 7) / 8; }

private:
    unsigned char* bytes;
    std::size_t used = 0;
};

struct RunClass {
    unsigned base;
    unsigned extra_bits;
};
constexpr std::array<RunClass, 4> kRunClasses{{{1, 0}, {2, 2}, {6, 4}, {22, 8}}};

unsigned RunClassOf(unsigned length)
{
    unsigned run_class = 3;
    while (length < kRunClasses[run_class].base) --run_class;
    return run_class;
}

/// Nodes in pre-order; a branch holds minus the size of its left subtree.
template <class Tree>
std::vector<std::uint16_t> WordNodes(const Tree& node)
{
    if (node.IsLeaf()) return {static_cast<std::uint16_t>(node.symbol)};
    const auto left = WordNodes(*node.left);
    const auto right = WordNodes(*node.right);
    std::vector<std::uint16_t> nodes{static_cast<std::uint16_t>(-static_cast<int>(left.size()))};
    nodes.insert(nodes.end(), left.begin(), left.end());
    nodes.insert(nodes.end(), right.begin(), right.end());
    return nodes;
}

template <class Tree>
std::vector<std::uint8_t> ByteNodes(const Tree& node)
{
    constexpr int kNearest = 127; // the longest left subtree that one byte can tell
    if (node.IsLeaf()) return {static_cast<std::uint8_t>(node.symbol)};
    const auto left = ByteNodes(*node.left);
    const auto right = ByteNodes(*node.right);
    const int skip = -static_cast<int>(left.size());
    std::vector<std::uint8_t> nodes{static_cast<std::uint8_t>(skip)};
    if (skip < -kNearest) nodes = {0x80, static_cast<std::uint8_t>(skip), static_cast<std::uint8_t>(skip >> 8)};
    nodes.insert(nodes.end(), left.begin(), left.end());
    nodes.insert(nodes.end(), right.begin(), right.end());
    return nodes;
}

} // namespace

CHuffmanEncoding::CHuffmanEncoding() = default;
CHuffmanEncoding::~CHuffmanEncoding() = default;

std::size_t CHuffmanEncoding::decode(std::span<const unsigned char> tree, unsigned char* out, int count)
{
    return PlainHuffman(tree, out, count);
}

const unsigned int* CHuffmanEncoding::decode_run(const unsigned int* words, unsigned int word_count, unsigned char* out,
                                                 unsigned int count)
{
    return DecodeRun(words, word_count, out, count);
}

void CHuffmanEncoding::BuildTree(std::span<const std::uint32_t, kSymbols> counts)
{
    std::vector<std::unique_ptr<Node>> trees;
    for (unsigned symbol = 0; symbol < kSymbols; ++symbol) {
        if (counts[symbol] == 0) continue;
        trees.push_back(std::make_unique<Node>());
        trees.back()->symbol = symbol;
        trees.back()->count = counts[symbol];
    }
    while (trees.size() > 1) {
        std::size_t least = trees[1]->count < trees[0]->count ? 1 : 0;
        std::size_t next = 1 - least;
        for (std::size_t i = 2; i < trees.size(); ++i) {
            if (trees[i]->count < trees[least]->count) {
                next = least;
                least = i;
            } else if (trees[i]->count < trees[next]->count) {
                next = i;
            }
        }
        auto merged = std::make_unique<Node>();
        merged->count = trees[least]->count + trees[next]->count;
        merged->right = std::move(trees[least]);
        merged->left = std::move(trees[next]);
        trees[least] = std::move(merged);
        trees.erase(trees.begin() + static_cast<std::ptrdiff_t>(next));
    }
    root = trees.empty() ? nullptr : std::move(trees.front());
    codes.assign(kSymbols, {});
    if (root) LayOutCodes(*root, {});
}

void CHuffmanEncoding::LayOutCodes(const Node& node, Code path)
{
    if (node.IsLeaf()) {
        codes[node.symbol] = path;
        return;
    }
    LayOutCodes(*node.left, {path.bits, path.length + 1});
    LayOutCodes(*node.right, {path.bits | std::uint64_t{1} << path.length, path.length + 1});
}

unsigned char* CHuffmanEncoding::encode(const unsigned char* data, int count, unsigned char* out)
{
    std::array<std::uint32_t, kSymbols> counts{};
    for (int i = 0; i < count; ++i) ++counts[data[i] & 0x7F];
    BuildTree(counts);
    if (!root) return out;
    const auto nodes = ByteNodes(*root);
    std::memset(out, 0, MostBytes(count));
    out = std::copy(nodes.begin(), nodes.end(), out);
    BitWriter writer(out);
    for (int i = 0; i < count; ++i) {
        const Code& code = codes[data[i] & 0x7F];
        writer.Put(code.bits, code.length);
    }
    return out + writer.Bytes();
}

void CHuffmanEncoding::FindRuns(const unsigned char* data, int count)
{
    run_symbols.clear();
    run_lengths.clear();
    for (int begin = 0, end = 0; begin < count; begin = end) {
        const int furthest = static_cast<int>(std::min<std::int64_t>(count, std::int64_t{begin} + kLongestRun));
        while (end < furthest && data[end] == data[begin]) ++end;
        const auto length = static_cast<unsigned>(end - begin);
        run_symbols.push_back(static_cast<std::uint16_t>((data[begin] & 0x7F) | RunClassOf(length) << 8));
        run_lengths.push_back(static_cast<std::uint16_t>(length));
    }
}

unsigned int CHuffmanEncoding::encode_run(const unsigned char* data, int count, unsigned int* out, int capacity)
{
    if (count < 1) return 0;
    FindRuns(data, count);
    std::array<std::uint32_t, kSymbols> counts{};
    std::uint64_t bits = 0;
    for (const std::uint16_t symbol : run_symbols) ++counts[symbol];
    BuildTree(counts);
    for (const std::uint16_t symbol : run_symbols) bits += codes[symbol].length + kRunClasses[symbol >> 8].extra_bits;
    const auto nodes = WordNodes(*root);
    const std::size_t tree_words = 1 + (nodes.size() + 1) / 2;
    // The reader wants a word behind the tree even where no bit is needed.
    const std::size_t total = tree_words + std::max<std::size_t>(1, static_cast<std::size_t>((bits + 31) / 32));
    if (capacity < 0 || total > static_cast<std::size_t>(capacity)) return 0;
    std::memset(out, 0, total * sizeof(*out));
    out[0] = static_cast<unsigned>(tree_words);
    std::memcpy(out + 1, nodes.data(), nodes.size() * sizeof(nodes[0]));
    BitWriter writer(reinterpret_cast<unsigned char*>(out + tree_words));
    for (std::size_t i = 0; i < run_symbols.size(); ++i) {
        const Code& code = codes[run_symbols[i]];
        const RunClass& run_class = kRunClasses[run_symbols[i] >> 8];
        writer.Put(code.bits, code.length);
        const unsigned extra = run_lengths[i] - run_class.base;
        for (unsigned bit = run_class.extra_bits; bit > 0; --bit) writer.Put(extra >> (bit - 1), 1);
    }
    return static_cast<unsigned>(total);
}
