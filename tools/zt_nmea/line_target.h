#pragma once

#include <memory>
#include <string>

/// Where `play` sends lines to.
class ILineTarget {
public:
    virtual ~ILineTarget() = default;
    /// Waits until there is somebody to send to; true at once where nobody can tell.
    virtual bool WaitForReader() { return true; }
    /// Sends one line with its CR LF to whoever listens. One that does not keep up loses lines or is let go.
    virtual void Send(const std::string& line) = 0;
    /// Gives readers the time to take what was sent: to be called before the end.
    virtual void Finish() {}
    /// Lets time pass: no longer than `milliseconds`.
    virtual void Wait(int milliseconds) = 0;
};

/// Of "tcp:PORT" (0: a free port), "udp:HOST:PORT" or "pty"; says on the standard error where it is. Null when it
/// cannot be had, with the reason in `fault_text`; without a reason the name is none of these.
std::unique_ptr<ILineTarget> MakeLineTarget(const std::string& name, std::string& fault_text);
