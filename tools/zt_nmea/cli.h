#pragma once

#include "tools/common/tool_cli.h"

// The commands. `arguments` are those behind the command's name; the result is the exit code.
int DecodeCommand(const QStringList& arguments);
int PlayCommand(const QStringList& arguments);
int FilterCommand(const QStringList& arguments);
