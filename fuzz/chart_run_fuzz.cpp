#include "built_seeds.h"
#include "chart/huffman_encoding.h"
#include "chart/instruction_set.h"
#include "chart/plain_decoder.h"
#include "chart/run_decoder.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <vector>

/// Short pictures of few and of many colours, with short and long runs.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    std::vector<std::string> seeds;
    for (const int colours : {1, 2, 9, 60}) {
        for (const int run : {1, 5, 40, 300}) {
            std::vector<unsigned char> pixels(500);
            for (int i = 0; i < 500; ++i)
                pixels[static_cast<std::size_t>(i)] = static_cast<unsigned char>(i / run * 7 % colours);
            std::vector<unsigned int> words(CHuffmanEncoding::MostRunWords(500));
            words.resize(
                CHuffmanEncoding().encode_run(pixels.data(), 500, words.data(), static_cast<int>(words.size())));
            const unsigned choice = 500 << 8 | 0xE0;
            seeds.emplace_back(reinterpret_cast<const char*>(&choice), sizeof(choice));
            seeds.back().append(reinterpret_cast<const char*>(words.data()), words.size() * sizeof(words[0]));
        }
    }
    AddBuiltSeeds(argc, argv, seeds);
    return 0;
}

/// The fast run-stream decoder against the plain one. The first four bytes choose the pixels wanted, and with them
/// the size of the table, and the instruction set; the rest are the words.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t kMostPixels = 16384;
    constexpr std::size_t kMostWords = 4096;
    static std::array<unsigned char, kMostPixels> fast, plain;
    static std::array<unsigned int, kMostWords> room;
    if (size < 8) return 0;
    std::uint32_t choice;
    std::memcpy(&choice, data, sizeof(choice));
    const auto words = static_cast<unsigned>(std::min(size / 4 - 1, kMostWords));
    // At the end of the room, so that the sanitizer sees a read behind the stream.
    unsigned int* stream = room.data() + kMostWords - words;
    std::memcpy(stream, data + 4, words * sizeof(*stream));
    const unsigned count = (choice & 0xE0) == 0 ? 4096 + (choice >> 8) % 12000 : (choice >> 8) % 1500;
    SetInstructionSet((choice & 16) != 0 ? InstructionSet::portable : InstructionSet::avx2);
    unsigned char* fast_out = fast.data() + fast.size() - count;
    const unsigned int* plain_end = PlainDecodeRun(stream, words, plain.data(), count);
    const unsigned int* fast_end = DecodeRun(stream, words, fast_out, count);
    if (fast_end != plain_end) std::abort();
    if (plain_end != nullptr && std::memcmp(fast_out, plain.data(), count) != 0) std::abort();
    return 0;
}
