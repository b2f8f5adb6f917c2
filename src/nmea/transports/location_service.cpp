#include "nmea/transports/location_service.h"

#include "core/message_sink.h"
#include "overlays/gps_position.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kKnotsPerMetrePerSecond = 1.94384449;
constexpr float kWorstAccuracy = 30.0F;   ///< metres; a position beyond it is no fix
constexpr double kLongestGap = 5.0;       ///< seconds; a position after a longer one is no fix yet
constexpr int kSatelliteInterval = 10000; ///< milliseconds
constexpr float kNoAltitude = -99999.0F;  ///< metres

/// An attribute as a number that can be used; false when there is none.
bool GetAttribute(const QGeoPositionInfo& info, QGeoPositionInfo::Attribute attribute, double& value)
{
    if (!info.hasAttribute(attribute)) return false;
    value = info.attribute(attribute);
    return std::isfinite(value);
}

void TakeAltitude(const QGeoCoordinate& coordinate, COverlayGPSPosition& position)
{
    if (coordinate.type() == QGeoCoordinate::Coordinate3D) {
        position.altitude = static_cast<float>(coordinate.altitude());
        position.status = CDataGPSPosition::kFix;
    } else {
        position.altitude = kNoAltitude;
    }
}

void TakeMotion(const QGeoPositionInfo& info, COverlayGPSPosition& position)
{
    double speed = 0.0; // metres per second
    double direction = 0.0;
    const bool has_speed = GetAttribute(info, QGeoPositionInfo::GroundSpeed, speed);
    if (has_speed && GetAttribute(info, QGeoPositionInfo::Direction, direction)) {
        position.set_course(static_cast<float>(direction), static_cast<float>(speed * kKnotsPerMetrePerSecond));
    } else {
        position.set_course(0.0F, 0.0F);
    }
    if (has_speed) position.status = CDataGPSPosition::kFix;
}

void TakeAccuracy(const QGeoPositionInfo& info, COverlayGPSPosition& position)
{
    double accuracy = 0.0; // metres
    if (!GetAttribute(info, QGeoPositionInfo::HorizontalAccuracy, accuracy)) accuracy = 0.0;
    position.accuracy = static_cast<float>(accuracy);
    if (position.accuracy > kWorstAccuracy) position.status = CDataGPSPosition::kNoFix;
}

/// The number rounded into the range of the record's field; what is not known is 0.
template <class T>
T ToField(double value)
{
    if (!(value > 0.0)) return 0;
    return static_cast<T>(std::lround(std::min(value, double{std::numeric_limits<T>::max()})));
}

void TakeSatellite(const QGeoSatelliteInfo& info, CDataGPSSatelliteSignals::Satellite& satellite)
{
    satellite.prn = ToField<std::uint8_t>(info.satelliteIdentifier());
    satellite.in_use = true;
    satellite.a = ToField<std::uint8_t>(info.signalStrength());
    satellite.b = ToField<std::uint8_t>(info.attribute(QGeoSatelliteInfo::Elevation));
    satellite.c = ToField<std::uint16_t>(info.attribute(QGeoSatelliteInfo::Azimuth));
}

const char* ErrorText(QGeoPositionInfoSource::Error error)
{
    switch (error) {
    case QGeoPositionInfoSource::AccessError:
        return "Cannot access position info due to Location Permission settings";
    case QGeoPositionInfoSource::ClosedError:
        return "The Location service was was turned off";
    case QGeoPositionInfoSource::UnknownSourceError:
        return "The location service encountered an unknown error";
    case QGeoPositionInfoSource::UpdateTimeoutError:
        return "The location service is unable to provide regular updates";
    default:
        return "";
    }
}

} // namespace

CLocationServiceConnection::~CLocationServiceConnection()
{
    Close();
}

bool CLocationServiceConnection::Open()
{
    Close();
    position_source = QGeoPositionInfoSource::createDefaultSource(this);
    if (position_source == nullptr) {
        status = "Unable to connect to position info source";
        return false;
    }
    connect(position_source, &QGeoPositionInfoSource::positionUpdated, this,
            &CLocationServiceConnection::positionUpdated);
    connect(position_source, &QGeoPositionInfoSource::errorOccurred, this, &CLocationServiceConnection::errorOccurred);
    positionUpdated(position_source->lastKnownPosition(false));
    if (!(position_source->supportedPositioningMethods() & QGeoPositionInfoSource::SatellitePositioningMethods)) {
        status = "Location service may not be using Satellite Positioning";
    }
    closed = true;
    position_source->startUpdates();
    OpenSatelliteSource();
    return true;
}

void CLocationServiceConnection::OpenSatelliteSource()
{
    satellite_source = QGeoSatelliteInfoSource::createDefaultSource(this);
    if (satellite_source == nullptr) return;
    connect(satellite_source, &QGeoSatelliteInfoSource::satellitesInUseUpdated, this,
            &CLocationServiceConnection::satellitesInUseUpdated);
    connect(satellite_source, &QGeoSatelliteInfoSource::satellitesInViewUpdated, this,
            &CLocationServiceConnection::satellitesInViewUpdated);
    satellite_source->setUpdateInterval(kSatelliteInterval);
    satellite_source->startUpdates();
}

void CLocationServiceConnection::Close()
{
    if (position_source != nullptr) {
        position_source->stopUpdates();
        position_source->disconnect(this);
        position_source->deleteLater();
        position_source = nullptr;
    }
    if (satellite_source != nullptr) {
        satellite_source->stopUpdates();
        satellite_source->disconnect(this);
        satellite_source->deleteLater();
        satellite_source = nullptr;
    }
    closed = true;
}

void CLocationServiceConnection::resumeFromBackground()
{
    if (position_source != nullptr) position_source->startUpdates();
}

void CLocationServiceConnection::positionUpdated(const QGeoPositionInfo& info)
{
    COverlayGPSPosition& position = COverlayGPSPosition::theLatestPosition;
    const double time_before = position.time;
    position.status = CDataGPSPosition::kNoFix;
    const QGeoCoordinate coordinate = info.coordinate();
    if (coordinate.isValid()) {
        position.set_latlon(coordinate.latitude(), coordinate.longitude());
        position.time = static_cast<double>(info.timestamp().toMSecsSinceEpoch()) * 0.001;
        TakeAltitude(coordinate, position);
        TakeMotion(info, position);
        TakeAccuracy(info, position);
        if (position.time - time_before > kLongestGap) position.status = CDataGPSPosition::kNoFix;
        NoteWorking();
    }
    position.source_mark = position_source;
    position.DispatchPositionUpdate();
}

void CLocationServiceConnection::NoteWorking()
{
    closed = false;
    if (status.empty()) return;
    status.clear();
    ClearStatusMessage();
}

void CLocationServiceConnection::errorOccurred(QGeoPositionInfoSource::Error error)
{
    status = ErrorText(error);
    SetStatusMessage(status);
}

void CLocationServiceConnection::satellitesInUseUpdated(const QList<QGeoSatelliteInfo>& list)
{
    CDataGPSSatelliteSignals& signal_table = COverlayGPSPosition::theLatestPosition;
    signal_table.satellites_in_use = static_cast<int>(list.size());
    signal_table.ClearTable();
    int slot = 0;
    for (const QGeoSatelliteInfo& info : list) {
        if (slot == CDataGPSSatelliteSignals::kSlots) break;
        TakeSatellite(info, signal_table.table[slot++]);
    }
    DispatchToListeners(signal_table);
}

void CLocationServiceConnection::satellitesInViewUpdated(const QList<QGeoSatelliteInfo>& list)
{
    COverlayGPSPosition::theLatestPosition.satellites_in_view = static_cast<int>(list.size());
}
