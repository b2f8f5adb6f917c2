#include "core/clock.h"

#include <chrono>

namespace {
clock_function replaced_clock = nullptr;
}

double GetTimeNow()
{
    if (replaced_clock != nullptr) return replaced_clock();
    using namespace std::chrono;
    return static_cast<double>(duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count()) / 1000.0;
}

void SetClock(clock_function clock)
{
    replaced_clock = clock;
}
