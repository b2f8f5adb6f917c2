// Renders the built-in charts during the build.
// zt-basemap --data FOLDER --fonts FOLDER --out FOLDER [--only NAME]... [--jobs N]
// zt-basemap --data FOLDER --plan
#include "core/files.h"
#include "tools/basemap/chart_palette.h"
#include "tools/basemap/chart_sheet.h"
#include "tools/basemap/places.h"
#include "tools/basemap/sheet_renderer.h"
#include "tools/basemap/world_data.h"

#include <algorithm>
#include <atomic>
#include <clocale>
#include <cstdio>
#include <mutex>
#include <thread>

#include <QCommandLineParser>
#include <QFontDatabase>
#include <QGuiApplication>

namespace {

constexpr double kFineFromScale = 3000000.0; // the coarse shores serve smaller scales

struct CSources {
    CWorldData coarse;
    CWorldData fine;
    std::vector<CPlace> places;
    CChartPalette palette;
};

bool Fail(const std::string& message)
{
    std::fprintf(stderr, "zt-basemap: %s\n", message.c_str());
    return false;
}

bool LoadSources(const std::string& folder, CSources& sources)
{
    std::string error;
    if (!ReadWorldData(folder + "/world-coarse.txt.gz", sources.coarse, error)) return Fail(error);
    if (!ReadWorldData(folder + "/world-fine.txt.gz", sources.fine, error)) return Fail(error);
    if (!ReadPlaces(folder + "/places.tsv", sources.places)) return Fail("cannot read places.tsv");
    return true;
}

bool LoadFonts(const QString& folder)
{
    for (const char* file : {"RobotoTTF/Roboto-Regular", "RobotoTTF/Roboto-Medium", "RobotoTTF/Roboto-Italic",
                             "RobotoCondensed-Regular", "RobotoCondensed-Italic"}) {
        const QString path = folder + QLatin1Char('/') + QLatin1String(file) + QStringLiteral(".ttf");
        if (QFontDatabase::addApplicationFont(path) < 0) return Fail("cannot load " + path.toStdString());
    }
    return true;
}

int PrintPlan(const std::vector<CSheetPlan>& plans)
{
    bool good = true;
    for (const CSheetPlan& plan : plans) {
        const CChartSheet sheet(plan);
        const auto fit = sheet.Fit();
        std::printf("%-28s 1:%-9.0f %5d x %5d px  zoom %5.2f  residual %.3f px, inverse %.3f px\n", plan.name.c_str(),
                    plan.scale, sheet.Width(), sheet.Height(), sheet.Zoom(), fit ? fit->forward_px : -1.0,
                    fit ? fit->inverse_px : -1.0);
        good = good && fit && fit->forward_px < 1.0 && fit->inverse_px < 1.0;
    }
    return good ? 0 : 1;
}

/// Renders in as many threads as wanted, the largest charts first so that none is left alone with one at the end.
bool RenderAll(std::vector<CSheetPlan> plans, const CSources& sources, const std::string& folder, unsigned jobs)
{
    std::vector<CChartSheet> sheets(plans.begin(), plans.end());
    std::sort(sheets.begin(), sheets.end(), [](const CChartSheet& a, const CChartSheet& b) {
        return std::int64_t{a.Width()} * a.Height() > std::int64_t{b.Width()} * b.Height();
    });
    std::atomic<std::size_t> next{0};
    std::atomic<bool> good{true};
    std::mutex output;
    const auto work = [&] {
        for (std::size_t i = next++; i < sheets.size() && good; i = next++) {
            const CWorldData& data = sheets[i].plan.scale > kFineFromScale ? sources.coarse : sources.fine;
            std::string error;
            if (WriteSheet(sheets[i], data, sources.places, sources.palette, folder, error)) continue;
            const std::lock_guard lock(output);
            good = Fail(error);
        }
    };
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < jobs; ++i) threads.emplace_back(work);
    for (std::thread& thread : threads) thread.join();
    return good;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    QCommandLineParser parser;
    const QCommandLineOption data("data", "Folder of the sources.", "folder");
    const QCommandLineOption fonts("fonts", "Folder of the Roboto fonts.", "folder");
    const QCommandLineOption out("out", "Folder for the charts.", "folder");
    const QCommandLineOption only("only", "Render only this chart.", "name");
    const QCommandLineOption jobs("jobs", "Threads.", "n");
    const QCommandLineOption plan("plan", "Print sizes and residuals and render nothing.");
    parser.addOptions({data, fonts, out, only, jobs, plan});
    parser.addHelpOption();
    parser.process(application);

    std::vector<CSheetPlan> plans;
    std::string error;
    const std::string data_folder = parser.value(data).toStdString();
    if (!ReadSheetPlans(data_folder + "/charts.tsv", plans, error)) return Fail(error) ? 0 : 1;
    if (parser.isSet(plan)) return PrintPlan(plans);
    if (parser.isSet(only)) {
        std::erase_if(plans, [&](const CSheetPlan& row) {
            return !parser.values(only).contains(QString::fromStdString(row.name));
        });
    }
    const std::string folder = parser.value(out).toStdString();
    if (folder.empty() || !createPath(folder)) return Fail("no folder for the charts") ? 0 : 1;
    const auto sources = std::make_unique<CSources>();
    if (!LoadFonts(parser.value(fonts)) || !LoadSources(data_folder, *sources)) return 1;
    const unsigned threads =
        parser.isSet(jobs) ? parser.value(jobs).toUInt() : std::max(1U, std::thread::hardware_concurrency());
    return RenderAll(std::move(plans), *sources, folder, std::max(1U, threads)) ? 0 : 1;
}
