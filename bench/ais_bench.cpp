#include "chart/polynomial_projection.h"
#include "core/files.h"
#include "navdata/feeds/ais_target_manager.h"
#include "nmea/ais_sentences.h"
#include "overlays/gps_position.h"
#include "ratio.h"
#include "tools/voyage/ais_writer.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

namespace {

constexpr int kMessages = 200'000;
constexpr int kTargets = 1000;
constexpr std::uint32_t kFirstShip = 211000000;

/// Where ship number `i` is and how she moves, spread over half a degree around 50 N, 1 W.
CAisMotion MotionOf(int i)
{
    auto state = static_cast<std::uint32_t>(i);
    const auto part = [&state] {
        state = state * 1664525U + 1013904223U;
        return static_cast<double>(state >> 16) / 65536.0;
    };
    CAisMotion motion;
    motion.lat = 49.75 + 0.5 * part();
    motion.lon = -1.25 + 0.5 * part();
    motion.speed = 20.0 * part();
    motion.course = motion.heading = 359.0 * part();
    motion.second = i % 60;
    return motion;
}

/// Message after message from the next ship, so that each ship sends messages of all kinds in time.
std::uint32_t MmsiOf(int i)
{
    return kFirstShip + static_cast<std::uint32_t>((i + i / kTargets) % kTargets);
}

CAisShip ShipOf(int i)
{
    CAisShip ship;
    ship.mmsi = MmsiOf(i);
    ship.callsign = "D" + std::to_string(i % 1000);
    ship.name = "MOTOR VESSEL " + std::to_string(i % 1000);
    ship.ship_type = i % 100;
    ship.to_bow = 100;
    ship.to_stern = 20;
    ship.destination = "SOUTHAMPTON";
    return ship;
}

/// A busy harbour's log: of 20 messages 14 are of class A, 3 of class B, and 3 tell of a ship.
void WriteMessage(CSentenceWriter& log, int i)
{
    const std::uint32_t mmsi = MmsiOf(i);
    const int kind = i % 20;
    if (kind < 14)
        WriteAis(log, PositionReportA(mmsi, i % 9, MotionOf(i)), i % 10, 'A');
    else if (kind < 17)
        WriteAis(log, PositionReportB(mmsi, MotionOf(i)), i % 10, 'B');
    else if (kind < 19)
        WriteAis(log, StaticDataA(ShipOf(i)), i % 10, 'A');
    else
        WriteAis(log, StaticDataB(ShipOf(i), i % 40 > 20), i % 10, 'B');
}

/// The log as text, one sentence a line, and room for a copy of it.
struct CLogScene {
    CLogScene()
    {
        CSentenceWriter writer;
        for (int i = 0; i < kMessages; ++i) WriteMessage(writer, i);
        text = writer.Text();
        copy.resize(text.size());
    }
    /// The log as a file, for others to read.
    std::string File()
    {
        if (path.empty()) {
            path = folder.filePath(QStringLiteral("log.nmea")).toStdString();
            if (!write_to_file(path, text)) std::abort();
        }
        return path;
    }
    void Copy() { std::memcpy(copy.data(), text.data(), text.size()); }

    std::string text;
    std::vector<char> copy;

private:
    QTemporaryDir folder;
    std::string path;
};

CLogScene& TheLog()
{
    static CLogScene scene;
    return scene;
}

/// The only listener of AIS for as long as it lives: counts the complete messages.
class CMessageCounter : public Listener<CNEMA_AIS::VDM> {
public:
    CMessageCounter() : others(std::exchange(pDatasource, nullptr)) { Connect(); }
    ~CMessageCounter()
    {
        Disconnect();
        pDatasource = others;
    }
    void OnUpdate(CNEMA_AIS::VDM& message) override { count += message.message_type != 0 ? 1 : 0; }
    int count = 0;

private:
    CDataSource* others;
};

/// Dispatches each line where it stands, without its CR, as CLineAssembler does. All that is altered of a line of this
/// log is the CR, which is put back: another round finds the same log, or it counts fewer messages and aborts.
void DispatchLog()
{
    std::string& log = TheLog().text;
    char* at = log.data();
    char* const end = at + log.size();
    while (at != end) {
        auto* line_end = static_cast<char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        CNMEASentence::DispatchSentence(at, static_cast<std::size_t>(line_end - at) - 1, nullptr);
        line_end[-1] = '\r';
        at = line_end + 1;
    }
}

void DecodeLog()
{
    const CMessageCounter counter;
    DispatchLog();
    if (counter.count != kMessages) std::abort();
}

/// 1,000 ships round the own ship, heard once.
struct CTrafficScene {
    CTrafficScene()
    {
        COverlayGPSPosition& own_ship = COverlayGPSPosition::theLatestPosition;
        own_ship.status = CDataGPSPosition::kFix;
        own_ship.set_latlon(50.0, -1.0);
        own_ship.set_course(90.0F, 12.0F);
        own_ship.DispatchPositionUpdate();
        CAISTargetManager::alarm_beep = false;
        CAISTargetManager::the_manager.Clear();
        DispatchLog();
        for (int i = 0; i < kTargets; ++i)
            targets.push_back(CAISTargetManager::the_manager.Find(kFirstShip + static_cast<std::uint32_t>(i)));
        MapAll();
        frame.fill(Qt::lightGray);
    }
    void MapAll()
    {
        constexpr double kPixelsPerDegree = 2000.0;
        double forward[2][10] = {{kPixelsPerDegree * 1.25, 0.0, kPixelsPerDegree},
                                 {kPixelsPerDegree * 50.25, -kPixelsPerDegree, 0.0}};
        double inverse[2][10] = {{50.25, 0.0, -1.0 / kPixelsPerDegree}, {-1.25, 1.0 / kPixelsPerDegree, 0.0}};
        CPolynomialProjection projection;
        projection.init(forward, inverse, 1000, 1000, 0.0, 0.0);
        params.view_rect = {0.0, 0.0, 1000.0, 1000.0};
        mappings.resize(targets.size());
        for (std::size_t i = 0; i < targets.size(); ++i) targets[i]->Map(mappings[i], projection);
    }

    std::vector<CAISTarget*> targets;
    std::vector<CMapping> mappings;
    CViewParams params;
    QImage frame{1000, 1000, QImage::Format_RGB32};
    QImage window{1000, 1000, QImage::Format_RGB32};
};

CTrafficScene& TheTraffic()
{
    static CTrafficScene scene;
    return scene;
}

void PaintFrame()
{
    QPainter painter(&TheTraffic().window);
    painter.drawImage(0, 0, TheTraffic().frame);
}

void PaintFrameWithTargets()
{
    CTrafficScene& scene = TheTraffic();
    QPainter painter(&scene.window);
    painter.drawImage(0, 0, scene.frame);
    std::size_t drawn = 0;
    for (std::size_t i = 0; i < scene.targets.size(); ++i) {
        scene.mappings[i].move_screen();
        if (!scene.mappings[i].map_to_screen(scene.params)) continue;
        scene.targets[i]->Draw(&painter, scene.params, scene.mappings[i]);
        ++drawn;
    }
    if (drawn != scene.targets.size()) std::abort();
}

void DetectCollisions()
{
    for (CAISTarget* target : TheTraffic().targets) CAISTargetManager::the_manager.detect_collision(*target);
}

struct CPlainShip {
    double x, y, u, v;
};

/// Time and distance of the closest approach alone, from metres and metres a second.
void ApproachPlainShips()
{
    static const std::vector<CPlainShip> ships = [] {
        std::vector<CPlainShip> made;
        for (int i = 0; i < kTargets; ++i) made.push_back({100.0 * i, 50.0 * i, -3.0 - 0.001 * i, -4.0});
        return made;
    }();
    double sum = 0.0;
    for (const CPlainShip& ship : ships) {
        const double t = -(ship.x * ship.u + ship.y * ship.v) / (ship.u * ship.u + ship.v * ship.v);
        if (t > 0.0) sum += std::hypot(ship.x + ship.u * t, ship.y + ship.v * t);
    }
    if (!(sum > 0.0)) std::abort();
}

const struct CRows {
    CRows()
    {
        RegisterRatio("AIS: 200,000 messages decoded", DecodeLog, "copy of the log", [] { TheLog().Copy(); });
        if (HasPeer("gpsdecode"))
            RegisterRatio(
                "AIS: 200,000 messages decoded, a peer", DecodeLog, "gpsdecode to JSON",
                [] { RunPeer("gpsdecode -j < '" + TheLog().File() + "'"); }, 3);
        RegisterRatio(
            "AIS: 200,000 messages to 1,000 targets", [] { TheTraffic(), DispatchLog(); }, "copy of the log",
            [] { TheLog().Copy(); });
        RegisterRatio("AIS: a frame of 1000 x 1000 with 1,000 targets", PaintFrameWithTargets, "frame without them",
                      PaintFrame);
        RegisterRatio("AIS: collision test of 1,000 targets", DetectCollisions, "plain loop over closest approaches",
                      ApproachPlainShips);
    }
} rows;

} // namespace
