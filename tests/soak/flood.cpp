#include "tests/soak/flood.h"

#include "tools/voyage/voyage.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <vector>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr double kBurst = 0.02; ///< seconds

std::vector<std::string> LinesOf(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        lines.push_back(text.substr(at, end - at + 1));
        at = end + 1;
    }
    return lines;
}

/// A line that must not be taken: noise, a broken checksum, one that is too long, one cut short.
std::string Garbage(std::mt19937& random, const std::string& line)
{
    std::string bad = line;
    switch (random() % 4) {
    case 0:
        for (char& c : bad) c = static_cast<char>(random());
        break;
    case 1:
        bad[bad.size() / 2] = static_cast<char>(bad[bad.size() / 2] ^ 1);
        break;
    case 2:
        bad.insert(1, 400, 'x');
        break;
    default:
        bad.resize(bad.size() / 2);
    }
    // Noise must neither complete a line of its own nor join the next good one.
    std::erase(bad, '\n');
    return bad + "\n";
}

} // namespace

CFlood::CFlood(double seconds, double lines_per_second)
{
    listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), size) == 0 && listen(listener, 1) == 0 &&
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) == 0) {
        port = ntohs(address.sin_port);
    }
    thread = std::thread([this, seconds, lines_per_second] { Serve(seconds, lines_per_second); });
}

CFlood::~CFlood()
{
    stop = true;
    shutdown(listener, SHUT_RDWR);
    thread.join();
    close(listener);
}

bool CFlood::Send(int client, const char* data, std::size_t size) const
{
    while (size > 0 && !stop) {
        const ssize_t sent = send(client, data, size, MSG_NOSIGNAL);
        if (sent <= 0) return false;
        data += sent;
        size -= static_cast<std::size_t>(sent);
    }
    return !stop;
}

void CFlood::Serve(double seconds, double lines_per_second)
{
    const std::vector<std::string> voyage = LinesOf(WriteVoyage(SolentVoyage()));
    const int client = accept(listener, nullptr, nullptr);
    if (client < 0) {
        ended = true;
        return;
    }
    std::mt19937 random(7);
    const auto begin = std::chrono::steady_clock::now();
    std::size_t next = 0;
    std::string burst;
    const long bursts = static_cast<long>(seconds / kBurst);
    for (long i = 0; i < bursts; ++i) {
        burst.clear();
        while (static_cast<double>(result.lines) < lines_per_second * kBurst * static_cast<double>(i + 1)) {
            const std::string& line = voyage[next++ % voyage.size()];
            burst += line;
            ++result.lines;
            if (result.lines % 3 == 0) {
                burst += Garbage(random, line);
                ++result.lines;
            }
        }
        if (!Send(client, burst.data(), burst.size())) break;
        std::this_thread::sleep_until(begin + std::chrono::duration<double>(kBurst * static_cast<double>(i + 1)));
    }
    // A last position, alone, after a pause in which what was sent is worked off.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    CSentenceWriter last;
    result.last_lat = 50.7125;
    result.last_lon = -1.25;
    last.Add("$GPRMC,235959.00,A," + LatitudeFields(result.last_lat) + "," + LongitudeFields(result.last_lon) +
             ",5.0,90.0,311226,,,A");
    Send(client, last.Text().data(), last.Text().size());
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    ended = true;
    while (!stop) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    close(client);
}
