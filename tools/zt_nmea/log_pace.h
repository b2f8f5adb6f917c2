#pragma once

#include <optional>

/// When the lines of a log are due, by the times in its RMC and GGA sentences.
class CLogPace {
public:
    /// `speed` times as fast as the log was written; above 0.
    explicit CLogPace(double speed) : factor(1.0 / speed) {}

    /// Seconds from the first line to this one. Lines between two times go with the first of them, those before any
    /// time at ten a second. A break of more than a minute, and a step back, count as one second.
    double DueOf(const char* line);

private:
    double factor;
    double due = 0.0;
    std::optional<double> last; ///< seconds of the day
};
