#include "chart/chart_writer.h"
#include "chart/rastelle.h"
#include "core/files.h"
#include "support/temporary_root.h"
#include "tools/tool_runner.h"

#include <cmath>
#include <memory>
#include <sys/stat.h>

#include <QFile>
#include <QJsonArray>
#include <gtest/gtest.h>

namespace {

QStringList Bounds(const char* bounds)
{
    return {"--bounds", bounds};
}

/// The program's own pixels of an aligned rectangle of 256 x 256 output pixels.
QImage ProgramSquare(const QString& path, int x, int y, int level)
{
    const auto ignore = [](CRastelle*, bool) {};
    const std::unique_ptr<CRastelle> chart(CRastelle::CreateNew({}, path.toUtf8().constData(), ignore));
    const auto thread = std::make_unique<ThreadDataForRead>();
    QImage image(256, 256, QImage::Format_RGB32);
    chart->ReadRectRGB(x, y, 256, 256, 256, level, reinterpret_cast<unsigned*>(image.bits()), thread.get());
    return image;
}

QString Join(std::initializer_list<int> numbers)
{
    QStringList texts;
    for (const int number : numbers) texts << QString::number(number);
    return texts.join(',');
}

QByteArray FileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class ZtChart : public testing::Test {
protected:
    CTemporaryRoot root;
    QString Path(const char* name) const { return QString::fromStdString(root.file(name)); }
};

} // namespace

TEST_F(ZtChart, MakeKeepsTextsPlaceAndPixels)
{
    const QImage picture = TestPicture(320, 192, 40);
    const QString chart = MakeTestChart(root.path(), "a", picture,
                                        Bounds("50,-5,52,-1") + QStringList{"--title", "Ma\u00f1ana", "--type", "Topo",
                                                                            "--scale-text", "1:50,000", "--edition",
                                                                            "3", "--outline", "50,-5 52,-5 52,-1"});
    const QJsonObject info = RunTool({"info", chart}).Json();
    EXPECT_EQ(info["title"].toString(), "Ma\u00f1ana");
    EXPECT_EQ(info["type"].toString(), "Topo");
    EXPECT_EQ(info["scale_text"].toString(), "1:50,000");
    EXPECT_EQ(info["edition"].toString(), "3");
    EXPECT_EQ(info["width_px"].toInt(), 320);
    EXPECT_EQ(info["height_px"].toInt(), 192);
    EXPECT_EQ(info["outline"].toArray().at(1).toArray().at(0).toDouble(), 52.0);
    EXPECT_NEAR(info["scale"].toDouble(), 2.0 / 192 * 60, 1e-9);
    EXPECT_NEAR(info["rotation"].toDouble(), 0.0, 1e-6);
    EXPECT_TRUE(info["error"].isNull());
    ASSERT_EQ(RunTool({"render", chart, "-o", Path("back.png")}).code, 0);
    EXPECT_EQ(QImage(Path("back.png")).convertToFormat(QImage::Format_RGB32), picture);
    EXPECT_EQ(RunTool({"verify", chart}).code, 0);
}

TEST_F(ZtChart, MakingItsOwnOutputAgainKeepsEveryIndex)
{
    const QString chart = MakeTestChart(root.path(), "a", TestPicture(256, 128, 300), Bounds("0,0,1,2"));
    ASSERT_EQ(RunTool({"render", chart, "--indices", "-o", Path("a1.png")}).code, 0);
    const QImage first(Path("a1.png"));
    const QString again = MakeTestChart(root.path(), "b", first, Bounds("0,0,1,2"));
    ASSERT_EQ(RunTool({"render", again, "--indices", "-o", Path("b1.png")}).code, 0);
    const QImage second(Path("b1.png"));
    ASSERT_EQ(first.size(), second.size());
    for (int y = 0; y < first.height(); ++y) {
        ASSERT_EQ(0, std::memcmp(first.constScanLine(y), second.constScanLine(y), 256)) << y;
    }
}

TEST_F(ZtChart, PictureOfAnyRectangleIsCutFromTheProgramsSquares)
{
    const QString chart = MakeTestChart(root.path(), "a", TestPicture(1000, 700, 90), Bounds("0,0,1,2"));
    struct Row {
        int level, square_x, square_y; ///< chart pixels of the aligned square
        int dx, dy, w, h;              ///< output pixels within it
    };
    constexpr Row kRows[] = {{0, 256, 256, 17, 3, 200, 99}, {1, 512, 0, 1, 0, 255, 256},
                             {2, 0, 0, 5, 7, 101, 33},      {3, 0, 0, 0, 0, 256, 256},
                             {6, 0, 0, 0, 0, 15, 11},       {-1, 128, 128, 3, 9, 77, 31},
                             {-2, 64, 192, 0, 1, 255, 200}, {0, -256, -256, 200, 200, 56, 56}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::Message() << "level " << row.level << " x " << row.square_x);
        const auto chart_pixels = [&](int output) {
            return row.level >= 0 ? output << row.level : output / (1 << -row.level);
        };
        // At a magnification a rectangle can only begin at a chart pixel.
        const int dx = row.level < 0 ? row.dx & ~((1 << -row.level) - 1) : row.dx;
        const int dy = row.level < 0 ? row.dy & ~((1 << -row.level) - 1) : row.dy;
        const QString rect = Join({row.square_x + chart_pixels(dx), row.square_y + chart_pixels(dy), row.w, row.h});
        const QStringList common{"render", chart, "--level", QString::number(row.level), "--rect", rect, "-o"};
        ASSERT_EQ(RunTool(common + QStringList{Path("p.png")}).code, 0);
        ASSERT_EQ(RunTool(common + QStringList{Path("i.png"), "--indices"}).code, 0);
        const QImage picture = QImage(Path("p.png")).convertToFormat(QImage::Format_RGB32);
        const int w = std::min(row.w, 256 - dx);
        const int h = std::min(row.h, 256 - dy);
        EXPECT_EQ(picture.copy(0, 0, w, h),
                  ProgramSquare(chart, row.square_x, row.square_y, row.level).copy(dx, dy, w, h));
        const QImage indices(Path("i.png"));
        ASSERT_EQ(indices.format(), QImage::Format_Indexed8);
        EXPECT_EQ(indices.convertToFormat(QImage::Format_RGB32), picture);
    }
}

TEST_F(ZtChart, LocateGoesThereAndBack)
{
    const QString chart =
        MakeTestChart(root.path(), "a", TestPicture(512, 512, 20),
                      {"--corners", "52,178 53,-178 51,-177 50,179", "--datum-shift", "0.01,-0.02", "--type", "X"});
    const QJsonObject at = RunTool({"locate", chart, "--xy", "100.5,300"}).Json();
    EXPECT_TRUE(RunTool({"info", chart}).Json()["has_datum_shift"].toBool());
    // Bilinear between the corners.
    const double u = 100.5 / 512;
    const double v = 300.0 / 512;
    EXPECT_NEAR(at["lat"].toDouble(), (52 + u) * (1 - v) + (50 + u) * v, 2e-3);
    EXPECT_NEAR(at["lon"].toDouble(), (178 + 4 * u) * (1 - v) + (179 + 4 * u) * v, 2e-3);
    const QString position =
        QString::number(at["lat"].toDouble(), 'g', 15) + ',' + QString::number(at["lon"].toDouble() - 360, 'g', 15);
    const QJsonObject back = RunTool({"locate", chart, "--latlon", position}).Json();
    EXPECT_NEAR(back["x"].toDouble(), 100.5, 0.2);
    EXPECT_NEAR(back["y"].toDouble(), 300, 0.2);
}

TEST_F(ZtChart, AnOutlineLiesWhereItWasGivenWhateverTheDatumShift)
{
    const QString chart = MakeTestChart(
        root.path(), "o", TestPicture(64, 64, 3),
        Bounds("10,20,14,24") + QStringList{"--datum-shift", "0.5,-0.25", "--outline", "11,21 13,21 13,23"});
    const QJsonObject bounds = RunTool({"info", chart}).Json()["bounds"].toObject();
    EXPECT_NEAR(bounds["lat_min"].toDouble(), 11.0, 1e-9);
    EXPECT_NEAR(bounds["lat_max"].toDouble(), 13.0, 1e-9);
    EXPECT_NEAR(bounds["lon_min"].toDouble(), 21.0, 1e-9);
    EXPECT_NEAR(bounds["lon_max"].toDouble(), 23.0, 1e-9);
}

TEST_F(ZtChart, WorldFileBesideAPictureIsTaken)
{
    ASSERT_TRUE(write_to_file(root.file("w.pgw"), "0.01\n0\n0\n-0.01\n7\n44\n"));
    const QString chart = MakeTestChart(root.path(), "w", TestPicture(128, 64, 5), {});
    const QJsonObject at = RunTool({"locate", chart, "--xy", "100,50"}).Json();
    EXPECT_NEAR(at["lat"].toDouble(), 43.5, 1e-9);
    EXPECT_NEAR(at["lon"].toDouble(), 8.0, 1e-9);

    const QByteArray before = FileBytes(Path("w.pgw"));
    for (const QStringList& given : {QStringList(), QStringList{"--world-file", Path("w.pgw")}}) {
        EXPECT_EQ(RunTool(QStringList{"make", Path("w.png"), "-o", Path("w.pgw")} + given).code, 2);
        EXPECT_EQ(FileBytes(Path("w.pgw")), before) << "an input is never overwritten";
    }
}

TEST_F(ZtChart, BestFollowsScaleTypeAndSteps)
{
    ASSERT_TRUE(createPath(root.file("maps/sub")));
    const QImage picture = TestPicture(64, 64, 4);
    const QString coarse =
        MakeTestChart(root.file("maps"), "coarse", picture, Bounds("0,0,16,16") + QStringList{"--type", "Topo"});
    const QString fine =
        MakeTestChart(root.file("maps/sub"), "fine", picture, Bounds("4,4,5,5") + QStringList{"--type", "Topo"});
    const QString other =
        MakeTestChart(root.file("maps"), "other", picture, Bounds("4,4,8,8") + QStringList{"--type", "Unseen"});
    struct Row {
        const char* name;
        QStringList more;
        QString chosen;
    };
    const Row rows[] = {{"fine_scale", {"--at", "4.5,4.5", "--scale", "1"}, fine},
                        {"unseen_type_is_skipped", {"--at", "4.5,4.5", "--scale", "4"}, coarse},
                        {"any_type", {"--at", "4.5,4.5", "--scale", "4", "--any-type"}, other},
                        {"in", {"--at", "4.5,4.5", "--scale", "15", "--in"}, fine},
                        {"out", {"--at", "4.5,4.5", "--scale", "1", "--out"}, coarse},
                        {"nothing_there", {"--at=-50,20", "--scale", "1"}, {}}};
    for (const Row& row : rows) {
        const CToolRun run = RunTool(QStringList{"best", Path("maps")} + row.more);
        EXPECT_EQ(run.code, 0) << row.name;
        EXPECT_EQ(QString::fromUtf8(run.output).trimmed(), row.chosen) << row.name;
    }
}

TEST_F(ZtChart, VerifyNamesTheFirstFault)
{
    const std::uint32_t colours[] = {0, 0xFFFFFF, 0xFF0000};
    struct Row {
        const char* name;
        std::vector<std::uint8_t> block;
        const char* said;
    };
    const Row rows[] = {{"index_above_the_palette", {0xFF, 200}, "200"},
                        {"tree_runs_off", {0x00, 0x80, 0, 0x80}, "tree"},
                        {"code_without_a_colour", std::vector<std::uint8_t>(4096, 3), "names colour"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        CChartWriter writer;
        writer.Size(3, 2).Palette(colours).RawTile(1, 1, row.block);
        const std::string path = root.file("bad.rlt");
        ASSERT_TRUE(writer.Write(path, writer.Plain(2)));
        const CToolRun run = RunTool({"verify", QString::fromStdString(path)});
        EXPECT_EQ(run.code, 1);
        EXPECT_TRUE(run.output.contains("tile 1,1")) << run.output.constData();
        EXPECT_TRUE(run.output.contains(row.said)) << run.output.constData();
    }
}

TEST_F(ZtChart, BadInputFailsWithWordsAndStaysAsItWas)
{
    const QString good = MakeTestChart(root.path(), "good", TestPicture(640, 640, 50), Bounds("0,0,1,1"));
    const QByteArray bytes = FileBytes(good);
    const auto with_byte = [&bytes](int at, char value) {
        QByteArray changed = bytes;
        changed[at] = value;
        return changed;
    };
    QByteArray noise(5000, '\0');
    for (int i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>(i * 7919 >> 3);
    struct Row {
        const char* name;
        QByteArray content;
        const char* said;
    };
    const Row rows[] = {{"noise.rlt", noise, "Not a Rastelle"},
                        {"empty.rlt", {}, "Failed to open"},
                        {"header.rlt", bytes.left(0x1A0), "Failed to open"},
                        {"table.rlt", bytes.left(0x45B0), "Failed to open"},
                        {"newer.rlt", with_byte(4, 6), "newer version"},
                        {"rl2.rlt", with_byte(7, 0x10), "RL2"},
                        {"family.rlt", with_byte(7, 0x33), "cannot open"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QString path = Path(row.name);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(row.content);
        file.close();
        const CToolRun info = RunTool({"info", path});
        EXPECT_EQ(info.code, 1);
        EXPECT_TRUE(info.Json()["error"].toString().contains(row.said)) << info.output.constData();
        for (const QStringList& call :
             {QStringList{"render", path, "-o", Path("x.png")}, QStringList{"locate", path, "--xy", "1,1"},
              QStringList{"make", path, "-o", Path("x.rlt"), "--bounds", "0,0,1,1"}}) {
            const CToolRun run = RunTool(call);
            EXPECT_EQ(run.code, 1) << call[0].toStdString();
            EXPECT_FALSE(run.errors.isEmpty()) << call[0].toStdString();
        }
        EXPECT_EQ(RunTool({"verify", path}).code, 1);
        EXPECT_EQ(FileBytes(path), row.content);
        EXPECT_TRUE(QFile::exists(path));
    }
    EXPECT_FALSE(QFile::exists(Path("x.png")));
    EXPECT_FALSE(QFile::exists(Path("x.rlt")));
}

TEST_F(ZtChart, AChunkedChartWithoutItsChunksTellsItsHeader)
{
    const QString chart = MakeTestChart(root.path(), "c", TestPicture(128, 64, 4), Bounds("10,20,11,22"));
    QByteArray bytes = FileBytes(chart);
    bytes[7] = 0x01;
    ASSERT_TRUE(write_to_file(chart.toStdString(), bytes.toStdString()));
    const CToolRun info = RunTool({"info", chart});
    EXPECT_EQ(info.code, 1);
    EXPECT_EQ(info.Json()["width_px"].toInt(), 128);
    EXPECT_TRUE(info.Json()["chunked"].toBool());
    EXPECT_EQ(info.Json()["title"].toString(), "c");
    EXPECT_FALSE(info.Json()["error"].toString().isEmpty());
    EXPECT_NEAR(RunTool({"locate", chart, "--xy", "64,32"}).Json()["lon"].toDouble(), 21.0, 1e-9);
    EXPECT_EQ(RunTool({"render", chart, "-o", Path("x.png")}).code, 1);
    EXPECT_EQ(RunTool({"verify", chart}).code, 1);
}

TEST_F(ZtChart, OnlyRegularFilesAreOpened)
{
    ASSERT_EQ(mkfifo(root.file("pipe.rlt").c_str(), 0600), 0);
    for (const QString& path : {Path("pipe.rlt"), Path("."), Path("missing.rlt")}) {
        for (const QStringList& call :
             {QStringList{"info", path}, QStringList{"verify", path}, QStringList{"locate", path, "--xy", "1,1"},
              QStringList{"make", path, "-o", Path("x.rlt"), "--bounds", "0,0,1,1"}}) {
            EXPECT_EQ(RunTool(call).code, 1) << call[0].toStdString() << ' ' << path.toStdString();
        }
    }
}

TEST_F(ZtChart, WrongUseIsToldApartFromFailure)
{
    const QString chart = MakeTestChart(root.path(), "a", TestPicture(64, 64, 4), Bounds("0,0,1,1"));
    const QByteArray before = FileBytes(chart);
    const QStringList calls[] = {{},
                                 {"paint", chart},
                                 {"info"},
                                 {"render", chart},
                                 {"render", chart, "-o", chart},
                                 {"render", chart, "-o", Path("x.png"), "--level", "7"},
                                 {"render", chart, "-o", Path("x.png"), "--rect", "1,2,3"},
                                 {"render", chart, "-o", Path("x.png"), "--rect", "0,0,0,5"},
                                 {"locate", chart},
                                 {"locate", chart, "--xy", "1;2"},
                                 {"best", Path(".")},
                                 {"make", Path("a.png"), "-o", Path("a.png"), "--bounds", "0,0,1,1"},
                                 {"make", Path("a.png"), "-o", Path("b.rlt"), "--bounds", "3,0,1,1"},
                                 {"make", Path("a.png"), "-o", Path("b.rlt"), "--colours", "129"}};
    for (const QStringList& call : calls) {
        const CToolRun run = RunTool(call);
        EXPECT_EQ(run.code, 2) << call.join(' ').toStdString();
        EXPECT_FALSE(run.errors.isEmpty());
    }
    EXPECT_EQ(FileBytes(chart), before);
    EXPECT_EQ(RunTool({"make", Path("a.png"), "-o", Path("b.rlt")}).code, 1) << "a picture without a place";
}

#ifdef ZT_TOOLS_WITH_GDAL
// UTM zone 31 north, 100 m a pixel, from 500 km east (3 degrees) and 5,500 km north.
TEST_F(ZtChart, GdalTellsPlaceAndProjection)
{
    ASSERT_TRUE(TestPicture(128, 128, 9).convertToFormat(QImage::Format_RGB888).save(Path("utm-source.png")));
    const std::string vrt = R"(<VRTDataset rasterXSize="128" rasterYSize="128"><SRS>EPSG:32631</SRS>
<GeoTransform>500000,100,0,5500000,0,-100</GeoTransform>)";
    std::string bands;
    for (const char* band : {"1", "2", "3"}) {
        bands += std::string("<VRTRasterBand dataType=\"Byte\" band=\"") + band +
                 "\"><SimpleSource><SourceFilename relativeToVRT=\"1\">utm-source.png</SourceFilename><SourceBand>" +
                 band + "</SourceBand></SimpleSource></VRTRasterBand>";
    }
    ASSERT_TRUE(write_to_file(root.file("utm.vrt"), vrt + bands + "</VRTDataset>"));
    const CToolRun run = RunTool({"make", Path("utm.vrt"), "-o", Path("utm.rlt")});
    ASSERT_EQ(run.code, 0) << run.errors.constData();
    EXPECT_LT(run.Json()["residual_px"].toDouble(), 0.01);
    const QJsonObject at = RunTool({"locate", Path("utm.rlt"), "--xy", "0,0"}).Json();
    // 5,500,000 / 0.9996 metres of meridian from the equator (WGS 84) end at 49.6537 degrees.
    EXPECT_NEAR(at["lat"].toDouble(), 49.6537, 2e-3);
    EXPECT_NEAR(at["lon"].toDouble(), 3.0, 1e-6);
    ASSERT_EQ(RunTool({"render", Path("utm.rlt"), "-o", Path("utm.png")}).code, 0);
    EXPECT_EQ(QImage(Path("utm.png")).convertToFormat(QImage::Format_RGB32), TestPicture(128, 128, 9));
    EXPECT_EQ(listDirectory(root.path()).size(), 4U) << "nothing is written beside the input";
}
#endif
