#pragma once

#include "core/clock.h"
#include "core/listener.h"
#include "core/message_sink.h"
#include "navdata/feeds/ais_target_manager.h"
#include "nmea/sentence_tools.h"
#include "overlays/gps_position.h"
#include "tools/voyage/ais_writer.h"
#include "ui/user_notification_manager.h"

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

/// Holds the alarms that are shown now.
class CAlarmBoard : public UserNotificationManager::UserInterface {
public:
    CAlarmBoard() { g_user_notification_manager.AddInterface(this); }
    ~CAlarmBoard() override { g_user_notification_manager.RemoveInterface(this); }
    void ShowNotification(int id, const std::string& title, const std::string& message) override
    {
        shown[id] = title + ": " + message;
    }
    void CancelNotification(int id) override { shown.erase(id); }
    void AcknowledgeAll() override {}

    std::map<int, std::string> shown;
};

/// Keeps the text of the status line.
class CStatusLine : public IMessageSink {
public:
    CStatusLine() : before(SetMessageSink(this)) {}
    ~CStatusLine() override { SetMessageSink(before); }
    void Show(ZT_HWND, const std::string& title, const std::string& text, std::function<void()>) override
    {
        shown = title + ": " + text;
    }
    void Hint(ZT_HWND, const std::string&) override {}
    void Status(const std::string& text) override { shown = text; }

    std::string shown;

private:
    IMessageSink* before;
};

/// A sea with the own ship at 50 N, 1 W and no other ship, on a clock of its own.
class CAisWorld : public testing::Test {
protected:
    static constexpr double kLat = 50.0;
    static constexpr double kLon = -1.0;
    static constexpr std::uint32_t kShip = 211234560;

    static inline double now = 0.0;

    CAisWorld()
    {
        now = 1.75e9;
        SetClock([] { return now; });
        CHeartbeat::TheHeartbeat.Pulse();
        Restore();
        grid.SetOrigin(kLat, kLon);
    }
    ~CAisWorld() override
    {
        Restore();
        SetClock(nullptr);
    }
    static void Restore()
    {
        manager().Clear();
        CAISTargetManager::cpa_alarm_distance = 300.0F;
        CAISTargetManager::cpa_classB_distance = 100.0F;
        CAISTargetManager::cpa_alarm_time = 1200.0F;
        CAISTargetManager::cpa_min_closing_velocity_knots = 1.0F;
        CAISTargetManager::alarm_beep = true;
        CAISTargetManager::show_ais_range_ring = false;
        LoseFix();
    }
    static CAISTargetManager& manager() { return CAISTargetManager::the_manager; }
    static COverlayGPSPosition& own_ship() { return COverlayGPSPosition::theLatestPosition; }

    static void Fix(float course, float knots)
    {
        own_ship().source_mark = nullptr;
        own_ship().status = CDataGPSPosition::kFix;
        own_ship().set_latlon(kLat, kLon);
        own_ship().set_course(course, knots);
        own_ship().time = now;
        own_ship().DispatchPositionUpdate();
    }
    static void LoseFix()
    {
        own_ship().status = CDataGPSPosition::kNoFix;
        own_ship().set_latlon(999.0, 999.0);
        own_ship().set_course(CDataGPSPosition::kNoCourse, 0.0F);
        own_ship().set_heading(CDataGPSPosition::kNoCourse, 0.0);
        own_ship().DispatchPositionUpdate();
    }
    /// `x` east and `y` north of the own ship, metres.
    CAisMotion At(double x, double y, double course = 0.0, double knots = 0.0) const
    {
        CAisMotion motion;
        grid.xy_to_latlon(x, y, motion.lat, motion.lon);
        motion.course = motion.heading = course;
        motion.speed = knots;
        return motion;
    }
    /// Sends the message as the receiver would, in as many sentences as it takes.
    static void Hear(const CAisBits& message, const char* sentence = "VDM")
    {
        CSentenceWriter writer;
        WriteAis(writer, message, 1, 'A');
        std::istringstream lines(writer.Text());
        for (std::string line; std::getline(lines, line);) {
            if (line.ends_with('\r')) line.pop_back();
            line = line.substr(0, line.find('*')).replace(3, 3, sentence);
            DispatchBody(line);
        }
    }
    /// The target, which has to be there.
    static CAISTarget& Target(std::uint32_t mmsi = kShip)
    {
        static CAISTarget nobody(0);
        CAISTarget* target = manager().Find(mmsi);
        EXPECT_NE(target, nullptr) << mmsi;
        return target != nullptr ? *target : nobody;
    }
    /// Lets the time pass to the next ageing, two minutes at a time.
    static void Wait(int minutes)
    {
        for (int i = 0; i < minutes * 600; ++i) {
            now += 0.1;
            CHeartbeat::TheHeartbeat.Pulse();
        }
    }

    CSimpleGrid grid; ///< origin at the own ship
    CAlarmBoard alarms;
};
