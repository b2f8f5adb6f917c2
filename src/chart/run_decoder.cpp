#include "chart/run_decoder.h"

#include "chart/instruction_set.h"
#include "chart/reversed_bits.h"
#include "chart/run_stream.h"
#include "chart/target_attributes.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace {

constexpr unsigned kMostTableBits = 11;
constexpr int kEntriesPerRefill = 56 / kMostTableBits;
constexpr unsigned kStore = 32; ///< bytes written for a run before it is looked whether that was enough

/// What the next bits, as many as the table has, decode to: up to three single pixels, then one run. From the lowest
/// bit: bits used (6), singles (2), run length (9), extra bits that are still to be read (4), the three single pixels
/// and the run's pixel (8 each, from bit 32 on).
using Entry = std::uint64_t;
constexpr int kSinglesShift = 6;
constexpr int kRunShift = 8;
constexpr int kExtraShift = 17;
constexpr int kPixelsShift = 32;
constexpr unsigned kMostSingles = 3;
/// Set when the run needs extra bits or more than one store, or when nothing could be decoded: the loop has to look.
constexpr Entry kAttention = Entry{1} << 31;

/// The first symbol of some bits; length 0 for a code that is longer than the table or damaged.
struct FirstSymbol {
    std::uint16_t symbol;
    std::uint8_t length;
};
using first_symbols = std::array<FirstSymbol, 1 << kMostTableBits>;

struct RunTable {
    unsigned bits;
    std::array<Entry, 1 << kMostTableBits> entries; ///< the first 1 << bits, by the next bits

    unsigned Size() const { return 1U << bits; }
};

/// A table pays for itself by what is decoded with it.
unsigned TableBits(unsigned count)
{
    return count >= 32768 ? kMostTableBits : count >= 4096 ? 8 : 6;
}

/// Extra bits stand highest first in a stream that is read lowest first.
ZT_ALWAYS_INLINE unsigned ExtraValue(std::uint64_t bits, unsigned extra_bits)
{
    return kReversedBits[bits & 0xFF] >> (8 - extra_bits);
}

void FindFirstSymbols(const RunStream& stream, unsigned table_bits, first_symbols& firsts)
{
    struct Pending {
        std::uint32_t node;
        unsigned depth;
        unsigned code; ///< first decision lowest
    };
    std::array<Pending, kMostTableBits + 1> pending;
    std::size_t count = 0;
    pending[count++] = {0, 0, 0};
    while (count > 0) {
        const Pending at = pending[--count];
        const RunStream::Node node = stream.NodeAt(at.node);
        if (node.kind == RunStream::Node::Kind::branch && at.depth < table_bits) {
            pending[count++] = {node.right, at.depth + 1, at.code | 1U << at.depth};
            pending[count++] = {node.left, at.depth + 1, at.code};
            continue;
        }
        const bool is_leaf = node.kind == RunStream::Node::Kind::leaf;
        const FirstSymbol first{static_cast<std::uint16_t>(node.symbol),
                                static_cast<std::uint8_t>(is_leaf ? at.depth : 0)};
        for (unsigned code = at.code; code < 1U << table_bits; code += 1U << at.depth) firsts[code] = first;
    }
}

Entry MakeEntry(const first_symbols& firsts, unsigned table_bits, unsigned bits)
{
    unsigned left = table_bits;
    unsigned singles = 0;
    Entry pixels = 0;
    for (;;) {
        const FirstSymbol first = firsts[bits];
        const bool known = first.length != 0 && first.length <= left;
        const unsigned run_class = known ? RunStream::RunClass(first.symbol) : 0;
        if (known && run_class == 0 && singles < kMostSingles) {
            pixels |= Entry{RunStream::Pixel(first.symbol)} << (8 * singles++);
            left -= first.length;
            bits >>= first.length;
            continue;
        }
        Entry entry = pixels << kPixelsShift | singles << kSinglesShift;
        if (!known) return entry | (table_bits - left) | (singles == 0 ? kAttention : 0);
        left -= first.length;
        unsigned run = RunStream::RunBase(run_class);
        unsigned extra = RunStream::ExtraBits(run_class);
        if (extra <= left) {
            run += ExtraValue(bits >> first.length, extra);
            left -= extra;
            extra = 0;
        }
        if (extra != 0 || run > kStore) entry |= kAttention;
        entry |= Entry{RunStream::Pixel(first.symbol)} << (kPixelsShift + 8 * kMostSingles);
        return entry | (table_bits - left) | run << kRunShift | extra << kExtraShift;
    }
}

/// The next bits, lowest first, below a marker bit: as many are used as there are zeros above it.
struct BitBuffer {
    static constexpr std::uint64_t kMarker = std::uint64_t{1} << 63;
    const unsigned char* from;
    std::uint64_t bits;

    ZT_ALWAYS_INLINE void Refill()
    {
        const auto used = static_cast<unsigned>(std::countl_zero(bits));
        from += used >> 3;
        std::memcpy(&bits, from, sizeof(bits));
        bits = (bits | kMarker) >> (used & 7);
    }
    void Set(const unsigned char* base, std::uint64_t position)
    {
        from = base + position / 8;
        bits = kMarker >> position % 8;
    }
    std::uint64_t Position(const unsigned char* base) const
    {
        return static_cast<std::uint64_t>(from - base) * 8 + static_cast<unsigned>(std::countl_zero(bits));
    }
};

ZT_ALWAYS_INLINE void StoreRun(unsigned char* out, std::uint8_t pixel)
{
    typedef std::uint8_t vector __attribute__((vector_size(kStore)));
    const vector pixels = vector{} + pixel;
    std::memcpy(out, &pixels, sizeof(pixels));
}

/// Takes an entry's bits, stores its pixels and what one store holds of its run, and moves behind its singles.
ZT_ALWAYS_INLINE std::uint8_t TakeEntry(Entry entry, BitBuffer& buffer, unsigned char*& out)
{
    buffer.bits >>= entry & 63;
    const auto singles = static_cast<std::uint32_t>(entry >> kPixelsShift);
    std::memcpy(out, &singles, sizeof(singles));
    out += entry >> kSinglesShift & kMostSingles;
    const auto pixel = static_cast<std::uint8_t>(entry >> (kPixelsShift + 8 * kMostSingles));
    StoreRun(out, pixel);
    return pixel;
}

/// Room that one filling of the buffer may take: ordinary entries and one long run, each with a whole last store.
constexpr std::ptrdiff_t kRoom = kEntriesPerRefill * (kMostSingles + kStore) + 277 + 2 * kStore;
constexpr std::ptrdiff_t kTwoRefills = 24; ///< two refills: each moves on by up to seven bytes, then eight are read

/// Decodes until little room or data is left, or a code is longer than the table; answers where.
ZT_ALWAYS_INLINE unsigned char* DecodeFast(const RunTable& table, BitBuffer& buffer, const unsigned char* data_end,
                                           unsigned char* out, const unsigned char* end)
{
    BitBuffer local = buffer;
    const unsigned mask = table.Size() - 1;
    while (end - out >= kRoom && data_end - local.from >= kTwoRefills) {
        local.Refill();
        Entry entry = 0;
        for (int i = 0; i < kEntriesPerRefill; ++i) {
            entry = table.entries[local.bits & mask];
            const std::uint8_t pixel = TakeEntry(entry, local, out);
            unsigned run = static_cast<unsigned>(entry >> kRunShift) & 0x1FF;
            if ((entry & kAttention) != 0) {
                // Five entries leave too few bits for the extra ones. The reach allows for a second refill.
                local.Refill();
                const unsigned extra = static_cast<unsigned>(entry >> kExtraShift) & 15;
                run += ExtraValue(local.bits, extra);
                local.bits >>= extra;
                for (unsigned done = kStore; done < run; done += kStore) StoreRun(out + done, pixel);
                out += run;
                break;
            }
            out += run;
        }
        constexpr Entry kUsed = 63;
        if ((entry & kAttention) != 0 && (entry & kUsed) == 0) break;
    }
    buffer = local;
    return out;
}

unsigned char* DecodeFastPortable(const RunTable& table, BitBuffer& buffer, const unsigned char* data_end,
                                  unsigned char* out, const unsigned char* end)
{
    return DecodeFast(table, buffer, data_end, out, end);
}
#ifdef ZT_AVX2
ZT_AVX2 unsigned char* DecodeFastAvx2(const RunTable& table, BitBuffer& buffer, const unsigned char* data_end,
                                      unsigned char* out, const unsigned char* end)
{
    return DecodeFast(table, buffer, data_end, out, end);
}
#endif

/// One symbol without the table; false when the stream is bad or its run would not fit.
bool DecodeLongCode(RunStream& stream, unsigned char*& out)
{
    const auto symbol = stream.Symbol();
    const auto run = symbol ? stream.RunLength(RunStream::RunClass(*symbol)) : std::nullopt;
    if (!run) return false;
    std::memset(out, static_cast<int>(RunStream::Pixel(*symbol)), *run);
    out += *run;
    return true;
}

bool DecodeByTable(RunStream& stream, const unsigned int* words, unsigned int word_count, unsigned char* out,
                   unsigned int count)
{
    first_symbols firsts;
    RunTable table;
    table.bits = TableBits(count);
    FindFirstSymbols(stream, table.bits, firsts);
    for (unsigned bits = 0; bits < table.Size(); ++bits) table.entries[bits] = MakeEntry(firsts, table.bits, bits);
#ifdef ZT_AVX2
    const auto decode = TheInstructionSet() >= InstructionSet::avx2 ? DecodeFastAvx2 : DecodeFastPortable;
#else
    const auto decode = DecodeFastPortable;
#endif
    const auto* base = reinterpret_cast<const unsigned char*>(words);
    const unsigned char* data_end = base + std::size_t{word_count} * sizeof(*words);
    const unsigned char* end = out + count;
    BitBuffer buffer;
    buffer.Set(base, stream.BitPosition());
    for (;;) {
        out = decode(table, buffer, data_end, out, end);
        stream.SetBitPosition(buffer.Position(base));
        if (end - out < kRoom || data_end - buffer.from < kTwoRefills) break;
        if (!DecodeLongCode(stream, out)) return false;
        buffer.Set(base, stream.BitPosition());
    }
    return PlainDecodeRunFrom(stream, out, static_cast<unsigned>(end - out));
}

} // namespace

const unsigned int* DecodeRun(const unsigned int* words, unsigned int word_count, unsigned char* out,
                              unsigned int count)
{
    if (!HasGoodRunHeader(words, word_count, count)) return nullptr;
    RunStream stream(words, word_count);
    const bool good = DecodeByTable(stream, words, word_count, out, count);
    return good ? stream.WordPosition() : nullptr;
}
