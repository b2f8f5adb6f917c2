#pragma once

#include "core/listener.h"
#include "nmea/data_connection.h"
#include "nmea/nmea_sentence.h"

#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <string>

/// "$..." with its checksum, worked out byte by byte.
inline std::string WithChecksum(const std::string& text)
{
    unsigned sum = 0;
    for (std::size_t i = 1; i < text.size(); ++i) sum ^= static_cast<unsigned char>(text[i]);
    char digits[4];
    std::snprintf(digits, sizeof digits, "*%02X", sum);
    return text + digits;
}

/// Dispatches a copy of exactly the text's size, so that the sanitizer sees every byte read or written beyond it.
inline int Dispatch(const std::string& line, CDataConnection* connection = nullptr)
{
    const auto copy = std::make_unique<char[]>(line.size() + 1);
    std::memcpy(copy.get(), line.c_str(), line.size() + 1);
    return CNMEASentence::DispatchSentence(copy.get(), connection);
}

inline int DispatchBody(const std::string& text, CDataConnection* connection = nullptr)
{
    return Dispatch(WithChecksum(text), connection);
}

/// A listener for as long as it lives: counts, and does with each what the test wants.
template <class T>
class CHearing : public Listener<T> {
public:
    explicit CHearing(std::function<void(T&)> with = {}) : action(std::move(with)) { this->Connect(); }
    void OnUpdate(T& data) override
    {
        ++count;
        if (action) action(data);
    }

    int count = 0;

private:
    std::function<void(T&)> action;
};

/// A connection without a wire. It listens for raw text only when a test says so.
class CWirelessConnection : public CDataConnection {
public:
    CWirelessConnection() { Listener<CNMEA_Raw>::Disconnect(); }
    bool Open() override { return true; }
    void Close() override {}
};
