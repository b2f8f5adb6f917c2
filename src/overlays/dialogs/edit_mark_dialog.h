#pragma once

#include "core/listener.h"
#include "overlays/dialogs/edit_syncable_dialog.h"
#include "overlays/overlay_object.h"

#include <QStringList>

class COverlayMark;

/// A mark or waypoint, or the look of new ones, being edited.
class CDlg_edit_mark : public CDlg_edit_syncable, Listener<COverlayObject> {
    Q_OBJECT
    Q_PROPERTY(bool isWaypoint READ isWaypoint CONSTANT)
    Q_PROPERTY(QString position MEMBER position NOTIFY changed)
    Q_PROPERTY(QString positionFormat READ positionFormat NOTIFY changed)
    Q_PROPERTY(QString link MEMBER link NOTIFY changed)
    Q_PROPERTY(QString iconName MEMBER icon_name NOTIFY changed)
    Q_PROPERTY(QColor colour MEMBER colour NOTIFY changed)
    Q_PROPERTY(bool hasAlarm MEMBER has_alarm NOTIFY changed)
    Q_PROPERTY(QString anchor MEMBER anchor NOTIFY changed)
    Q_PROPERTY(QString proximity MEMBER proximity NOTIFY changed)
public:
    static constexpr const char* dialog_url = "qrc:/Dlg_edit_mark.qml";

    explicit CDlg_edit_mark(QQuickItem* parent = nullptr);

    /// To be called before the declarative file is completed.
    void SetMark(COverlayMark& edited, bool of_template);
    bool isWaypoint() const;
    QString positionFormat() const;
    /// Opens the chooser of icons and takes what it chose.
    Q_INVOKABLE void chooseIcon();

protected:
    bool IsAlive() const override { return mark != nullptr; }
    bool Apply() override;
    void OnUpdate(COverlayObject& object) override;

private:
    bool ReadAlarm(float& anchor_metres, float& proximity_metres);

    COverlayMark* mark = nullptr; ///< null once it has gone
    QString position;
    QString shown_position; ///< as it came: a text that was not touched moves nothing
    QString link;
    QString icon_name;
    QColor colour;
    bool has_alarm = false;
    QString anchor;    ///< metres
    QString proximity; ///< metres
};
