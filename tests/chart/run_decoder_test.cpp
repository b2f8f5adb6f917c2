#include "chart/huffman_encoding.h"
#include "chart/plain_decoder.h"
#include "chart/run_decoder.h"
#include "decoder_support.h"
#include "support/chart_samples.h"

#include <gtest/gtest.h>

namespace {

using run_words = std::vector<unsigned int>;

/// Both decoders of a stream: result, pixels and position alike, and not a byte behind the pixels touched.
void ExpectFastStreamIsPlain(const run_words& words, unsigned count, const std::string& what)
{
    constexpr unsigned char kUntouched = 0xEE;
    std::vector<unsigned char> plain(count + 64, kUntouched);
    const auto word_count = static_cast<unsigned>(words.size());
    const auto* plain_end = PlainDecodeRun(words.data(), word_count, plain.data(), count);
    for (const InstructionSet set : kInstructionSets) {
        const CWithInstructionSet with(set);
        std::vector<unsigned char> fast(count + 64, kUntouched);
        ASSERT_EQ(DecodeRun(words.data(), word_count, fast.data(), count), plain_end) << what;
        ASSERT_TRUE(std::all_of(fast.end() - 64, fast.end(), [](unsigned char byte) { return byte == kUntouched; }))
            << what;
        if (plain_end == nullptr) continue;
        ASSERT_EQ(fast, plain) << what;
    }
}

run_words Encode(const std::vector<unsigned char>& pixels)
{
    run_words words(CHuffmanEncoding::MostRunWords(static_cast<int>(pixels.size())));
    words.resize(CHuffmanEncoding().encode_run(pixels.data(), static_cast<int>(pixels.size()), words.data(),
                                               static_cast<int>(words.size())));
    return words;
}

TEST(RunStream, ChartsSurviveEncodingAndDecodeInEveryWayAndLength)
{
    for (const ChartKind kind : {ChartKind::clean, ChartKind::antialiased, ChartKind::scanned}) {
        const ChartSample sample = MakeChartSample(kind, 4);
        const auto words = Encode(sample.indices);
        const auto count = static_cast<unsigned>(sample.indices.size());
        std::vector<unsigned char> out(count);
        ASSERT_EQ(CHuffmanEncoding::decode_run(words.data(), static_cast<unsigned>(words.size()), out.data(), count),
                  words.data() + words.size());
        ASSERT_EQ(out, sample.indices);
        for (const unsigned prefix : {1U, 277U, 4095U, 4096U, 4097U, 8192U, count / 8, count - 1, count, count + 300}) {
            ASSERT_NO_FATAL_FAILURE(
                ExpectFastStreamIsPlain(words, prefix, ChartKindName(kind) + std::to_string(prefix)));
        }
    }
}

TEST(RunStream, EveryRunLengthSurvives)
{
    std::vector<unsigned char> pixels;
    for (unsigned length = 1; length <= 600; ++length)
        pixels.insert(pixels.end(), length, static_cast<unsigned char>(length % 128));
    const auto words = Encode(pixels);
    std::vector<unsigned char> out(pixels.size());
    ASSERT_NE(CHuffmanEncoding::decode_run(words.data(), static_cast<unsigned>(words.size()), out.data(),
                                           static_cast<unsigned>(out.size())),
              nullptr);
    EXPECT_EQ(out, pixels);
    ExpectFastStreamIsPlain(words, static_cast<unsigned>(pixels.size()), "ramp");
}

TEST(RunStream, TooSmallARoomIsRefusedByTheEncoder)
{
    const std::vector<unsigned char> pixels(100, 3);
    run_words words(8, 0xABABABAB);
    EXPECT_EQ(CHuffmanEncoding().encode_run(pixels.data(), 100, words.data(), 2), 0U);
    EXPECT_EQ(words[0], 0xABABABAB);
}

TEST(RunStream, DamagedStreamsAreJudgedAlike)
{
    const ChartSample sample = MakeChartSample(ChartKind::scanned, 2);
    const auto good = Encode(sample.indices);
    const auto count = static_cast<unsigned>(sample.indices.size());
    std::mt19937 random(17);
    for (int round = 0; round < 300; ++round) {
        run_words words = good;
        const unsigned within = round % 2 == 0 ? words[0] : static_cast<unsigned>(words.size());
        for (int damage = 0; damage < 3; ++damage) words[1 + random() % (within - 1)] ^= 1U << random() % 32;
        if (round % 3 == 0) words.resize(words[0] + 1 + random() % (words.size() - words[0]));
        ASSERT_NO_FATAL_FAILURE(ExpectFastStreamIsPlain(words, count, std::to_string(round)));
    }
}

struct BadStream {
    const char* name;
    run_words words;
    unsigned count;
};

constexpr unsigned Nodes(int low, int high)
{
    return static_cast<unsigned>(low & 0xFFFF) | static_cast<unsigned>(high) << 16;
}

const BadStream kBadStreams[] = {
    {"no_pixels_wanted", {2, Nodes(5, 0), 0}, 0},
    {"too_many_pixels", {2, Nodes(5, 0), 0}, 10000001},
    {"tree_as_long_as_the_stream", {2, Nodes(5, 0)}, 1},
    {"no_room_for_a_tree", {1, 0, 0}, 1},
    {"word_count_of_zero", {0, 0, 0}, 1},
    {"branch_out_of_the_tree", {2, Nodes(-7, 1), 0xFFFFFFFF}, 5},
    {"branch_onto_the_first_bits", {2, Nodes(-1, 1), 0xFFFFFFFF}, 5},
    {"bits_end_before_the_picture", {3, Nodes(-1, 1), Nodes(2, 0), 0}, 33},
    {"run_bits_end_before_the_picture", {3, Nodes(-1, 0x301), Nodes(2, 0), 0}, 22 * 4},
};

TEST(RunStream, BadStreamsGiveNull)
{
    for (const BadStream& bad : kBadStreams) {
        std::vector<unsigned char> out(std::min(bad.count, 100000U));
        EXPECT_EQ(CHuffmanEncoding::decode_run(bad.words.data(), static_cast<unsigned>(bad.words.size()), out.data(),
                                               bad.count),
                  nullptr)
            << bad.name;
    }
    unsigned char pixel;
    EXPECT_EQ(CHuffmanEncoding::decode_run(nullptr, 10, &pixel, 1), nullptr);
}

TEST(RunStream, LeafAlonePaintsWithoutBits)
{
    const run_words words{2, 5, 0};
    std::vector<unsigned char> out(10);
    EXPECT_EQ(CHuffmanEncoding::decode_run(words.data(), 3, out.data(), 10), words.data() + 2);
    EXPECT_EQ(out, std::vector<unsigned char>(10, 5));
    ExpectFastStreamIsPlain(words, 5000, "leaf");
}

} // namespace
