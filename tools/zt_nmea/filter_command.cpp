#include "nmea/nmea_filter.h"
#include "tools/zt_nmea/cli.h"
#include "tools/zt_nmea/input.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

/// Passes a line on as it is when its sentence is allowed. A line without a sentence is not.
void PassLine(const CNMEA_filter& filter, CLineSplitter& line)
{
    const char* text = line.Text() + std::strcspn(line.Text(), "$!");
    bool allowed = *text != 0;
    if (allowed) filter.apply(text, allowed);
    if (allowed) std::printf("%s%s\n", line.Text(), line.EndedWithReturn() ? "\r" : "");
}

} // namespace

int FilterCommand(const QStringList& arguments)
{
    QCommandLineParser parser;
    if (!ParseArguments(parser, arguments, 1, 1000)) return kWrongUse;
    CNMEA_filter filter;
    for (const QString& rule : parser.positionalArguments()) filter.add(rule.toLatin1().constData());
    CInput input;
    std::string fault;
    input.Open("-", fault);
    const auto take = [&filter](long long, CLineSplitter& line, CLineSplitter::Result result) {
        if (result == CLineSplitter::kLine) PassLine(filter, line);
        return !OutputFailed();
    };
    if (!input.ForEachLine(take, [] { std::fflush(stdout); }))
        return Fail(std::string("cannot read the input: ") + std::strerror(errno));
    return FinishOutput();
}
