#include "chart/run_length_tile.h"

#include "chart/colour_list.h"
#include "chart/instruction_set.h"
#include "chart/plain_decoder.h"
#include "chart/target_attributes.h"

#include <cstring>

namespace {

/// Bytes that are written for a run before it is looked whether that was enough.
constexpr int kRunStore = 16;

ZT_ALWAYS_INLINE void StoreIndex(unsigned char* out, std::uint8_t index)
{
    typedef std::uint8_t vector __attribute__((vector_size(kRunStore)));
    const vector pixels = vector{} + index;
    std::memcpy(out, &pixels, sizeof(pixels));
}

/// Width 4 and more leave at most 15 pixels to a run: one store. Below that two, and a loop for the rest of long ones.
template <bool kWideCodes>
ZT_ALWAYS_INLINE unsigned char* DecodeRuns(std::span<const std::uint8_t> runs, const ColourList& list, int width,
                                           unsigned char* out, const unsigned char* end)
{
    const unsigned mask = (1U << width) - 1;
    const std::uint8_t* from = runs.data();
    const std::uint8_t* const last = from + runs.size();
    while (out < end && from < last) {
        const unsigned code = *from++;
        const std::uint8_t index = list.indices[code & mask];
        const unsigned length = code >> width;
        StoreIndex(out, index);
        if constexpr (!kWideCodes) {
            StoreIndex(out + kRunStore, index);
            for (unsigned done = 2 * kRunStore; done < length; done += kRunStore) StoreIndex(out + done, index);
        }
        out += length;
    }
    return out;
}

ZT_ALWAYS_INLINE unsigned char* DecodeRuns(std::span<const std::uint8_t> runs, const ColourList& list, int width,
                                           unsigned char* out, const unsigned char* end)
{
    return width >= 4 ? DecodeRuns<true>(runs, list, width, out, end) : DecodeRuns<false>(runs, list, width, out, end);
}

unsigned char* DecodePortable(std::span<const std::uint8_t> runs, const ColourList& list, int width, unsigned char* out,
                              const unsigned char* end)
{
    return DecodeRuns(runs, list, width, out, end);
}
#ifdef ZT_AVX2
ZT_AVX2 unsigned char* DecodeAvx2(std::span<const std::uint8_t> runs, const ColourList& list, int width,
                                  unsigned char* out, const unsigned char* end)
{
    return DecodeRuns(runs, list, width, out, end);
}
#endif

} // namespace

void DecodeRunLengthTile(TileJob& job, int count)
{
    const std::size_t colours = job.block[0];
    if (job.block.size() < 1 + colours) return PlainRunLength(job.block, job.out, count);
    const ColourList list(job.block.subspan(1, colours));
    if (!list.IsGood()) return PlainRunLength(job.block, job.out, count);
    const auto runs = job.block.subspan(1 + colours);
    const int width = CodeWidth(static_cast<int>(colours));
    const unsigned char* end = job.out + count;
#ifdef ZT_AVX2
    const auto decode = TheInstructionSet() >= InstructionSet::avx2 ? DecodeAvx2 : DecodePortable;
#else
    const auto decode = DecodePortable;
#endif
    unsigned char* reached = decode(runs, list, width, job.out, end);
    if (reached < end) std::memset(reached, 0, static_cast<std::size_t>(end - reached));
    job.note.index_limit = list.index_limit;
}
