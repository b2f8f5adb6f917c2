#pragma once

#include <QObject>
#include <QRect>
#include <QSize>

/// What the interface asks of the platform.
class COperatingSystem : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isDesktop READ isDesktop CONSTANT)
public:
    using QObject::QObject;

    bool isDesktop() const { return true; }
    /// See WindowGeometry.
    Q_INVOKABLE QRect windowGeometry(const QRect& saved, const QSize& saved_available, const QSize& available) const;
};
