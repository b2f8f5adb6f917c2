#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QCommandLineParser>
#include <QJsonObject>
#include <QStringList>

/// What the commands answer with: 0 done, 1 the work failed, 2 wrongly called.
enum ExitCode { kDone = 0, kFailed = 1, kWrongUse = 2 };

/// Says on the standard error what went wrong.
int Fail(const std::string& message);
int WrongUse(const std::string& message);

/// Parses a command's arguments (without the command's name); false, and said, when they are wrong or the number of
/// positional ones is not from `least` to `most`.
bool ParseArguments(QCommandLineParser& parser, const QStringList& arguments, int least, int most);
/// Exactly `count` finite numbers parted by commas, nothing else; a sign and an exponent are allowed.
std::optional<std::vector<double>> ParseNumbers(const QString& text, std::size_t count);
/// A whole number and nothing else.
std::optional<int> ParseWhole(const QString& text);
void PrintJson(const QJsonObject& object);
/// Whether two paths lead to one existing file.
bool IsSameFile(const std::string& a, const std::string& b);

// The commands. `arguments` are those behind the command's name; the result is the exit code.
int InfoCommand(const QStringList& arguments);
int RenderCommand(const QStringList& arguments);
int LocateCommand(const QStringList& arguments);
int BestCommand(const QStringList& arguments);
int VerifyCommand(const QStringList& arguments);
int MakeCommand(const QStringList& arguments);
