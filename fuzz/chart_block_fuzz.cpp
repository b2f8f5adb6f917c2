#include "built_seeds.h"
#include "chart/chart_writer.h"
#include "chart/instruction_set.h"
#include "chart/plain_decoder.h"
#include "chart/rastelle.h"

#include <cstdlib>
#include <cstring>
#include <memory>

/// A tile in every coding, with few and with many colours.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    std::vector<std::string> seeds;
    for (const int colours : {2, 5, 14, 30, 60, 120}) {
        unsigned char pixels[kTilePixels];
        for (int i = 0; i < kTilePixels; ++i) pixels[i] = static_cast<unsigned char>(i * (i >> 5) / 7 % colours);
        for (const TileCoding coding : {TileCoding::huffman, TileCoding::run_length, TileCoding::bit_packed}) {
            const auto block = EncodeTile(pixels, coding);
            seeds.push_back('\0' + std::string(block.begin(), block.end()));
        }
    }
    AddBuiltSeeds(argc, argv, seeds);
    return 0;
}

/// The fast tile decoders against the plain one, on a block that ends exactly where the input does. The first byte
/// picks the number of rows and the instruction set.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static std::array<unsigned char, kTilePixels + kTileMargin> fast;
    static std::array<unsigned char, kTilePixels> plain;
    static constexpr int kRows[] = {1, 2, 8, 64}; // few mostly: they find the same in less time
    if (size < 1) return 0;
    const int rows = kRows[data[0] >> 5 == 7 ? 3 : data[0] & 1];
    SetInstructionSet((data[0] & 2) != 0 ? InstructionSet::portable : InstructionSet::avx2);
    const std::span block(data + 1, size - 1);
    bool fast_placeholder = false, plain_placeholder = false;
    const TileNote note = CRastelle::UnpackBlock(block, fast.data(), rows, fast_placeholder);
    PlainUnpackBlock(block, plain.data(), rows, plain_placeholder);
    const auto count = static_cast<std::size_t>(rows * kTileSide);
    if (std::memcmp(fast.data(), plain.data(), count) != 0 || fast_placeholder != plain_placeholder) std::abort();
    for (std::size_t i = 0; i < count; ++i) {
        if (plain[i] >= note.index_limit || (note.solid >= 0 && plain[i] != note.solid)) std::abort();
    }
    return 0;
}
