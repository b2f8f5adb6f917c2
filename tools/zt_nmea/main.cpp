// zt-nmea: decodes, plays and filters sentences. docs/zt-nmea.md describes it.
#include "tools/zt_nmea/cli.h"

#include <clocale>
#include <csignal>
#include <cstdio>

#include <QCoreApplication>

namespace {

struct CCommand {
    const char* name;
    int (*run)(const QStringList& arguments);
    const char* usage;
};

constexpr CCommand kCommands[] = {
    {"decode", DecodeCommand, "decode [--position] [FILE | - | tcp:HOST:PORT | udp:PORT]    one JSON object a line"},
    {"play", PlayCommand, "play FILE --to tcp:PORT | udp:HOST:PORT | pty [--speed X]    at the log's own pace"},
    {"filter", FilterCommand, "filter RULE...                                               standard input to output"},
};

int PrintUsage()
{
    std::puts("Usage: zt-nmea COMMAND ...");
    for (const CCommand& command : kCommands) std::printf("  %s\n", command.usage);
    std::puts("Exit code: 0 done, 1 failed, 2 wrongly called. See zt-nmea(1).");
    return FinishOutput();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone is a failed write
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) return WrongUse("no command");
    if (arguments[1] == QLatin1String("--help") || arguments[1] == QLatin1String("-h")) return PrintUsage();
    if (arguments[1] == QLatin1String("--version")) {
        std::puts("zt-nmea " ZT_VERSION);
        return FinishOutput();
    }
    for (const CCommand& command : kCommands) {
        if (arguments[1] == QLatin1String(command.name)) return command.run(arguments.mid(2));
    }
    return WrongUse("unknown command \"" + arguments[1].toStdString() + "\"");
}
