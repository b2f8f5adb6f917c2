#include "tools/tool_runner.h"

#include <random>

#include <QJsonDocument>
#include <QProcess>
#include <gtest/gtest.h>

// Qt 6.4's parser of JSON frees with free() what it made with new: not ours to mend, and harmless with the C library.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options()
{
    return "alloc_dealloc_mismatch=0";
}

QJsonObject CToolRun::Json() const
{
    return QJsonDocument::fromJson(output).object();
}

CToolRun RunTool(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(ZT_CHART_TOOL), arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
        process.kill();
        process.waitForFinished();
        return {-1, process.readAllStandardOutput(), process.readAllStandardError()};
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

QImage TestPicture(int width, int height, int colours)
{
    std::mt19937 random(7);
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int noise = x % 200 > 150 ? static_cast<int>(random() % 7) : 0;
            const int colour = (x / 90 + y / 70 + (x + y) / 31 + noise) % colours;
            image.setPixel(x, y, qRgb(colour * 255 / colours, 255 - colour, colour * 7 % 256));
        }
    }
    return image;
}

QString MakeTestChart(const std::string& folder, const char* name, const QImage& picture, const QStringList& more)
{
    const QString base = QString::fromStdString(folder) + '/' + name;
    EXPECT_TRUE(picture.save(base + ".png"));
    const CToolRun run = RunTool(QStringList{"make", base + ".png", "-o", base + ".rlt"} + more);
    EXPECT_EQ(run.code, 0) << run.errors.constData();
    return base + ".rlt";
}
