#pragma once

#include "tools/zt_nmea/line_splitter.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

/// Where lines are read from: a file, "-" for the standard input, "tcp:HOST:PORT" or "udp:PORT" (all interfaces).
class CInput {
public:
    enum Fault { kNone, kWrongName, kCannotOpen };

    ~CInput();
    CInput() = default;
    CInput(const CInput&) = delete;
    CInput& operator=(const CInput&) = delete;

    /// `fault_text` says what is wrong otherwise.
    Fault Open(const std::string& name, std::string& fault_text);

    /// Calls `take(number, splitter, result)` for each line, from 1 on, with kLine or kTooLong; it answers false to
    /// end. What was read is dealt with before more is waited for: `pause` is called then. False, and errno, when
    /// reading failed.
    using take_line = std::function<bool(long long number, CLineSplitter& line, CLineSplitter::Result result)>;
    bool ForEachLine(const take_line& take, const std::function<void()>& pause);

private:
    int handle = -1;
    bool datagrams = false; ///< an empty read is an empty datagram, not the end
};
