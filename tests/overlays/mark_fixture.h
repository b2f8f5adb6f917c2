#pragma once

#include "core/attributes.h"
#include "core/clock.h"
#include "core/heartbeat.h"
#include "core/message_sink.h"
#include "core/persistant_data.h"
#include "overlays/mark_manager.h"
#include "overlays/overlay_views.h"
#include "support/temporary_root.h"
#include "ui/done_button.h"
#include "ui/user_notification_manager.h"

#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

/// What the user was told.
struct CRecordedMessages : IMessageSink {
    void Show(ZT_HWND, const std::string&, const std::string& text, std::function<void()>) override
    {
        shown.push_back(text);
    }
    void Hint(ZT_HWND, const std::string& text) override { hints.push_back(text); }
    void Status(const std::string& text) override { status = text; }

    std::vector<std::string> shown;
    std::vector<std::string> hints;
    std::string status;
};

/// A view of which the chart's pixels are degrees, x for the longitude.
struct CRecordedViews : IOverlayViews {
    bool PositionOf(const CRastelleView&, const DblPoint& place, double& lat, double& lon) const override
    {
        lat = place.y;
        lon = place.x;
        return true;
    }
    double DisplayedScale() const override { return scale; }
    void Select(CRastelleView&, COverlayObject& object, const FPoint&, const DblPoint&) override { selected = &object; }
    void Deselect() override { selected = nullptr; }
    bool IsSelected(const COverlayObject& object) const override { return selected == &object; }
    bool IsSelected(const COverlayTrack&) const override { return false; }

    /// For what only hands it on.
    CRastelleView* View() { return reinterpret_cast<CRastelleView*>(this); }

    COverlayObject* selected = nullptr;
    double scale = 0.001; ///< nautical miles per pixel: 20 pixels are 37 metres
};

/// The alarms on show.
struct CRecordedAlarms : UserNotificationManager::UserInterface {
    void ShowNotification(int id, const std::string& title, const std::string& message) override
    {
        texts[id] = title + ": " + message;
    }
    void CancelNotification(int id) override { texts.erase(id); }
    void AcknowledgeAll() override {}

    std::map<int, std::string> texts;
};

/// The program's marks, empty, with folders, clock, view and messages of the test's own.
class CMarksTest : public testing::Test {
protected:
    static constexpr double kDay = 86400.0;
    static constexpr double kStart = 1.76e9; ///< seconds since 1970

    CMarksTest()
    {
        SetClock([] { return now; });
        SetNow(kStart);
        SetMessageSink(&messages);
        SetOverlayViews(&views);
        g_user_notification_manager.AddInterface(&alarms);
        Reset();
        manager.LoadFromFile();
    }
    ~CMarksTest() override
    {
        Reset();
        manager.Listener<COverlayObject>::Disconnect();
        manager.Listener<CDataGPSPosition>::Disconnect();
        g_user_notification_manager.RemoveInterface(&alarms);
        SetOverlayViews(nullptr);
        SetMessageSink(nullptr);
        SetClock(nullptr);
        SetNow(now);
    }

    static void SetNow(double time)
    {
        now = time;
        if (Listener<CHeartbeat>::pDatasource != nullptr) Listener<CHeartbeat>::pDatasource->ClearTimestamp();
    }
    void Reset()
    {
        manager.ClearAll();
        manager.marks_modified = manager.routes_modified = false;
        CMarkManager::enable_alarm_notifications = true;
        CMarkManager::route_create_hint = true;
        CDataGotoMark::auto_reverse = false;
        CAttributes defaults;
        PersistantData::LoadFrom(defaults);
        Plain(manager.DefaultMark(), "Flag", {1.0F, 0.0F, 0.0F});
        Plain(manager.DefaultWaypoint(), "Dot", {0.0F, 0.0F, 1.0F});
        static_cast<CLineAppearance&>(manager.DefaultRoute()) = CLineAppearance();
        manager.DefaultRoute().comment.clear();
        manager.DefaultRoute().category.clear();
    }
    static void Plain(COverlayMark& of_template, const char* icon, const GraphicsColor& colour)
    {
        of_template.locked = false;
        of_template.link.clear();
        of_template.comment.clear();
        of_template.category.clear();
        of_template.anchor_radius = of_template.alarm_radius = 0.0F;
        of_template.SetIcon(icon, colour);
    }
    COverlayMark& AddMark(const std::string& name, double lat, double lon)
    {
        manager.CreateNewMark(nullptr, lat, lon);
        COverlayMark& mark = *manager.marks.back();
        mark.name = name;
        return mark;
    }
    /// Waypoints are named "a", "b" and so on.
    COverlayRoute& AddRoute(const std::string& name, const std::vector<DblPoint>& places)
    {
        auto* const route = new COverlayRoute;
        route->name = name;
        manager.routes.push_back(route);
        for (const DblPoint& place : places) {
            route->InsertWPAfter(nullptr);
            COverlayMark& waypoint = *route->AddWaypoint(place.y, place.x, nullptr, {}, {});
            waypoint.name = std::string(1, static_cast<char>('a' + route->waypoints.size() - 1));
        }
        PressDoneButton();
        return *route;
    }
    static std::string NamesOf(const COverlayRoute& route)
    {
        std::string names;
        for (const COverlayMark* waypoint : route.waypoints) {
            names += waypoint->name;
            EXPECT_EQ(waypoint->route, &route);
            EXPECT_EQ(waypoint->type, COverlayObject::kWaypoint);
        }
        return names;
    }
    static COverlayMark* Waypoint(const COverlayRoute& route, int index)
    {
        return *std::next(route.waypoints.begin(), index);
    }
    static void Fix(double lat, double lon, float course = CDataGPSPosition::kNoCourse)
    {
        CDataGPSPosition position;
        position.set_latlon(lat, lon);
        position.status = CDataGPSPosition::kFix;
        position.course = course;
        DispatchToListeners(position);
    }

    static inline double now = kStart;
    CTemporaryRoot root;
    CRecordedMessages messages;
    CRecordedViews views;
    CRecordedAlarms alarms;
    CMarkManager& manager = g_mark_manager;
};
