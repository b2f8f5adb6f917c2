#pragma once

#include <span>
#include <string>

#include <QCommandLineParser>
#include <QStringList>

/// What the commands answer with: 0 done, 1 the work failed, 2 wrongly called.
enum ExitCode { kDone = 0, kFailed = 1, kWrongUse = 2 };

/// One command of a tool.
struct CToolCommand {
    const char* name;
    int (*run)(const QStringList& arguments); ///< those behind the command's name; gives the exit code
    const char* usage;
};

/// The main function of a tool: --help, --version, or the command that is named first. `remark` stands at the end of
/// the help.
int RunTool(int argc, char** argv, const char* tool, std::span<const CToolCommand> commands, const char* remark);

/// Says on the standard error what went wrong.
int Fail(const std::string& message);
int WrongUse(const std::string& message);

/// Parses a command's arguments (without the command's name); false, and said, when they are wrong or the number of
/// positional ones is not from `least` to `most`.
bool ParseArguments(QCommandLineParser& parser, const QStringList& arguments, qsizetype least, qsizetype most);

/// Writes what is still buffered. kFailed when the standard output did not take it all: said, unless its reader has
/// just gone away.
int FinishOutput();
/// Whether the standard output has failed, so that there is no use in going on.
bool OutputFailed();
