#include "chart/chart_writer.h"
#include "chart/rastelle.h"
#include "chart/rastelle3.h"
#include "core/files.h"
#include "core/message_sink.h"
#include "support/chart_samples.h"
#include "support/temporary_root.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <unistd.h>

namespace {

using chart_bytes = std::vector<std::uint8_t>;
using chart_pointer = std::unique_ptr<CRastelle>;

struct RecordingSink : IMessageSink {
    RecordingSink() { before = SetMessageSink(this); }
    ~RecordingSink() override { SetMessageSink(before); }
    void Show(ZT_HWND, const std::string& title, const std::string& text, std::function<void()>) override
    {
        messages.push_back(title + "|" + text);
    }
    void Hint(ZT_HWND, const std::string&) override {}
    void Status(const std::string&) override {}
    std::vector<std::string> messages;
    IMessageSink* before;
};

void WriteBytes(const std::string& path, const chart_bytes& bytes)
{
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

CChartWriter SmallChart()
{
    CChartWriter writer;
    writer.Size(2, 2).Georeferencing(AffineGeoreferencing(128, 128, 51.0, 3.0, 50.0, 4.0));
    return writer;
}

chart_bytes SmallBytes()
{
    return SmallChart().Bytes(SmallChart().Plain(3));
}

chart_bytes WithWord(chart_bytes bytes, std::size_t position, std::uint32_t word)
{
    std::memcpy(bytes.data() + position, &word, sizeof(word));
    return bytes;
}

class OpenChart : public testing::Test {
protected:
    /// A chart of its own; checks that the callback came once and told the truth.
    chart_pointer Open(const std::string& from, CRastelle::WrongMagic wrong_magic = CRastelle::WrongMagic::remove)
    {
        int calls = 0;
        bool told = false;
        chart_pointer chart(CRastelle::CreateNew(
            {}, from.c_str(),
            [&](CRastelle*, bool opened) {
                ++calls;
                told = opened;
            },
            wrong_magic));
        EXPECT_EQ(calls, chart ? 1 : 0);
        EXPECT_EQ(told, chart && chart->open);
        return chart;
    }
    chart_pointer OpenBytes(const chart_bytes& bytes)
    {
        WriteBytes(path, bytes);
        return Open(path);
    }
    chart_pointer OpenWritten(const CChartWriter& writer)
    {
        EXPECT_TRUE(writer.Write(path, writer.Plain(3)));
        return Open(path);
    }

    CTemporaryRoot root;
    std::string path = root.file("Chart 7.rlt");
    RecordingSink sink;
};

struct RefusedCase {
    const char* name;
    chart_bytes bytes;
    const char* message; ///< %s stands for the path; empty for none
    bool makes_object;
    bool stays_on_disk;
};

chart_bytes Cut(chart_bytes bytes, std::size_t size)
{
    bytes.resize(size);
    return bytes;
}

std::vector<RefusedCase> RefusedCases()
{
    const chart_bytes good = SmallBytes();
    const char* const not_whole = "Problem|Failed to open map: \"%s\"\n. Try Rebooting...";
    return {
        {"noise_is_removed", Cut(chart_bytes(5000, 0x41), 5000), "", false, false},
        {"three_bytes_are_not_judged", {1, 2, 3}, "", false, true},
        {"empty_file_is_not_judged", {}, "", false, true},
        {"magic_alone", Cut(good, 4), "", false, true},
        {"newer_version", WithWord(good, 4, 0x00000006),
         "Problem|To open this map you need a newer version of your software.\n\n%s is version 6.", true, true},
        {"newer_chunked_version", WithWord(good, 4, 0x01000006),
         "Problem|To open this map you need a newer version of your software.\n\n%s is version 1000006.", true, true},
        {"rl2", WithWord(good, 4, 0x10000005), "Problem|This RL2 map is not compatible", false, true},
        {"unknown_family", WithWord(good, 4, 0x40000005), "", false, true},
        {"chunked_without_chunks", WithWord(good, 4, 0x01000005), "", true, true},
        {"other_chunked_without_chunks", WithWord(good, 4, 0x20000005), "", true, true},
        {"header_only", WithWord(good, 0x45A0, 0),
         "Problem|This map is a catalog header and has not been completely converted.", true, true},
        {"cut_in_the_header", Cut(good, 0x200), not_whole, true, true},
        {"cut_by_a_byte_of_the_table", Cut(good, 0x45A8 + 15), not_whole, true, true},
        {"table_beyond_the_file", WithWord(good, 8, 100000), not_whole, true, true},
        {"table_of_more_than_32_bits", WithWord(WithWord(good, 8, 65536), 12, 65536), not_whole, true, true},
        {"too_wide", WithWord(WithWord(good, 8, 1048577), 12, 0), "Problem|Not a Rastelle: \"%s\"", true, true},
        {"too_high", WithWord(WithWord(good, 12, 0xFFFFFFFF), 8, 0), "Problem|Not a Rastelle: \"%s\"", true, true},
    };
}

TEST_F(OpenChart, RefusesWhatIsNoChartWithItsMessage)
{
    for (const RefusedCase& c : RefusedCases()) {
        SCOPED_TRACE(c.name);
        sink.messages.clear();
        const auto chart = OpenBytes(c.bytes);
        EXPECT_EQ(chart != nullptr, c.makes_object);
        EXPECT_FALSE(chart && chart->open);
        EXPECT_EQ(isRegularFile(path), c.stays_on_disk);
        std::string expected = c.message;
        if (const auto at = expected.find("%s"); at != std::string::npos) expected.replace(at, 2, path);
        EXPECT_EQ(sink.messages, expected.empty() ? std::vector<std::string>() : std::vector<std::string>{expected});
    }
}

TEST_F(OpenChart, KeepsAForeignFileWhenTold)
{
    WriteBytes(path, chart_bytes(100, 0x41));
    EXPECT_EQ(Open(path, CRastelle::WrongMagic::keep), nullptr);
    EXPECT_TRUE(isRegularFile(path));
}

TEST_F(OpenChart, LeavesFoldersAndPipesAlone)
{
    std::filesystem::create_directory(path);
    EXPECT_EQ(Open(path), nullptr);
    const std::string pipe = root.file("pipe.rlt");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(Open(pipe), nullptr);
    EXPECT_TRUE(std::filesystem::exists(pipe));
    EXPECT_EQ(Open(root.file("missing.rlt")), nullptr);
}

TEST_F(OpenChart, AcceptsBothMagicsAndTheSmallestFile)
{
    const chart_bytes good = SmallBytes();
    EXPECT_TRUE(OpenBytes(WithWord(good, 0, 0x1423D5FE))->open);
    EXPECT_TRUE(OpenBytes(Cut(good, 0x45A8 + 16))->open);
}

TEST_F(OpenChart, ChunkedChartsAreRefusedAlsoWithTheirChunks)
{
    WriteBytes(root.file("Chart 7.RL3"), {1});
    WriteBytes(root.file("Other.rl3"), {1});
    EXPECT_FALSE(OpenBytes(WithWord(SmallBytes(), 4, 0x01000005))->open);
    EXPECT_TRUE(sink.messages.empty());
    EXPECT_TRUE(CRastelle::appearsFullyDownloaded(path));
    EXPECT_TRUE(CRastelle::appearsFullyDownloaded(root.file("Other.rlt")));
    EXPECT_FALSE(CRastelle::appearsFullyDownloaded(root.file("Third.rlt")));
}

struct TitleCase {
    const char* name;
    std::function<void(CChartWriter&)> fill;
    const char* title;
};

const TitleCase kTitles[] = {
    {"title_first", [](CChartWriter& w) { w.Title("Bay").LongTitle("Long").Identifier("7"); }, "Bay"},
    {"then_long_title", [](CChartWriter& w) { w.LongTitle("Long").Identifier("7"); }, "Long"},
    {"then_identifier", [](CChartWriter& w) { w.Identifier("7"); }, "7"},
    {"then_file_name", [](CChartWriter&) {}, "Chart 7.rlt"},
    {"latin1_becomes_utf8", [](CChartWriter& w) { w.Title("Ærøskøbing"); }, "Ærøskøbing"},
    {"soundings", [](CChartWriter& w) { w.Title("B").Type("Nautical Chart").DepthUnits("Metres"); },
     "B. Soundings in Metres"},
    {"soundings_of_another_series", [](CChartWriter& w) { w.Title("B").Type("SHOM Hydro").DepthUnits("m"); },
     "B. Soundings in m"},
    {"no_soundings_on_land", [](CChartWriter& w) { w.Title("B").Type("Topo").DepthUnits("Metres"); }, "B"},
    {"no_soundings_without_units", [](CChartWriter& w) { w.Title("B").Type("Marine"); }, "B"},
};

TEST_F(OpenChart, TitleFallsBackAndTellsSoundings)
{
    for (const TitleCase& c : kTitles) {
        CChartWriter writer = SmallChart();
        c.fill(writer);
        EXPECT_EQ(OpenWritten(writer)->GetTitle(), c.title) << c.name;
    }
}

TEST_F(OpenChart, TextsCanBeReadFromAHandleAndOutOfDamage)
{
    CChartWriter writer = SmallChart();
    writer.Copyright("(c) us").ExtraName("extra").DownloadUrl("https://host/p");
    const auto chart = OpenWritten(writer);
    EXPECT_EQ(chart->GetCopyright(), "(c) us");
    EXPECT_EQ(chart->extra_name, "extra");
    std::string text;
    chart->GetHeaderString(chart->download.url, text);
    EXPECT_EQ(text, "https://host/p");
    chart->GetHeaderString(0xFFFFFFF0, text);
    EXPECT_EQ(text, "");
    const int file = openRegularHandle(path);
    CRastelle::GetString(file, chart->header->copyright, text);
    EXPECT_EQ(text, "(c) us");
    CRastelle::GetString(file, 0x7FFFFFFF, text);
    EXPECT_EQ(text, "");
    close(file);
    chart->Close();
    EXPECT_EQ(chart->GetTitle() + chart->GetCopyright() + chart->GetMapType(), "");
}

TEST_F(OpenChart, PositionsAreShiftedAndTheBoundaryAsymmetrically)
{
    CChartWriter writer = SmallChart();
    const auto plain = OpenWritten(writer);
    const auto shifted = OpenWritten(writer.DatumShift(0.25, -0.5));
    double lat, lon, x, y;
    shifted->xy_to_latlong(0, 128, lat, lon);
    EXPECT_NEAR(lat, 50.25, 1e-9);
    EXPECT_NEAR(lon, 2.5, 1e-9);
    shifted->latlong_to_xy(lat, lon, x, y);
    EXPECT_NEAR(x, 0.0, 1e-6);
    EXPECT_NEAR(y, 128.0, 1e-6);
    EXPECT_NEAR(shifted->centre_lon, 3.0, 1e-9);
    CPolygon corners, shifted_corners, outline;
    EXPECT_EQ(plain->getBoundaryPolygon(corners), 4);
    shifted->getBoundaryPolygon(shifted_corners);
    EXPECT_EQ(corners.vertices, shifted_corners.vertices);
    const auto outlined = OpenWritten(writer.Outline({{50, 3}, {50, 4 - 360.0}, {51, 3.5 + 360.0}}));
    EXPECT_EQ(outlined->getBoundaryPolygon(outline), 3);
    EXPECT_EQ(outline.vertices, (std::vector<DblPoint>{{2.5, 50.25}, {3.5, 50.25}, {3.0, 51.25}}));
    EXPECT_TRUE(outlined->doesContain(50.5, 3.0));
    EXPECT_FALSE(outlined->doesContain(50.5, 3.9));
}

TEST_F(OpenChart, AnOutlineLongerThanTheFileIsCut)
{
    CChartWriter writer = SmallChart();
    writer.Outline({{50, 3}, {50, 4}, {51, 4}});
    const auto chart = OpenBytes(WithWord(writer.Bytes(writer.Plain(3)), 0x58, 0x7FFFFFFF));
    ASSERT_TRUE(chart->open);
    CPolygon outline;
    EXPECT_LT(chart->getBoundaryPolygon(outline), 100);
}

TEST_F(OpenChart, IsSharedByPathAndCounted)
{
    ASSERT_TRUE(SmallChart().Write(path, SmallChart().Plain(3)));
    int calls = 0;
    const auto count = [&calls](CRastelle*, bool opened) { calls += opened ? 1 : 100; };
    CRastelle* first = CRastelle::Create({}, path.c_str(), count);
    EXPECT_EQ(CRastelle::Create({}, path.c_str(), count), first);
    EXPECT_EQ(calls, 2);
    first->Destroy();
    EXPECT_EQ(CRastelle::Create({}, path.c_str(), count), first);
    first->Destroy();
    first->Destroy();
    std::filesystem::remove(path);
    EXPECT_EQ(CRastelle::Create({}, path.c_str(), count), nullptr);
    EXPECT_EQ(calls, 3);
}

TEST_F(OpenChart, MayBeGivenBackInItsOwnCallback)
{
    WriteBytes(path, WithWord(SmallBytes(), 4, 6));
    EXPECT_EQ(CRastelle::Create({}, path.c_str(), [](CRastelle* chart, bool) { chart->Destroy(); }), nullptr);
    WriteBytes(path, SmallBytes());
    EXPECT_EQ(CRastelle::Create({}, path.c_str(), [](CRastelle* chart, bool) { chart->Destroy(); }), nullptr);
}

TEST_F(OpenChart, CountsItsChunkFolder)
{
    WriteBytes(path, chart_bytes(100));
    EXPECT_EQ(CRastelle::getRltFileSize(path), 100);
    std::filesystem::create_directory(root.file("Chart 7.rl3"));
    WriteBytes(root.file("Chart 7.rl3/0"), chart_bytes(30));
    WriteBytes(root.file("Chart 7.rl3/1"), chart_bytes(7));
    EXPECT_EQ(CRastelle::getRltFileSize(path), 137);
}

/// The one pixel value of a tile read at level 0, or -1 when it has several.
int ReadTile(CRastelle& chart, int x, int y)
{
    auto thread = std::make_unique<ThreadDataForRead>();
    EXPECT_EQ(chart.ReadBlock(x, y, 0, thread->tiles[0].data(), thread.get()), 0);
    const auto* begin = thread->tiles[0].data();
    return std::all_of(begin, begin + kTilePixels, [begin](unsigned char p) { return p == *begin; }) ? *begin : -1;
}

TEST_F(OpenChart, BlocksAreReadAcrossTheViewsEnds)
{
    constexpr std::uint32_t kView = 0x2000000;
    std::vector<unsigned char> busy(kTilePixels);
    for (int i = 0; i < kTilePixels; ++i) busy[static_cast<std::size_t>(i)] = static_cast<unsigned char>(i * 31 % 120);
    const auto block = EncodeTile(busy.data(), TileCoding::bit_packed);
    for (const std::uint32_t position : {kView - 1024, kView, 2 * kView - 1024, 5 * kView + 3}) {
        CChartWriter writer = SmallChart();
        writer.BlocksFrom(position).RawTile(0, 0, block);
        const auto chart = OpenWritten(writer);
        ASSERT_TRUE(chart->open);
        auto thread = std::make_unique<ThreadDataForRead>();
        chart->ReadBlock(0, 0, 0, thread->tiles[0].data(), thread.get());
        for (int row = 0; row < kTileSide; ++row) {
            ASSERT_EQ(std::memcmp(&thread->tiles[0][static_cast<std::size_t>(row) * kTileSide],
                                  &busy[CRastelle::bitrev[row] * std::size_t{kTileSide}], kTileSide),
                      0)
                << position;
        }
        EXPECT_EQ(ReadTile(*chart, 1, 1), 3);
        EXPECT_NE(chart->get_addr(position), nullptr);
        EXPECT_EQ(chart->get_addr(6 * std::uint64_t{kView}), nullptr);
    }
}

TEST_F(OpenChart, TilesThatAreNotThereHaveTheirIndex)
{
    const auto good = SmallBytes();
    const auto chart = OpenBytes(WithWord(WithWord(good, 0x45A4, 0xFFFFFFF0), 0x45A8, 0));
    EXPECT_EQ(ReadTile(*chart, 0, 0), 3);
    EXPECT_EQ(ReadTile(*chart, 1, 0), 0) << "behind the file";
    EXPECT_EQ(ReadTile(*chart, 0, 1), 0) << "no pointer";
    EXPECT_EQ(ReadTile(*chart, -1, 0), 1);
    EXPECT_EQ(ReadTile(*chart, 0, 2), 1);
}

TEST_F(OpenChart, AFileCutWhileOpenReadsAsNothingThere)
{
    CChartWriter writer = SmallChart();
    const auto chart = OpenWritten(writer.BlocksFrom(0x2010000));
    ASSERT_TRUE(chart->open);
    EXPECT_EQ(ReadTile(*chart, 0, 0), 3);
    ASSERT_EQ(truncate(path.c_str(), 0x45A8 + 16), 0);
    EXPECT_EQ(ReadTile(*chart, 0, 0), 0);
    EXPECT_EQ(ReadTile(*chart, 1, 1), 0);
}

TEST_F(OpenChart, TwoThreadsMayReadOneChartWhoseBlocksLieInDifferentViews)
{
    CChartWriter writer = SmallChart();
    auto bytes_end = std::vector<std::uint8_t>(0x2000000, 0);
    bytes_end[0] = 0xFF;
    bytes_end[1] = 9;
    writer.BlocksFrom(0x2000000).RawTile(0, 0, bytes_end);
    const auto chart = OpenWritten(writer);
    ASSERT_TRUE(chart->open);
    const auto read_all = [&chart](int x) {
        for (int i = 0; i < 200; ++i) EXPECT_EQ(ReadTile(*chart, x, 0), x == 0 ? 9 : 3);
    };
    std::thread other(read_all, 1);
    read_all(0);
    other.join();
}

} // namespace
