#include "tools/zt_nmea/input.h"

#include "tools/zt_nmea/endpoint.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

/// What stands behind the prefix; nothing when the name does not begin with it.
bool TakePrefix(const std::string& name, const char* prefix, std::string& rest)
{
    if (!name.starts_with(prefix)) return false;
    rest = name.substr(std::strlen(prefix));
    return true;
}

} // namespace

CInput::~CInput()
{
    if (handle > STDIN_FILENO) close(handle);
}

CInput::Fault CInput::Open(const std::string& name, std::string& fault_text)
{
    std::string place;
    std::string host;
    int port = 0;
    errno = 0;
    if (name == "-") {
        handle = STDIN_FILENO;
    } else if (TakePrefix(name, "tcp:", place)) {
        if (!SplitHostPort(place, host, port) || port == 0) return kWrongName;
        handle = ConnectSocket(host, port, SOCK_STREAM, fault_text);
    } else if (TakePrefix(name, "udp:", place)) {
        if (!ParsePort(place, port) || port == 0) return kWrongName;
        datagrams = true;
        handle = BindSocket(port, SOCK_DGRAM);
    } else {
        handle = open(name.c_str(), O_RDONLY | O_CLOEXEC);
    }
    if (handle >= 0) return kNone;
    if (fault_text.empty()) fault_text = std::strerror(errno);
    return kCannotOpen;
}

bool CInput::ForEachLine(const take_line& take, const std::function<void()>& pause)
{
    CLineSplitter splitter;
    char bytes[65536];
    long long number = 0;
    for (;;) {
        pause();
        const ssize_t count = read(handle, bytes, sizeof bytes);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        if (count == 0 && !datagrams) break;
        for (ssize_t i = 0; i < count; ++i) {
            const CLineSplitter::Result result = splitter.Add(bytes[i]);
            if (result != CLineSplitter::kLineOpen && !take(++number, splitter, result)) return true;
        }
    }
    if (splitter.Finish() == CLineSplitter::kLine) take(++number, splitter, CLineSplitter::kLine);
    return true;
}
