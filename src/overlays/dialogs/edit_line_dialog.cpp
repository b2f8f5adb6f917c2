#include "overlays/dialogs/edit_line_dialog.h"

#include "core/nautical_mile.h"
#include "navdata/units.h"
#include "overlays/dialogs/icon_dialog.h"
#include "overlays/dialogs/line_appearance_dialog.h"
#include "overlays/mark_manager.h"
#include "overlays/track_manager.h"
#include "ui/rename_dialog.h"

#include <QPointer>

namespace {

constexpr double kKnots = 3600.0 / kMetresPerNauticalMile; ///< in a metre per second

QString Figure(const char* label, const std::string& value)
{
    return QString::fromUtf8(label) + QStringLiteral(": ") + QString::fromStdString(value) + u'\n';
}

std::string ElapsedText(double seconds)
{
    std::string text;
    CUnits::FormatElapsedTime(seconds, text);
    return text;
}

bool SameLine(const CLineAppearance& a, const CLineAppearance& b)
{
    return a.colour == b.colour && a.line_width == b.line_width && a.line_style == b.line_style;
}

} // namespace

CDlg_edit_line::CDlg_edit_line(QQuickItem* parent) : CDlg_edit_syncable(parent)
{
    Connect();
}

void CDlg_edit_line::chooseLine()
{
    const QPointer<CDlg_edit_line> self(this);
    CDlg_line_appearance::Choose(hWnd(), line, [self](const CLineAppearance& chosen) {
        if (self == nullptr) return;
        self->line = chosen;
        emit self->changed();
    });
}

bool CDlg_edit_line::GiveLineTo(CLineAppearance& to) const
{
    if (SameLine(to, line)) return false;
    to = line;
    return true;
}

void CDlg_edit_route::SetRoute(COverlayRoute& edited, bool of_template)
{
    route = &edited;
    line = edited;
    if (!edited.waypoints.empty()) {
        const COverlayMark& shown = *edited.waypoints.front();
        waypoint_icon = QString::fromStdString(shown.icon_name);
        waypoint_colour = ToQColor(shown.colour);
    }
    TakeFrom(edited, of_template ? QStringLiteral("New routes") : QStringLiteral("Edit Route"), of_template);
}

QString CDlg_edit_route::figures() const
{
    if (route == nullptr || isTemplate()) return {};
    return Figure("Length", CUnits::Default->FormatDistance(route->getTotalLengthMeters())) +
           Figure("Waypoints", std::to_string(route->waypoints.size()));
}

void CDlg_edit_route::chooseWaypointIcon()
{
    const QPointer<CDlg_edit_route> self(this);
    CDlg_icon::Choose(hWnd(), waypoint_icon, waypoint_colour, [self](const QString& icon, const QColor& tint) {
        if (self == nullptr) return;
        self->waypoint_icon = icon;
        self->waypoint_colour = tint;
        self->look_chosen = true;
        emit self->changed();
    });
}

void CDlg_edit_route::nameWaypoints()
{
    const QPointer<CDlg_edit_route> self(this);
    const QString shown = waypoint_names.isEmpty() ? QStringLiteral("%R #") : waypoint_names;
    CDlg_Rename::Ask(hWnd(), QStringLiteral("Names of Waypoints"),
                     QStringLiteral("%R stands for the name of the route, # for the number of the waypoint."), shown,
                     [self](const QString& names) {
                         if (self != nullptr) self->waypoint_names = names;
                     });
}

bool CDlg_edit_route::Apply()
{
    bool differs = GiveTo(*route);
    differs |= GiveLineTo(*route);
    differs |= look_chosen || !waypoint_names.isEmpty();
    if (!waypoint_names.isEmpty()) route->NameAllWaypoints(waypoint_names.toStdString());
    if (look_chosen)
        route->SetAllWaypointsLike(COverlayMark({}, waypoint_icon.toStdString(), ToGraphicsColor(waypoint_colour)));
    if (isTemplate()) {
        CMarkManager::SettingsChanged();
        g_mark_manager.routes_modified = true;
    } else if (differs) {
        route->SetModifiedNow();
        route->Dispatch(COverlayObject::kChanged);
    }
    return true;
}

void CDlg_edit_route::OnUpdate(COverlayObject& object)
{
    const bool gone = object.action == COverlayObject::kAllGone ||
                      (object.action == COverlayObject::kDeleted && &object == static_cast<COverlayObject*>(route));
    if (!gone || isTemplate() || route == nullptr) return;
    route = nullptr;
    CloseAsGone();
}

void CDlg_edit_track::SetTrack(COverlayTrack& edited, bool of_template)
{
    track = &edited;
    line = edited;
    TakeFrom(edited, of_template ? QStringLiteral("New tracks") : QStringLiteral("Edit Track"), of_template);
}

QString CDlg_edit_track::figures() const
{
    if (track == nullptr || isTemplate()) return {};
    QString text = Figure("Length", CUnits::Default->FormatDistance(track->getTotalDistance()));
    if (track->getElapsedTime() > 0.0) {
        std::string fastest;
        CUnits::Default->FormatSpeed(track->max_speed * kKnots, fastest);
        text += Figure("Elapsed time", ElapsedText(track->getElapsedTime())) +
                Figure("Moving time", ElapsedText(track->getMovingTime())) + Figure("Fastest", fastest);
    }
    return text + Figure("Points", std::to_string(track->getTotalPoints()));
}

bool CDlg_edit_track::Apply()
{
    bool differs = GiveTo(*track);
    differs |= GiveLineTo(*track);
    if (isTemplate() || differs) g_track_manager.SetModified();
    if (!isTemplate() && differs) {
        track->SetModifiedNow();
        track->Dispatch(COverlayObject::kChanged);
    }
    return true;
}

void CDlg_edit_track::OnUpdate(COverlayObject& object)
{
    if (isTemplate() || track == nullptr) return;
    const bool changed = object.action == COverlayObject::kAllGone || object.type == COverlayObject::kTrackSection;
    if (!changed || (g_track_manager.Contains(track) && !track->deleted)) return;
    track = nullptr;
    CloseAsGone();
}
