#pragma once

#include <QObject>
#include <QTimer>

/// Drives the catalogue's scan in short slices between events, so that ten thousand charts never freeze the window.
class CCatalogueScan : public QObject {
    Q_OBJECT
public:
    CCatalogueScan();

private:
    void Slice();
    QTimer timer;
};
