#pragma once

#include "core/heartbeat.h"
#include "core/message_sink.h"
#include "core/persistant_data.h"
#include "nmea/data_connection.h"
#include "nmea/instrument_sentences.h"
#include "nmea/sentence_tools.h"
#include "support/temporary_root.h"

#include <string>
#include <vector>

#include <QtTest/QTest>
#include <gtest/gtest.h>

/// A water temperature, as a sentence that tells which one it is: whole degrees.
inline std::string Water(int degrees)
{
    return WithChecksum("$IIMTW," + std::to_string(degrees) + ".0,C") + "\r\n";
}

/// Keeps the status line.
struct CStatusSink : IMessageSink {
    void Show(ZT_HWND, const std::string&, const std::string& text, std::function<void()>) override
    {
        shown.push_back(text);
    }
    void Hint(ZT_HWND, const std::string&) override {}
    void Status(const std::string& text) override { status = text; }

    std::string status;
    std::vector<std::string> shown;
};

/// Each test has folders, settings and a status line of its own, hears the water temperatures, and leaves no connection
/// behind.
class CTransportTest : public testing::Test {
protected:
    void SetUp() override
    {
        previous_sink = SetMessageSink(&sink);
        PersistantData::LoadAll("zentara");
    }
    void TearDown() override
    {
        CDataConnection::AppWasDestroyed();
        CDataConnection::gps_connection_type = CDataConnection::kLocationService;
        CDataConnection::output_filters.clear();
        SetMessageSink(previous_sink);
    }
    /// Runs the event loop, and the heartbeat when told so, until `condition` holds; false after five seconds.
    static bool WaitFor(const std::function<bool()>& condition, bool with_ticks = false)
    {
        return QTest::qWaitFor(
            [&] {
                if (with_ticks) CHeartbeat::TheHeartbeat.Pulse();
                return condition();
            },
            5000);
    }
    static void Pulse(int ticks)
    {
        for (int i = 0; i < ticks; ++i) CHeartbeat::TheHeartbeat.Pulse();
    }
    static std::string Setting(const char* key)
    {
        std::string value;
        CAttributes file;
        return PersistantData::GetValue(key, value) ? value : "(none)";
    }

    CTemporaryRoot root;
    CStatusSink sink;
    IMessageSink* previous_sink = nullptr;
    std::vector<int> heard; ///< water temperatures, degrees
    CHearing<CNMEA_Instruments::MTW> water{
        [this](CNMEA_Instruments::MTW& sentence) { heard.push_back(static_cast<int>(sentence.temperature)); }};
};
