#pragma once

#include "ui/zt_dialog.h"

#include <QColor>
#include <QString>

/// The settings of the own ship: vector, rings, colour, recording; and the ways to the data connection and its log.
/// The properties are the dialog's own until accept() makes them the program's. Lengths are texts in the user's unit of
/// distance.
class CDlg_gps_setup : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(bool show_vector MEMBER show_vector NOTIFY changed)
    Q_PROPERTY(QString vector_scale MEMBER vector_scale NOTIFY changed)
    Q_PROPERTY(bool has_compass READ has_compass CONSTANT)
    Q_PROPERTY(bool show_heading MEMBER show_heading NOTIFY changed)
    Q_PROPERTY(bool record_in_background MEMBER record_in_background NOTIFY changed)
    Q_PROPERTY(bool show_rings MEMBER show_rings NOTIFY changed)
    Q_PROPERTY(QString ring_radius MEMBER ring_radius NOTIFY changed)
    Q_PROPERTY(QString distance_unit READ distance_unit CONSTANT)
    Q_PROPERTY(int ring_count MEMBER ring_count NOTIFY changed)
    Q_PROPERTY(int most_rings READ most_rings CONSTANT)
    Q_PROPERTY(QColor colour MEMBER colour NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)
    Q_PROPERTY(bool connection_debuggable READ connection_debuggable NOTIFY connectionChanged)
    Q_PROPERTY(QString debug_label READ debug_label NOTIFY connectionChanged)
public:
    static constexpr const char* dialog_url = "qrc:/dlg_gps_settings.qml";

    explicit CDlg_gps_setup(QQuickItem* parent = nullptr);

    bool has_compass() const { return false; } ///< none is built in
    QString distance_unit() const;
    int most_rings() const;
    /// What keeps the dialog from being accepted; empty when nothing does.
    QString problem() const { return problem_text; }
    /// Whether the debug button is of use: the connection's lines can be logged, or a log is being written.
    bool connection_debuggable() const;
    QString debug_label() const;

    /// Takes the properties over, saves them and closes; with a number that cannot be used it stays open and says so.
    Q_INVOKABLE void accept();
    /// Shows the menu of connections at the button.
    Q_INVOKABLE void onClickedDataConnection(QQuickItem* button);
    /// Begins the log of sentences, or ends it and offers to save it.
    Q_INVOKABLE void onClickedDebug();

signals:
    void changed();
    void problemChanged();
    void connectionChanged();

private:
    void Refuse(const QString& text);
    void Apply(float minutes, float radius);

    bool show_vector;
    QString vector_scale; ///< minutes
    bool show_heading;
    bool record_in_background;
    bool show_rings;
    QString ring_radius; ///< in distance_unit
    int ring_count;
    QColor colour;
    QString shown_scale; ///< as the dialog was opened: a text that was not touched changes nothing
    QString shown_radius;
    QString problem_text;
};
