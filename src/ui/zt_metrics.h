#pragma once

#include <QObject>

/// Sizes that the declarative files share, logical pixels. Named ZTMetrics there.
class CZTMetrics : public QObject {
    Q_OBJECT
    Q_PROPERTY(int touchTarget READ touchTarget CONSTANT)
    Q_PROPERTY(int touchRow READ touchRow CONSTANT)
    Q_PROPERTY(int iconSize READ iconSize CONSTANT)
    Q_PROPERTY(int margin READ margin CONSTANT)

public:
    using QObject::QObject;

    /// The least side of everything that can be pressed: 10.5 mm at 96 dpi.
    int touchTarget() const { return 40; }
    /// A row of a list or menu under fingers.
    int touchRow() const { return 48; }
    int iconSize() const { return 24; }
    int margin() const { return 15; }
};
