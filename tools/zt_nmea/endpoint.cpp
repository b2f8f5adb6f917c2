#include "tools/zt_nmea/endpoint.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

bool ParsePort(const std::string& text, int& port)
{
    const char* end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, port);
    return status == std::errc{} && stop == end && port >= 0 && port <= 65535;
}

bool SplitHostPort(const std::string& text, std::string& host, int& port)
{
    const std::size_t colon = text.rfind(':');
    if (colon == std::string::npos || colon == 0) return false;
    host = text.substr(0, colon);
    if (host.size() > 2 && host.front() == '[' && host.back() == ']') host = host.substr(1, host.size() - 2);
    return ParsePort(text.substr(colon + 1), port);
}

int ConnectSocket(const std::string& host, int port, int type, std::string& fault_text)
{
    addrinfo hints = {};
    hints.ai_socktype = type;
    addrinfo* addresses = nullptr;
    const int fault = getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &addresses);
    if (fault != 0) {
        fault_text = gai_strerror(fault);
        return -1;
    }
    int found = -1;
    for (const addrinfo* at = addresses; at != nullptr && found < 0; at = at->ai_next) {
        found = socket(at->ai_family, at->ai_socktype | SOCK_CLOEXEC, at->ai_protocol);
        if (found >= 0 && connect(found, at->ai_addr, at->ai_addrlen) == 0) break;
        fault_text = std::strerror(errno);
        if (found >= 0) close(found);
        found = -1;
    }
    freeaddrinfo(addresses);
    return found;
}

int BindSocket(int port, int type)
{
    const int handle = socket(AF_INET, type | SOCK_CLOEXEC, 0);
    if (handle < 0) return -1;
    const int on = 1;
    setsockopt(handle, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    if (bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return handle;
    const int fault = errno;
    close(handle);
    errno = fault;
    return -1;
}

int BoundPort(int socket_handle)
{
    sockaddr_in address = {};
    socklen_t size = sizeof address;
    getsockname(socket_handle, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}
