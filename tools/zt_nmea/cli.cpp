#include "tools/zt_nmea/cli.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

int Fail(const std::string& message)
{
    std::fprintf(stderr, "zt-nmea: %s\n", message.c_str());
    return kFailed;
}

int WrongUse(const std::string& message)
{
    std::fprintf(stderr, "zt-nmea: %s\nSee zt-nmea --help.\n", message.c_str());
    return kWrongUse;
}

bool ParseArguments(QCommandLineParser& parser, const QStringList& arguments, qsizetype least, qsizetype most)
{
    if (!parser.parse(QStringList{QStringLiteral("zt-nmea")} + arguments)) {
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
