#include "ratio.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <QGuiApplication>
#include <QStandardPaths>
#include <sys/resource.h>
#include <time.h>

namespace {

/// Seconds on the wall; with ZT_BENCH_CPU_TIME set, of this thread on a processor, which a busy machine disturbs less
/// but which leaves out waiting for a disk.
double Now()
{
    static const clockid_t clock =
        qEnvironmentVariableIsSet("ZT_BENCH_CPU_TIME") ? CLOCK_THREAD_CPUTIME_ID : CLOCK_MONOTONIC;
    timespec now;
    clock_gettime(clock, &now);
    double seconds = static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
    if (clock == CLOCK_MONOTONIC) return seconds;
    // Programs that were run and have ended count too.
    rusage children;
    getrusage(RUSAGE_CHILDREN, &children);
    for (const timeval& time : {children.ru_utime, children.ru_stime})
        seconds += static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    return seconds;
}

constexpr double kSecondsPerTurn = 0.004; ///< least time of a case in one round

struct Row {
    std::string name;
    std::string baseline_name;
    std::array<std::function<void()>, 2> cases; ///< ours, baseline
    int rounds;
};

std::vector<Row>& Rows()
{
    static std::vector<Row> rows;
    return rows;
}

double SecondsOf(const std::function<void()>& work, int times)
{
    const double start = Now();
    for (int i = 0; i < times; ++i) work();
    return Now() - start;
}

int TimesPerTurn(const std::function<void()>& work)
{
    work();
    int times = 1;
    while (SecondsOf(work, times) < kSecondsPerTurn) times *= 2;
    return times;
}

double Median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Turn and turn about, so that what else the machine does meets both alike; the best of each is the least disturbed.
void Measure(const Row& row)
{
    std::array<int, 2> times;
    for (std::size_t i = 0; i < 2; ++i) times[i] = TimesPerTurn(row.cases[i]);
    std::array<std::vector<double>, 2> seconds;
    std::vector<double> ratios;
    for (int round = 0; round < row.rounds; ++round) {
        for (std::size_t i = 0; i < 2; ++i) seconds[i].push_back(SecondsOf(row.cases[i], times[i]) / times[i]);
        ratios.push_back(seconds[0].back() / seconds[1].back());
    }
    const auto best = [&seconds](std::size_t i) { return *std::min_element(seconds[i].begin(), seconds[i].end()); };
    std::printf("{\"name\": \"%s\", \"ratio\": %.4f, \"baseline\": \"%s\", \"median_ratio\": %.4f, "
                "\"baseline_median_over_best\": %.2f}\n",
                row.name.c_str(), best(0) / best(1), row.baseline_name.c_str(), Median(ratios),
                Median(seconds[1]) / best(1));
    std::fflush(stdout);
}

} // namespace

void RegisterRatio(std::string row, std::function<void()> ours, std::string baseline_name,
                   std::function<void()> baseline, int rounds)
{
    Rows().push_back({std::move(row), std::move(baseline_name), {std::move(ours), std::move(baseline)}, rounds});
}

void RunPeer(const std::string& command)
{
    if (std::system((command + " >/dev/null 2>&1").c_str()) != 0) std::abort();
}

bool HasPeer(const char* program)
{
    return !QStandardPaths::findExecutable(QString::fromUtf8(program)).isEmpty();
}

namespace {

/// Runs our case of one row, not timed: what callgrind counts. 0, or 1 when there is no such row.
int RunOnly(const char* name, int times)
{
    for (const Row& row : Rows()) {
        if (row.name != name) continue;
        for (int i = 0; i < times; ++i) row.cases[0]();
        return 0;
    }
    return 1;
}

} // namespace

/// zt_bench [part of a row's name ...]: measures the rows that contain one of the parts, or all.
/// zt_bench --run ROW TIMES: see RunOnly.
int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    if (argc == 4 && std::strcmp(argv[1], "--run") == 0) return RunOnly(argv[2], std::atoi(argv[3]));
    for (const Row& row : Rows()) {
        const auto wanted = [&row](const char* part) { return std::strstr(row.name.c_str(), part) != nullptr; };
        if (argc < 2 || std::any_of(argv + 1, argv + argc, wanted)) Measure(row);
    }
}
