#pragma once

#include <QGeoPositionInfoSource>
#include <QGeoSatelliteInfoSource>
#include <QPointer>

/// The platform's location service in the tests: it says what it is told to.
class CFakePositionSource : public QGeoPositionInfoSource {
    Q_OBJECT

public:
    explicit CFakePositionSource(QObject* parent);

    QGeoPositionInfo lastKnownPosition(bool satellites_only) const override;
    PositioningMethods supportedPositioningMethods() const override { return methods; }
    int minimumUpdateInterval() const override { return 100; }
    Error error() const override { return NoError; }
    void startUpdates() override { ++starts; }
    void stopUpdates() override { ++stops; }
    void requestUpdate(int) override {}

    static QPointer<CFakePositionSource> current; ///< the newest
    static QGeoPositionInfo last_known;
    static PositioningMethods methods;
    static bool available; ///< false: the platform has no such source

    int starts = 0;
    int stops = 0;
};

class CFakeSatelliteSource : public QGeoSatelliteInfoSource {
    Q_OBJECT

public:
    explicit CFakeSatelliteSource(QObject* parent);

    int minimumUpdateInterval() const override { return 100; }
    Error error() const override { return NoError; }
    void startUpdates() override { running = true; }
    void stopUpdates() override { running = false; }
    void requestUpdate(int) override {}

    static QPointer<CFakeSatelliteSource> current;
    bool running = false;
};
