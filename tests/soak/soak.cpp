// A flood of sentences through a real TCP connection, mixed with garbage, far faster than any boat sends them. At the
// end the memory has to stand where it stood, the heartbeat has to have been on time, and the position has to be the
// last one that was sent. Usage: zt_soak SECONDS [LINES_PER_SECOND]

#include "tests/soak/flood.h"

#include "core/heartbeat.h"
#include "core/heartbeat_timer.h"
#include "core/numbers.h"
#include "nmea/transports/tcp_connection.h"
#include "overlays/gps_position.h"

#include <chrono>
#include <cstdio>
#include <fstream>

#include <QGuiApplication>
#include <QTimer>
#include <unistd.h>

namespace {

constexpr double kLate = 0.150;        ///< seconds between two ticks
constexpr double kMostLate = 0.01;     ///< share of the ticks
constexpr long kMostGrowth_KiB = 2048; ///< from a fifth of the run to its end
constexpr double kSamePlace = 1e-6;    ///< degrees

double Now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

long ResidentKiB()
{
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

/// Counts the ticks that came late.
class CTickWatch : public CHeartbeat::Counter {
public:
    CTickWatch() : Counter(0) {}
    void OnHeartbeat() override
    {
        const double now = Now();
        if (last > 0.0) {
            ++ticks;
            if (now - last > kLate) ++late;
            worst = std::max(worst, now - last);
        }
        last = now;
    }

    long ticks = 0;
    long late = 0;
    double worst = 0.0; ///< seconds

private:
    double last = 0.0;
};

bool Check(bool good, const char* what)
{
    if (!good) std::printf("FAILED: %s\n", what);
    return good;
}

} // namespace

int main(int argc, char** argv)
{
    const double seconds = argc > 1 ? ParseDouble(argv[1]).value_or(0.0) : 120.0;
    const double rate = argc > 2 ? ParseDouble(argv[2]).value_or(0.0) : 5000.0;
    if (!(seconds >= 1.0) || !(rate >= 1.0)) {
        std::fprintf(stderr, "usage: zt_soak SECONDS [LINES_PER_SECOND]\n");
        return 2;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);

    CFlood flood(seconds, rate);
    CTCPIPConnection connection;
    CTickWatch watch;
    const RunHeartbeatUntilShutdown heartbeat;
    connection.Setup("127.0.0.1", flood.Port(), false);
    connection.Open();

    long settled = 0;
    QTimer::singleShot(static_cast<int>(seconds * 200.0), &application, [&settled] { settled = ResidentKiB(); });
    QTimer done;
    QObject::connect(&done, &QTimer::timeout, &application, [&flood] {
        if (flood.HasEnded()) QTimer::singleShot(500, qApp, &QCoreApplication::quit); // what is on its way arrives
    });
    done.start(200);
    QGuiApplication::exec();

    const long grown = ResidentKiB() - settled;
    const COverlayGPSPosition& boat = COverlayGPSPosition::theLatestPosition;
    const CFlood::CResult sent = flood.Result();
    std::printf("{\"seconds\": %.0f, \"lines\": %ld, \"lines_per_second\": %.0f, \"ticks\": %ld, \"late\": %ld, "
                "\"worst_tick\": %.3f, \"resident_kib\": %ld, \"grown_kib\": %ld, \"lat\": %.6f, \"lon\": %.6f}\n",
                seconds, sent.lines, static_cast<double>(sent.lines) / seconds, watch.ticks, watch.late, watch.worst,
                settled + grown, grown, boat.latitude, boat.longitude);
    bool good = Check(sent.lines > 0 && static_cast<double>(sent.lines) >= 0.9 * seconds * rate, "the flood was slow");
    good &= Check(static_cast<double>(watch.late) <= kMostLate * static_cast<double>(watch.ticks), "ticks came late");
    good &= Check(grown <= kMostGrowth_KiB, "memory grew");
    good &= Check(std::abs(boat.latitude - sent.last_lat) < kSamePlace &&
                      std::abs(boat.longitude - sent.last_lon) < kSamePlace,
                  "the position is not the last one");
    good &= Check(boat.status != 0, "there is no fix");
    connection.Close();
    return good ? 0 : 1;
}
