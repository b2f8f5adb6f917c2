// zt-chart: inspects, renders, checks and makes chart files. docs/zt-chart.md describes it.
#include "tools/zt_chart/cli.h"

#include <clocale>
#include <cstdio>
#include <cstring>

#include <QCoreApplication>

namespace {

struct CCommand {
    const char* name;
    int (*run)(const QStringList& arguments);
    const char* usage;
};

constexpr CCommand kCommands[] = {
    {"info", InfoCommand, "info FILE                                      header and catalogue record as JSON"},
    {"render", RenderCommand, "render FILE -o OUT.png [--level L] [--rect X,Y,W,H] [--indices]"},
    {"locate", LocateCommand, "locate FILE --xy X,Y | --latlon LAT,LON        pixel to position and back"},
    {"best", BestCommand, "best FOLDER... --at LAT,LON --scale S [--any-type] [--in|--out]"},
    {"verify", VerifyCommand, "verify FILE...                                 decodes every tile"},
    {"make", MakeCommand, "make INPUT -o OUT.rlt [--bounds S,W,N,E | --corners ... | --world-file FILE] [texts]"},
};

int PrintUsage()
{
    std::puts("Usage: zt-chart COMMAND ...");
    for (const CCommand& command : kCommands) std::printf("  %s\n", command.usage);
    std::puts("Inputs are only ever read. Exit code: 0 done, 1 failed, 2 wrongly called. See zt-chart(1).");
    return kDone;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) return WrongUse("no command");
    if (arguments[1] == QLatin1String("--help") || arguments[1] == QLatin1String("-h")) return PrintUsage();
    if (arguments[1] == QLatin1String("--version")) {
        std::puts("zt-chart " ZT_VERSION);
        return kDone;
    }
    for (const CCommand& command : kCommands) {
        if (arguments[1] == QLatin1String(command.name)) return command.run(arguments.mid(2));
    }
    return WrongUse("unknown command \"" + arguments[1].toStdString() + "\"");
}
