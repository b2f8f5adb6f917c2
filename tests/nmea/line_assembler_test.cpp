#include "core/files.h"
#include "core/folders.h"
#include "nmea/instrument_sentences.h"
#include "nmea/line_assembler.h"
#include "nmea/sentence_tools.h"
#include "support/temporary_root.h"

#include <gtest/gtest.h>

namespace {

/// One assembler with its connection, and the results of what was given to it.
class LineAssembler : public testing::Test {
protected:
    using Results = std::vector<CLineAssembler::Result>;

    void SetUp() override { CDataConnection::startDebug(); }
    void TearDown() override { CDataConnection::stopDebug({}); }

    /// The results other than kLineOpen.
    Results Feed(const std::string& bytes)
    {
        Results results;
        for (const char byte : bytes) {
            const CLineAssembler::Result result = assembler.Add(byte, connection);
            if (result != CLineAssembler::kLineOpen) results.push_back(result);
        }
        return results;
    }
    std::string Log()
    {
        CDataConnection::stopDebug({});
        std::string text;
        read_whole_file(getTmpDirectory("nmea_debug.txt"), text);
        return text;
    }

    CTemporaryRoot root;
    CWirelessConnection connection;
    CLineAssembler assembler;
    CHearing<CNMEA_Instruments::MTW> water;
};

constexpr auto kTaken = CLineAssembler::kLineTaken;
constexpr auto kRejected = CLineAssembler::kLineRejected;
constexpr auto kOverflow = CLineAssembler::kOverflow;

} // namespace

TEST_F(LineAssembler, LinesInAnyPieces)
{
    const std::string line = WithChecksum("$IIMTW,11.5,C");
    EXPECT_EQ(Feed(line.substr(0, 5)), Results{});
    EXPECT_EQ(Feed(line.substr(5) + "\r"), Results{});
    EXPECT_EQ(Feed("\n" + line + "\n\r\n" + line + "\r\nrest"), (Results{kTaken, kTaken, kRejected, kTaken}));
    EXPECT_EQ(water.count, 3);
    assembler.Reset();
    EXPECT_EQ(Feed(line + "\n"), Results{kTaken});
    EXPECT_EQ(Log(), line + "\n" + line + "\n\n" + line + "\n" + line + "\n");
}

TEST_F(LineAssembler, TheLongestLine)
{
    const std::string sentence = WithChecksum("$IIMTW,11.5,C");
    const std::string longest = std::string(199 - sentence.size(), 'x') + sentence;
    EXPECT_EQ(Feed(longest + "\n"), Results{kTaken});
    EXPECT_EQ(Feed("x" + longest + "\n"), (Results{kOverflow, kRejected}));
    EXPECT_EQ(Feed(sentence + "\n"), Results{kTaken});
    EXPECT_EQ(water.count, 2);
    EXPECT_EQ(Log(), longest + "\nError: Data not NMEA format.\n\n" + sentence + "\n");
}

TEST_F(LineAssembler, TheByteThatDidNotFitIsDropped)
{
    const std::string sentence = WithChecksum("$IIMTW,11.5,C");
    EXPECT_EQ(Feed(std::string(199, 'x') + "$" + sentence + "\n"), (Results{kOverflow, kTaken}));
    EXPECT_EQ(water.count, 1);
}

TEST_F(LineAssembler, BinaryNoiseLeavesTheNextLineWhole)
{
    std::string noise;
    for (int i = 0; i < 5000; ++i) noise += static_cast<char>(i * 7919 >> 3);
    Feed(noise);
    EXPECT_EQ(Feed(std::string("\n").append(WithChecksum("$IIMTW,11.5,C")).append("\n")).back(), kTaken);
}
