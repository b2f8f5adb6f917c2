#pragma once

#include <QFont>
#include <QPainterPath>
#include <QString>

/// How a text on a chart looks.
struct CLettering {
    double size_px = 13.0;
    bool italic = false;
    bool condensed = false;
    bool capitals = false;
    QFont::Weight weight = QFont::Normal;
    double spacing_px = 0.0; ///< between letters

    /// The outlines of the text, its middle at the origin.
    QPainterPath Outline(const QString& text) const;
};
