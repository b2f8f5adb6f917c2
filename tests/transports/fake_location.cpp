#define QT_STATICPLUGIN // the test links its own service

#include "fake_location.h"

#include <QGeoPositionInfoSourceFactory>
#include <QtPlugin>

QPointer<CFakePositionSource> CFakePositionSource::current;
QPointer<CFakeSatelliteSource> CFakeSatelliteSource::current;
QGeoPositionInfo CFakePositionSource::last_known;
QGeoPositionInfoSource::PositioningMethods CFakePositionSource::methods = SatellitePositioningMethods;
bool CFakePositionSource::available = true;

CFakePositionSource::CFakePositionSource(QObject* parent) : QGeoPositionInfoSource(parent)
{
    current = this;
}

QGeoPositionInfo CFakePositionSource::lastKnownPosition(bool) const
{
    return last_known;
}

CFakeSatelliteSource::CFakeSatelliteSource(QObject* parent) : QGeoSatelliteInfoSource(parent)
{
    current = this;
}

class CFakeLocationFactory : public QObject, public QGeoPositionInfoSourceFactory {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.qt.position.sourcefactory/6.0" FILE "fake_location.json")
    Q_INTERFACES(QGeoPositionInfoSourceFactory)

public:
    QGeoPositionInfoSource* positionInfoSource(QObject* parent, const QVariantMap&) override
    {
        return CFakePositionSource::available ? new CFakePositionSource(parent) : nullptr;
    }
    QGeoSatelliteInfoSource* satelliteInfoSource(QObject* parent, const QVariantMap&) override
    {
        return new CFakeSatelliteSource(parent);
    }
    QGeoAreaMonitorSource* areaMonitor(QObject*, const QVariantMap&) override { return nullptr; }
};

#include "fake_location.moc"

Q_IMPORT_PLUGIN(CFakeLocationFactory)
