#include "tools/common/tool_cli.h"

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <QCoreApplication>

namespace {

const char* tool_name = "";

int PrintUsage(std::span<const CToolCommand> commands, const char* remark)
{
    std::printf("Usage: %s COMMAND ...\n", tool_name);
    for (const CToolCommand& command : commands) std::printf("  %s\n", command.usage);
    std::printf("%s\n", remark);
    return FinishOutput();
}

} // namespace

int RunTool(int argc, char** argv, const char* tool, std::span<const CToolCommand> commands, const char* remark)
{
    tool_name = tool;
    QCoreApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone is a failed write
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) return WrongUse("no command");
    if (arguments[1] == QLatin1String("--help") || arguments[1] == QLatin1String("-h"))
        return PrintUsage(commands, remark);
    if (arguments[1] == QLatin1String("--version")) {
        std::printf("%s %s\n", tool_name, ZT_VERSION);
        return FinishOutput();
    }
    for (const CToolCommand& command : commands) {
        if (arguments[1] == QLatin1String(command.name)) return command.run(arguments.mid(2));
    }
    return WrongUse("unknown command \"" + arguments[1].toStdString() + "\"");
}

int Fail(const std::string& message)
{
    std::fprintf(stderr, "%s: %s\n", tool_name, message.c_str());
    return kFailed;
}

int WrongUse(const std::string& message)
{
    std::fprintf(stderr, "%s: %s\nSee %s --help.\n", tool_name, message.c_str(), tool_name);
    return kWrongUse;
}

bool ParseArguments(QCommandLineParser& parser, const QStringList& arguments, qsizetype least, qsizetype most)
{
    if (!parser.parse(QStringList{QString::fromLatin1(tool_name)} + arguments)) {
        WrongUse(parser.errorText().toStdString());
        return false;
    }
    const auto count = parser.positionalArguments().size();
    if (count >= least && count <= most) return true;
    WrongUse(count < least ? "an argument is missing" : "too many arguments");
    return false;
}

int FinishOutput()
{
    const bool failed_before = OutputFailed();
    if (std::fflush(stdout) == 0 && !failed_before) return kDone;
    return errno == EPIPE ? kFailed : Fail(std::string("cannot write the output: ") + std::strerror(errno));
}

bool OutputFailed()
{
    return std::ferror(stdout) != 0;
}
