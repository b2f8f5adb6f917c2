#include "tools/zt_chart/cli.h"

#include "chart/chart_list.h"
#include "core/files.h"
#include "core/folders.h"

#include <cstdio>

#include <QTemporaryDir>

namespace {

/// The catalogue looks for charts in the program's folders too: an empty root keeps the user's charts and settings out.
class CEmptyFolders {
public:
    CEmptyFolders() { SetFolderRoot(folder.path().toStdString()); }
    ~CEmptyFolders() { SetFolderRoot({}); }
    CEmptyFolders(const CEmptyFolders&) = delete;
    CEmptyFolders& operator=(const CEmptyFolders&) = delete;
    bool Good() const { return folder.isValid(); }

private:
    QTemporaryDir folder;
};

} // namespace

int BestCommand(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption at_option("at", "", "LAT,LON");
    const QCommandLineOption scale_option("scale", "", "S");
    const QCommandLineOption any_option("any-type");
    const QCommandLineOption in_option("in");
    const QCommandLineOption out_option("out");
    parser.addOptions({at_option, scale_option, any_option, in_option, out_option});
    if (!ParseArguments(parser, arguments, 1, 10000)) return kWrongUse;
    const auto at = ParseNumbers(parser.value(at_option), 2);
    const auto scale = ParseNumbers(parser.value(scale_option), 1);
    if (!at) return WrongUse("--at LAT,LON is missing");
    if (!scale || scale->front() < 0.0) return WrongUse("--scale S is missing (nautical miles per pixel)");
    if (parser.isSet(in_option) && parser.isSet(out_option)) return WrongUse("--in and --out exclude each other");

    const CEmptyFolders nothing_else;
    if (!nothing_else.Good()) return Fail("cannot make a temporary folder");
    CChartList charts;
    charts.Refresh();
    for (const QString& folder : parser.positionalArguments()) {
        if (!isDirectory(folder.toStdString())) return Fail("not a folder: " + folder.toStdString());
        charts.AddSearchFolder(folder.toStdString());
    }
    const double lat = at->front();
    const double lon = at->back();
    const CChartOutline* chosen = parser.isSet(in_option) ? charts.ScaleIn(lat, lon, scale->front())
                                  : parser.isSet(out_option)
                                      ? charts.ScaleOut(lat, lon, scale->front())
                                      : charts.FindBestChart(lat, lon, scale->front(), parser.isSet(any_option));
    if (chosen != nullptr) std::puts(chosen->path.c_str());
    return kDone;
}
