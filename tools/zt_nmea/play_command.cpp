#include "core/numbers.h"
#include "tools/zt_nmea/cli.h"
#include "tools/zt_nmea/input.h"
#include "tools/zt_nmea/line_target.h"
#include "tools/zt_nmea/log_pace.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>

namespace {

constexpr double kSlowest = 0.001;
constexpr double kFastest = 100000.0;

/// Waits until `seconds` after `start`.
void WaitUntil(std::chrono::steady_clock::time_point start, double seconds, ILineTarget& target)
{
    for (;;) {
        const double passed = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        const double left_ms = (seconds - passed) * 1000.0;
        if (left_ms < 1.0) return;
        target.Wait(static_cast<int>(std::min(left_ms, 1000.0)));
    }
}

bool Play(CInput& input, ILineTarget& target, double speed)
{
    CLogPace pace(speed);
    target.WaitForReader();
    const auto start = std::chrono::steady_clock::now();
    const auto take = [&](long long, CLineSplitter& line, CLineSplitter::Result result) {
        if (result != CLineSplitter::kLine || *line.Text() == 0) return true;
        WaitUntil(start, pace.DueOf(line.Text()), target);
        target.Send(std::string(line.Text()) + "\r\n");
        return true;
    };
    const bool whole = input.ForEachLine(take, [] {});
    target.Finish();
    return whole;
}

std::optional<double> SpeedOf(const QString& text)
{
    const std::string number = text.toStdString();
    if (number.empty() || number.find_first_not_of("0123456789.") != std::string::npos) return std::nullopt;
    const auto speed = ParseDouble(number);
    return speed && *speed >= kSlowest && *speed <= kFastest ? speed : std::nullopt;
}

} // namespace

int PlayCommand(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption to(QStringLiteral("to"), {}, QStringLiteral("place"));
    const QCommandLineOption faster(QStringLiteral("speed"), {}, QStringLiteral("factor"), QStringLiteral("1"));
    parser.addOptions({to, faster});
    if (!ParseArguments(parser, arguments, 1, 1)) return kWrongUse;
    if (!parser.isSet(to)) return WrongUse("--to is missing");
    const auto speed = SpeedOf(parser.value(faster));
    if (!speed) return WrongUse("--speed takes a number from 0.001 to 100000");

    const std::string name = parser.positionalArguments().front().toLocal8Bit().toStdString();
    CInput input;
    std::string fault;
    if (name.starts_with("tcp:") || name.starts_with("udp:")) return WrongUse("only a file or - can be played");
    if (input.Open(name, fault) != CInput::kNone) return Fail("cannot open " + name + ": " + fault);
    const std::string place = parser.value(to).toStdString();
    const auto target = MakeLineTarget(place, fault);
    if (target == nullptr && fault.empty())
        return WrongUse("\"" + place + "\" is neither tcp:PORT, udp:HOST:PORT nor pty");
    if (target == nullptr) return Fail("cannot send to " + place + ": " + fault);
    if (!Play(input, *target, *speed)) return Fail("cannot read " + name + ": " + std::strerror(errno));
    return kDone;
}
