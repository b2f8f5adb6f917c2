// Files of marks and of routes: any list after the magic. What was read must be usable, and what was read whole must be
// written and read back as the same.

#include "built_seeds.h"
#include "core/bounds.h"
#include "core/clock.h"
#include "overlays/mark_manager.h"

#include <cmath>
#include <memory>

namespace {

constexpr double kNow = 1.76e9; ///< seconds since 1970
constexpr int kMagic = 0x4D61726B;

CSerializable& FileOf(std::uint8_t kind)
{
    return kind % 2 == 0 ? g_mark_manager.MarksFile() : g_mark_manager.RoutesFile();
}

/// The signature and the magic are given, so that no run is lost on them.
const std::string& Head()
{
    struct CNothing : CSerializable {
        bool Serialize(IOStream&) override { return true; }
    };
    static const std::string head = CNothing().WriteMemory(kMagic);
    return head;
}

void Require(bool holds)
{
    if (!holds) __builtin_trap();
}

void Use(COverlayMark& mark)
{
    Require(mark.HasPosition() || mark.lat == COverlayMark::kNoPosition);
    Require(mark.alarm_radius >= 0.0F && mark.anchor_radius >= 0.0F && std::isfinite(mark.alarm_radius));
}

void Use(COverlayRoute& route)
{
    Require(std::isfinite(route.getTotalLengthMeters()) && std::isfinite(route.TotalLengthofSegments()));
    for (COverlayMark* waypoint : route.waypoints) {
        Require(waypoint->route == &route && waypoint->type == COverlayObject::kWaypoint);
        Use(*waypoint);
    }
    COverlayRoute::CLeg leg;
    if (!route.FindNearestLeg(50.0, 179.9, leg)) return;
    Require(leg.to != nullptr && leg.remaining >= 0.0);
    CBounds bounds;
    route.getLonLatBounds(bounds);
    Require(!bounds.empty());
    if (route.waypoints.size() < 20) route.ReverseWaypoints();
}

void UseAll()
{
    for (COverlayMark* mark : g_mark_manager.marks) Use(*mark);
    for (COverlayRoute* route : g_mark_manager.routes) Use(*route);
    CDataGPSPosition position;
    position.set_latlon(50.0, -179.9);
    position.status = CDataGPSPosition::kFix;
    g_mark_manager.OnUpdate(position);
}

bool Read(CSerializable& file, const std::string& bytes)
{
    g_mark_manager.ClearAll();
    const bool whole = file.ReadMemory(bytes, kMagic);
    g_mark_manager.FilesRead();
    return whole;
}

std::string Built(CSerializable& file)
{
    return file.WriteMemory(kMagic).substr(Head().size());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    SetClock([] { return kNow; });
    CMarkManager::enable_alarm_notifications = false;
    for (int i = 0; i < 3; ++i) g_mark_manager.CreateNewMark(nullptr, 50.0 + i, 179.0);
    g_mark_manager.marks.front()->goto_target = true;
    g_mark_manager.DeleteMark(g_mark_manager.marks.back());
    auto* const route = new COverlayRoute;
    g_mark_manager.routes.push_back(route);
    route->following = true;
    for (const double lon : {179.0, -179.0, -178.0}) route->AddWaypoint(50.0, lon, nullptr, {}, {});
    AddBuiltSeeds(argc, argv, {"0" + Built(g_mark_manager.MarksFile()), "1" + Built(g_mark_manager.RoutesFile())}, 700);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    CSerializable& file = FileOf(data[0]);
    const std::string bytes = Head() + std::string(reinterpret_cast<const char*>(data + 1), size - 1);
    const bool whole = Read(file, bytes);
    if (whole) {
        const std::string written = file.WriteMemory(kMagic);
        Require(Read(file, written) && file.WriteMemory(kMagic) == written);
    }
    UseAll();
    return 0;
}
