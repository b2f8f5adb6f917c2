#pragma once

#include <atomic>
#include <thread>

/// A server on 127.0.0.1 that sends a voyage to its one client, a number of lines a second, every third of them
/// garbage. It works on a thread of its own.
class CFlood {
public:
    struct CResult {
        long lines = 0;        ///< sent, garbage included
        double last_lat = 0.0; ///< degrees, of the last position sent
        double last_lon = 0.0;
    };

    CFlood(double seconds, double lines_per_second);
    CFlood(const CFlood&) = delete;
    CFlood& operator=(const CFlood&) = delete;
    ~CFlood();

    int Port() const { return port; }
    bool HasEnded() const { return ended; }
    /// Once it has ended.
    CResult Result() const { return result; }

private:
    void Serve(double seconds, double lines_per_second);
    bool Send(int client, const char* data, std::size_t size) const;

    int listener = -1;
    int port = 0;
    std::atomic<bool> ended{false};
    std::atomic<bool> stop{false};
    CResult result;
    std::thread thread;
};
