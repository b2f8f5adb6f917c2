#pragma once

#include "nmea/data_connection.h"

#include <QGeoPositionInfoSource>
#include <QGeoSatelliteInfoSource>
#include <QObject>

/// Positions of the platform's location service, written straight into COverlayGPSPosition::theLatestPosition. `closed`
/// is cleared by the first position.
class CLocationServiceConnection : public QObject, public CDataConnection {
    Q_OBJECT

public:
    CLocationServiceConnection() = default;
    ~CLocationServiceConnection() override;

    bool Open() override;
    void Close() override;
    /// It goes on.
    void ContinueWhilePaused() override {}
    void resumeFromBackground() override;

private slots:
    void positionUpdated(const QGeoPositionInfo& info);
    void errorOccurred(QGeoPositionInfoSource::Error error);
    void satellitesInUseUpdated(const QList<QGeoSatelliteInfo>& list);
    void satellitesInViewUpdated(const QList<QGeoSatelliteInfo>& list);

private:
    void OpenSatelliteSource();
    void NoteWorking();

    QGeoPositionInfoSource* position_source = nullptr;
    QGeoSatelliteInfoSource* satellite_source = nullptr;
};
