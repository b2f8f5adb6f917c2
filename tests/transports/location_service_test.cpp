#include "fake_location.h"
#include "transport_test.h"

#include "nmea/transports/location_service.h"
#include "overlays/gps_position.h"

#include <cmath>
#include <limits>

#include <QCoreApplication>

namespace {

constexpr double kStart = 1.7e9; ///< seconds since 1970
constexpr double kNone = -1e9;   ///< an attribute that is not there

struct Fix {
    const char* name;
    double latitude, longitude, altitude; ///< degrees and metres
    double after;                         ///< seconds after the fix before
    double speed, direction, accuracy;    ///< metres per second, degrees, metres
    unsigned status;
    float speed_expected, course_expected, altitude_expected, accuracy_expected;
};

QGeoPositionInfo Info(const Fix& fix, double time)
{
    QGeoCoordinate coordinate(fix.latitude, fix.longitude);
    if (fix.altitude != kNone) coordinate.setAltitude(fix.altitude);
    QGeoPositionInfo info(coordinate, QDateTime::fromMSecsSinceEpoch(std::llround(time * 1000.0)));
    if (fix.speed != kNone) info.setAttribute(QGeoPositionInfo::GroundSpeed, fix.speed);
    if (fix.direction != kNone) info.setAttribute(QGeoPositionInfo::Direction, fix.direction);
    if (fix.accuracy != kNone) info.setAttribute(QGeoPositionInfo::HorizontalAccuracy, fix.accuracy);
    return info;
}

class LocationService : public CTransportTest {
protected:
    void SetUp() override
    {
        CTransportTest::SetUp();
        CFakePositionSource::last_known = {};
        CFakePositionSource::methods = QGeoPositionInfoSource::SatellitePositioningMethods;
        CFakePositionSource::available = true;
        Own().time = kStart;
        Own().status = CDataGPSPosition::kFix;
    }
    static COverlayGPSPosition& Own() { return COverlayGPSPosition::theLatestPosition; }
    static CFakePositionSource* Source() { return CFakePositionSource::current; }

    CLocationServiceConnection connection;
    CHearing<CDataGPSPosition> positions;
};

TEST_F(LocationService, APositionBecomesTheOwnShips)
{
    constexpr float kNoAltitude = -99999.0F;
    const Fix fixes[] = {
        {"all_there", 50.5, -1.25, 12.0, 1.0, 5.0, 90.0, 30.0, 1, 9.7192F, 90.0F, 12.0F, 30.0F},
        {"inaccurate", 50.6, -1.25, 12.0, 1.0, 5.0, 90.0, 30.1, 0, 9.7192F, 90.0F, 12.0F, 30.1F},
        {"speed_without_course", -50.5, 170.0, kNone, 1.0, 5.0, kNone, 3.0, 1, 0.0F, 0.0F, kNoAltitude, 3.0F},
        {"height_alone", 50.5, -1.25, 7.0, 1.0, kNone, 45.0, kNone, 1, 0.0F, 0.0F, 7.0F, 0.0F},
        {"place_alone", 50.5, -1.25, kNone, 1.0, kNone, kNone, kNone, 0, 0.0F, 0.0F, kNoAltitude, 0.0F},
        {"five_seconds", 50.7, -1.25, 12.0, 5.0, 5.0, 90.0, 3.0, 1, 9.7192F, 90.0F, 12.0F, 3.0F},
        {"a_gap", 50.8, -1.25, 12.0, 5.1, 5.0, 90.0, 3.0, 0, 9.7192F, 90.0F, 12.0F, 3.0F},
        {"speed_not_a_number", 50.8, -1.25, 12.0, 1.0, NAN, 90.0, 3.0, 1, 0.0F, 0.0F, 12.0F, 3.0F},
    };
    ASSERT_TRUE(connection.Open());
    ASSERT_NE(Source(), nullptr);
    EXPECT_EQ(Source()->starts, 1);
    double time = kStart;
    for (const Fix& fix : fixes) {
        time += fix.after;
        const int before = positions.count;
        emit Source()->positionUpdated(Info(fix, time));
        EXPECT_EQ(positions.count, before + 1) << fix.name;
        EXPECT_EQ(Own().latitude, fix.latitude) << fix.name;
        EXPECT_EQ(Own().longitude, fix.longitude) << fix.name;
        EXPECT_NEAR(Own().time, time, 0.001) << fix.name;
        EXPECT_EQ(Own().status, fix.status) << fix.name;
        EXPECT_NEAR(Own().speed, fix.speed_expected, 0.001) << fix.name;
        EXPECT_NEAR(Own().altitude, fix.altitude_expected, 0.001) << fix.name;
        EXPECT_FLOAT_EQ(Own().accuracy, fix.accuracy_expected) << fix.name;
        EXPECT_FLOAT_EQ(Own().course, fix.course_expected) << fix.name;
        EXPECT_EQ(Own().source_mark, Source()) << fix.name;
    }
    emit Source()->positionUpdated(QGeoPositionInfo());
    EXPECT_EQ(Own().status, 0U);
    EXPECT_EQ(Own().latitude, 50.8) << "without a place the last one stays";
    EXPECT_EQ(Own().accuracy, 3.0F);
}

TEST_F(LocationService, ClosedUntilTheFirstPosition)
{
    const Fix fix{"", 50.0, 1.0, 2.0, 1.0, 5.0, 90.0, 3.0, 1, 0, 0, 0, 0};
    CFakePositionSource::last_known = Info(fix, kStart + 1.0);
    CFakePositionSource::methods = QGeoPositionInfoSource::NonSatellitePositioningMethods;
    CDataConnection::gps_connection_type = CDataConnection::kLocationService;
    CDataConnection::CreateConnection();
    const CDataConnection& opened = *CDataConnection::theConnection;
    EXPECT_EQ(Own().latitude, 50.0) << "the last known position";
    EXPECT_TRUE(opened.closed);
    EXPECT_EQ(sink.status, "Location service may not be using Satellite Positioning");
    emit Source()->positionUpdated(QGeoPositionInfo());
    EXPECT_TRUE(opened.closed);
    EXPECT_NE(sink.status, "");
    emit Source()->positionUpdated(Info(fix, kStart + 2.0));
    EXPECT_FALSE(opened.closed);
    EXPECT_EQ(opened.status + sink.status, "");

    CDataConnection::AppWasResumed();
    EXPECT_EQ(Source()->starts, 2);
    CDataConnection::AppWasDestroyed();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Source(), nullptr);
    EXPECT_EQ(CFakeSatelliteSource::current, nullptr);
}

TEST_F(LocationService, ErrorsAreStatuses)
{
    using Source_t = QGeoPositionInfoSource;
    struct Case {
        Source_t::Error error;
        const char* text;
    };
    const Case cases[] = {
        {Source_t::AccessError, "Cannot access position info due to Location Permission settings"},
        {Source_t::ClosedError, "The Location service was was turned off"},
        {Source_t::UnknownSourceError, "The location service encountered an unknown error"},
        {Source_t::NoError, ""},
        {Source_t::UpdateTimeoutError, "The location service is unable to provide regular updates"},
    };
    ASSERT_TRUE(connection.Open());
    for (const Case& test : cases) {
        emit Source()->errorOccurred(test.error);
        EXPECT_EQ(sink.status, test.text);
        EXPECT_EQ(connection.status, test.text);
    }
    connection.Close();
    CFakePositionSource::available = false;
    CLocationServiceConnection none;
    if (QGeoPositionInfoSource::availableSources().size() > 1) return; // another service stands in
    EXPECT_FALSE(none.Open());
}

TEST_F(LocationService, SatellitesFillTheTable)
{
    CHearing<CDataGPSSatelliteSignals> signal_tables;
    ASSERT_TRUE(connection.Open());
    CFakeSatelliteSource* const source = CFakeSatelliteSource::current;
    ASSERT_NE(source, nullptr);
    EXPECT_TRUE(source->running);
    EXPECT_EQ(source->updateInterval(), 10000);
    QList<QGeoSatelliteInfo> list;
    for (int i = 1; i <= 30; ++i) {
        QGeoSatelliteInfo info;
        info.setSatelliteIdentifier(i);
        info.setSignalStrength(i == 2 ? 999 : i == 3 ? -1 : 40 + i);
        info.setAttribute(QGeoSatelliteInfo::Elevation, 10.0 + i);
        info.setAttribute(QGeoSatelliteInfo::Azimuth, 300.0 + i);
        list.append(info);
    }
    emit source->satellitesInViewUpdated(list);
    EXPECT_EQ(signal_tables.count, 0);
    emit source->satellitesInUseUpdated(list);
    EXPECT_EQ(signal_tables.count, 1);
    EXPECT_EQ(Own().satellites_in_view, 30);
    EXPECT_EQ(Own().satellites_in_use, 30);
    const CDataGPSSatelliteSignals::Satellite& last = Own().table[23];
    EXPECT_EQ(last.prn, 24);
    EXPECT_EQ(last.a, 64);
    EXPECT_EQ(last.b, 34);
    EXPECT_EQ(last.c, 324);
    EXPECT_TRUE(last.in_use);
    EXPECT_EQ(Own().table[1].a, 255);
    EXPECT_EQ(Own().table[2].a, 0);
    emit source->satellitesInUseUpdated(list.mid(0, 1));
    EXPECT_EQ(Own().table[1].prn, 0);
    EXPECT_FALSE(Own().table[1].in_use);
}

} // namespace
