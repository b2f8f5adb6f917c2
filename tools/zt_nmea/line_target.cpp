#include "tools/zt_nmea/line_target.h"

#include "tools/zt_nmea/endpoint.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

/// A file descriptor that is closed in the end.
class CHandle {
public:
    explicit CHandle(int number) : value(number) {}
    CHandle(CHandle&& other) noexcept : value(std::exchange(other.value, -1)) {}
    CHandle& operator=(CHandle&& other) noexcept
    {
        std::swap(value, other.value);
        return *this;
    }
    ~CHandle()
    {
        if (value >= 0) close(value);
    }
    int get() const { return value; }

private:
    int value;
};

/// Serves any number of readers.
class CTcpTarget : public ILineTarget {
public:
    explicit CTcpTarget(int socket_handle) : server(socket_handle)
    {
        std::fprintf(stderr, "zt-nmea: serving at TCP port %d\n", BoundPort(socket_handle));
    }
    bool WaitForReader() override
    {
        while (readers.empty()) Wait(1000);
        return true;
    }
    void Send(const std::string& line) override
    {
        std::erase_if(readers, [&line](const CHandle& reader) {
            const ssize_t sent = send(reader.get(), line.data(), line.size(), MSG_NOSIGNAL);
            return sent != static_cast<ssize_t>(line.size());
        });
    }
    void Wait(int milliseconds) override
    {
        pollfd wait = {server.get(), POLLIN, 0};
        if (poll(&wait, 1, milliseconds) != 1) return;
        CHandle reader(accept4(server.get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (reader.get() < 0) return;
        const timeval patience = {2, 0};
        setsockopt(reader.get(), SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
        readers.push_back(std::move(reader));
    }

private:
    CHandle server;
    std::vector<CHandle> readers;
};

/// Each line is a datagram; nobody need listen.
class CUdpTarget : public ILineTarget {
public:
    explicit CUdpTarget(int socket_handle) : handle(socket_handle) {}
    void Send(const std::string& line) override { (void)send(handle.get(), line.data(), line.size(), MSG_NOSIGNAL); }
    void Wait(int milliseconds) override { poll(nullptr, 0, milliseconds); }

private:
    CHandle handle;
};

/// A serial port that is none. What nobody reads in time is lost.
class CPtyTarget : public ILineTarget {
public:
    /// The other end is kept open too: the port stays when its reader closes it.
    CPtyTarget(int master_handle, int slave_handle) : master(master_handle), slave(slave_handle) {}
    void Send(const std::string& line) override
    {
        [[maybe_unused]] const ssize_t written = write(master.get(), line.data(), line.size());
    }
    void Wait(int milliseconds) override { poll(nullptr, 0, milliseconds); }
    /// With the port everything goes that waits in it; what was written last takes a moment to be counted there.
    void Finish() override
    {
        constexpr int kSteps = 20;
        int waiting = 0;
        for (int i = 0; i < kSteps; ++i) {
            Wait(100);
            if (ioctl(slave.get(), FIONREAD, &waiting) != 0 || waiting == 0) return;
        }
    }

private:
    CHandle master;
    CHandle slave;
};

std::unique_ptr<ILineTarget> MakeTcp(int port)
{
    const int server = BindSocket(port, SOCK_STREAM);
    if (server < 0 || listen(server, 5) != 0) return nullptr;
    return std::make_unique<CTcpTarget>(server);
}

std::unique_ptr<ILineTarget> MakePty()
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) return nullptr;
    const char* const name = ptsname(master);
    const int slave = name != nullptr ? open(name, O_RDWR | O_NOCTTY | O_CLOEXEC) : -1;
    if (slave < 0) return nullptr;
    termios raw = {};
    tcgetattr(slave, &raw);
    cfmakeraw(&raw);
    tcsetattr(slave, TCSANOW, &raw);
    std::fprintf(stderr, "zt-nmea: playing to %s\n", name);
    return std::make_unique<CPtyTarget>(master, slave);
}

} // namespace

std::unique_ptr<ILineTarget> MakeLineTarget(const std::string& name, std::string& fault_text)
{
    std::unique_ptr<ILineTarget> target;
    std::string host;
    int port = 0;
    errno = 0;
    if (name == "pty") {
        target = MakePty();
    } else if (name.starts_with("tcp:") && ParsePort(name.substr(4), port)) {
        target = MakeTcp(port);
    } else if (name.starts_with("udp:") && SplitHostPort(name.substr(4), host, port) && port != 0) {
        const int handle = ConnectSocket(host, port, SOCK_DGRAM, fault_text);
        if (handle >= 0) target = std::make_unique<CUdpTarget>(handle);
    } else {
        return nullptr;
    }
    if (target == nullptr && fault_text.empty()) fault_text = std::strerror(errno);
    return target;
}
