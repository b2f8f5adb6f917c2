#pragma once

#include "tools/common/tool_cli.h"

#include <optional>
#include <string>
#include <vector>

#include <QJsonObject>
#include <QStringList>

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
