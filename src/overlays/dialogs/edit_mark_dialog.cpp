#include "overlays/dialogs/edit_mark_dialog.h"

#include "core/numbers.h"
#include "core/text.h"
#include "navdata/position_format.h"
#include "navdata/units.h"
#include "overlays/dialogs/icon_dialog.h"
#include "overlays/mark_manager.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"

#include <QPointer>

namespace {

constexpr double kFarthestAlarm = 1e7; ///< metres

QString MetresText(float metres)
{
    return metres > 0.0F ? QString::fromStdString(stringprintf("%.6g", static_cast<double>(metres))) : QString();
}

/// Metres of a text; an empty one is 0.
bool ReadMetres(const QString& text, float& metres)
{
    metres = 0.0F;
    if (text.trimmed().isEmpty()) return true;
    const auto number = ParseDouble(QString(text).replace(u',', u'.').toStdString());
    if (!number || *number < 0.0 || *number > kFarthestAlarm) return false;
    metres = static_cast<float>(*number);
    return true;
}

} // namespace

CDlg_edit_mark::CDlg_edit_mark(QQuickItem* parent) : CDlg_edit_syncable(parent)
{
    Connect();
}

void CDlg_edit_mark::SetMark(COverlayMark& edited, bool of_template)
{
    mark = &edited;
    const bool waypoint = edited.type == COverlayObject::kWaypoint;
    TakeFrom(edited,
             of_template ? QStringLiteral("New marks")
             : waypoint  ? QStringLiteral("Edit Waypoint")
                         : QStringLiteral("Edit Mark"),
             of_template);
    std::string text;
    if (edited.HasPosition()) CUnits::Default->position_format->format(edited.lat, edited.lon, text);
    position = shown_position = QString::fromStdString(text);
    link = QString::fromStdString(edited.link);
    icon_name = QString::fromStdString(edited.icon_name);
    colour = ToQColor(edited.colour);
    has_alarm = edited.alarm_radius > 0.0F;
    anchor = MetresText(edited.anchor_radius);
    proximity = MetresText(edited.alarm_radius);
}

bool CDlg_edit_mark::isWaypoint() const
{
    return mark != nullptr && mark->type == COverlayObject::kWaypoint;
}

QString CDlg_edit_mark::positionFormat() const
{
    return QString::fromUtf8(CUnits::Default->position_format->name);
}

void CDlg_edit_mark::chooseIcon()
{
    const QPointer<CDlg_edit_mark> self(this);
    CDlg_icon::Choose(hWnd(), icon_name, colour, [self](const QString& chosen, const QColor& tint) {
        if (self == nullptr) return;
        self->icon_name = chosen;
        self->colour = tint;
        emit self->changed();
    });
}

bool CDlg_edit_mark::ReadAlarm(float& anchor_metres, float& proximity_metres)
{
    if (ReadMetres(anchor, anchor_metres) && ReadMetres(proximity, proximity_metres) &&
        (anchor_metres > 0.0F || proximity_metres > 0.0F)) {
        return true;
    }
    Refuse(QStringLiteral("The alarm needs a distance in metres."));
    return false;
}

bool CDlg_edit_mark::Apply()
{
    double lat = mark->lat;
    double lon = mark->lon;
    if (position != shown_position &&
        !CUnits::Default->position_format->scan(position.toUtf8().constData(), lat, lon)) {
        Refuse(QStringLiteral("The position cannot be read as %1.").arg(positionFormat()));
        return false;
    }
    float anchor_metres = 0.0F;
    float proximity_metres = 0.0F;
    if (has_alarm && !ReadAlarm(anchor_metres, proximity_metres)) return false;

    bool differs = GiveTo(*mark);
    const std::string new_link = link.trimmed().toStdString();
    const std::string new_icon = icon_name.toStdString();
    const GraphicsColor tint = ToGraphicsColor(colour);
    differs |= mark->lat != lat || mark->lon != lon || mark->link != new_link;
    mark->lat = lat;
    mark->lon = lon;
    mark->link = new_link;
    if (mark->icon_name != new_icon || ToQColor(mark->colour) != colour) {
        mark->SetIcon(new_icon, tint);
        differs = true;
    }
    const float anchor_before = mark->anchor_radius;
    const float alarm_before = mark->alarm_radius;
    mark->SetAlarm(has_alarm, anchor_metres, proximity_metres);
    differs |= mark->anchor_radius != anchor_before || mark->alarm_radius != alarm_before;
    if (isTemplate()) {
        CMarkManager::SettingsChanged();
        g_mark_manager.marks_modified = true;
        return true;
    }
    if (!differs) return true;
    mark->SetModifiedNow();
    if (mark->route != nullptr) {
        mark->route->SetModifiedNow();
        mark->route->Dispatch(COverlayObject::kChanged);
    } else {
        mark->Dispatch(COverlayObject::kChanged);
    }
    return true;
}

void CDlg_edit_mark::OnUpdate(COverlayObject& object)
{
    const bool gone = object.action == COverlayObject::kAllGone ||
                      (object.action == COverlayObject::kDeleted && &object == static_cast<COverlayObject*>(mark));
    if (!gone || isTemplate() || mark == nullptr) return;
    mark = nullptr;
    closeDialog(1);
}
