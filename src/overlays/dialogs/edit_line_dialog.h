#pragma once

#include "core/listener.h"
#include "overlays/dialogs/edit_syncable_dialog.h"
#include "overlays/line_appearance.h"
#include "overlays/overlay_object.h"

class COverlayRoute;
class COverlayTrack;

/// What routes and tracks have in common, being edited: the line, and the figures that are shown of it.
class CDlg_edit_line : public CDlg_edit_syncable, protected Listener<COverlayObject> {
    Q_OBJECT
    Q_PROPERTY(QColor colour READ colour NOTIFY changed)
    Q_PROPERTY(double lineWidth READ lineWidth NOTIFY changed)
    Q_PROPERTY(int lineStyle READ lineStyle NOTIFY changed)
    Q_PROPERTY(QString figures READ figures CONSTANT)
public:
    explicit CDlg_edit_line(QQuickItem* parent = nullptr);

    QColor colour() const { return ToQColor(line.colour); }
    double lineWidth() const { return static_cast<double>(line.line_width); }
    int lineStyle() const { return line.line_style; }
    /// Length and the like, a line each.
    virtual QString figures() const = 0;
    /// Opens the dialog of the line's looks and takes what it gave.
    Q_INVOKABLE void chooseLine();

protected:
    bool GiveLineTo(CLineAppearance& to) const;
    void CloseAsGone() { closeDialog(1); }

    CLineAppearance line;
};

/// A route, or the look of new ones, being edited.
class CDlg_edit_route : public CDlg_edit_line {
    Q_OBJECT
    Q_PROPERTY(QString waypointIcon READ waypointIcon NOTIFY changed)
    Q_PROPERTY(QColor waypointColour READ waypointColour NOTIFY changed)
public:
    static constexpr const char* dialog_url = "qrc:/dlg_edit_route.qml";
    using CDlg_edit_line::CDlg_edit_line;

    void SetRoute(COverlayRoute& edited, bool of_template);
    QString figures() const override;
    /// The look of the first waypoint, or what was chosen for all; no icon without a waypoint.
    QString waypointIcon() const { return waypoint_icon; }
    QColor waypointColour() const { return waypoint_colour; }
    /// Opens the chooser of icons: the choice is for all waypoints at once.
    Q_INVOKABLE void chooseWaypointIcon();
    /// Asks for a template of the names of all waypoints.
    Q_INVOKABLE void nameWaypoints();

protected:
    bool IsAlive() const override { return route != nullptr; }
    bool Apply() override;
    void OnUpdate(COverlayObject& object) override;

private:
    COverlayRoute* route = nullptr; ///< null once it has gone
    QString waypoint_icon;
    QColor waypoint_colour;
    bool look_chosen = false; ///< all waypoints are to look so
    QString waypoint_names;   ///< template for all; empty: they keep their names
};

/// A track, or the look of new ones, being edited.
class CDlg_edit_track : public CDlg_edit_line {
    Q_OBJECT
public:
    static constexpr const char* dialog_url = "qrc:/dlg_edit_track.qml";
    using CDlg_edit_line::CDlg_edit_line;

    void SetTrack(COverlayTrack& edited, bool of_template);
    QString figures() const override;

protected:
    bool IsAlive() const override { return track != nullptr; }
    bool Apply() override;
    void OnUpdate(COverlayObject& object) override;

private:
    COverlayTrack* track = nullptr; ///< null once it has gone
};
