#include "overlays/overlay_mark.h"

#include "overlays/mark_manager.h"
#include "overlays/mark_text.h"
#include "overlays/overlay_dialogs.h"
#include "overlays/overlay_views.h"
#include "ui/user_notification_manager.h"

#include <cmath>

namespace {

/// Degrees of latitude and longitude, about two metres, within which marks are the same.
constexpr double kSamePlace = 1.7e-5;

// The alarm zone of an anchor that lies beyond the proximity ends where the boat is very far away, metres.
constexpr float kAnchorLimitFactor = 2.0F;
constexpr float kAnchorLimitExtra = 1000.0F;

/// Numbers that are no radius count as none.
float Radius(float metres)
{
    return std::isfinite(metres) && metres > 0.0F ? metres : 0.0F;
}

} // namespace

bool COverlayMark::creating_route = false;

COverlayMark::COverlayMark() : COverlayObject(kPoints, kMark)
{
    TakeLook(creating_route ? g_mark_manager.DefaultWaypoint() : g_mark_manager.DefaultMark());
}

COverlayMark::COverlayMark(const COverlayMark& other)
    : COverlayObject(kPoints, kMark), CSyncable(), anchor_radius(other.anchor_radius), alarm_radius(other.alarm_radius)
{
    TakeLook(other);
    name = g_mark_manager.DefaultMarkName();
}

COverlayMark::COverlayMark(const std::string& name_template, const std::string& icon_file,
                           const GraphicsColor& icon_colour)
    : COverlayObject(kPoints, kMark), colour(icon_colour), icon_name(icon_file)
{
    name = name_template;
}

COverlayMark::~COverlayMark()
{
    CancelAlarm();
    g_mark_manager.Forget(*this);
}

bool COverlayMark::HasPosition() const
{
    return ValidLatLon(lat, lon);
}

bool COverlayMark::isVisible()
{
    return route != nullptr ? route->isVisible() : visible;
}

bool COverlayMark::isLocked() const
{
    return locked || (route != nullptr && route->locked);
}

bool COverlayMark::isNavigatingToMark() const
{
    return g_mark_manager.navigation.target == this;
}

void COverlayMark::SetIcon(const std::string& name_of_icon, const GraphicsColor& new_colour)
{
    icon_name = name_of_icon;
    colour = new_colour;
    icon = nullptr;
    SetModifiedNow();
}

void COverlayMark::TakeLook(const COverlayMark& from)
{
    icon_name = from.icon_name;
    colour = from.colour;
    icon = nullptr;
    link = from.link;
    locked = from.locked;
    do_not_sync = from.do_not_sync;
}

bool COverlayMark::sameData(const COverlayMark& other) const
{
    if (route == nullptr && !sameSyncableData(other)) return false;
    return std::abs(lat - other.lat) <= kSamePlace && std::abs(std::remainder(lon - other.lon, 360.0)) <= kSamePlace;
}

void COverlayMark::SetAlarm(bool on, float anchor, float proximity)
{
    anchor_radius = on ? Radius(anchor) : 0.0F;
    alarm_radius = on ? Radius(proximity) : 0.0F;
    if (anchor_radius > alarm_radius) alarm_radius = kAnchorLimitFactor * anchor_radius + kAnchorLimitExtra;
    if (alarm_radius == 0.0F) CancelAlarm();
    SetModifiedNow();
}

void COverlayMark::CancelAlarm()
{
    if (!alarm_on) return;
    alarm_on = false;
    CancelSystemNotification(static_cast<int>(Number()));
}

void COverlayMark::ClearData()
{
    CancelAlarm();
    alarm_radius = 0.0F;
    lat = lon = kNoPosition;
    if (TheOverlayViews().IsSelected(*this)) TheOverlayViews().Deselect();
    name.clear();
    comment.clear();
    link.clear();
    category.clear();
}

void COverlayMark::getLonLatBounds(CBounds& bounds) const
{
    if (HasPosition()) bounds.add(lat, lon);
}

std::string COverlayMark::getSubText(const CSimpleGrid& reader) const
{
    return HasPosition() ? DistanceAndBearingText(reader, lat, lon) : std::string();
}

void COverlayMark::EditMarkProperties(ZT_HWND parent)
{
    TheOverlayDialogs().EditMark(parent, *this);
}
