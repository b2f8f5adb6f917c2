#include "built_seeds.h"
#include "overlays/track_manager.h"

#include <cmath>

/// Any bytes into the list of tracks. What was read is whole: sections know their track, hold 1 to 64 points and share
/// one with their neighbour, and all positions can be drawn. It is written and read back as the same.
namespace {

constexpr int kMagic = 0x0A2089E8;
constexpr std::size_t kFrame = 4 + 9; ///< signature and magic section: given, so that no run is lost on them

void Check(bool condition)
{
    if (!condition) __builtin_trap();
}

void CheckTrack(COverlayTrack& track)
{
    const CTrackSection* before = nullptr;
    for (const CTrackSection* section : track.sections) {
        Check(section->track == &track && section->count >= 1 && section->count <= CTrackSection::kMostPoints);
        Check(before == nullptr || before->Last() == section->points[0]);
        for (const CTrackPoint& point : section->Points()) Check(ValidLatLon(point.lat, point.lon));
        before = section;
    }
    Check(std::isfinite(track.getTotalDistance()));
    CTrackCursor cursor(track);
    int points = 0;
    while (cursor.Next() != nullptr) ++points;
    Check(points == track.getTotalPoints());
}

COverlayTrack* MakeTrack(const std::string& name, int points)
{
    auto* const track = new COverlayTrack;
    track->name = name;
    for (int i = 0; i < points; ++i) track->addPoint({50.0 + 0.001 * i, -3.0, 1.6e9 + i, 0.0F}, false);
    track->GetObjectID();
    return track;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    for (const int points : {3, 66}) g_track_manager.push_back(MakeTrack("track", points));
    g_track_manager.push_back(MakeTrack("gone", 0));
    const std::string file = g_track_manager.WriteMemory(kMagic);
    AddBuiltSeeds(argc, argv, {file.substr(kFrame), file.substr(kFrame, 200)});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::string frame = g_track_manager.WriteMemory(kMagic).substr(0, kFrame);
    thread_local std::string bytes;
    bytes = frame;
    bytes.append(reinterpret_cast<const char*>(data), size);
    const bool whole = g_track_manager.ReadMemory(bytes, kMagic);
    for (COverlayTrack* track : g_track_manager) CheckTrack(*track);
    const std::string written = g_track_manager.WriteMemory(kMagic);
    if (!whole) return 0;
    // Reading repairs what a damaged file may hold; what was repaired once stays as it is.
    Check(g_track_manager.ReadMemory(written, kMagic));
    const std::string repaired = g_track_manager.WriteMemory(kMagic);
    Check(g_track_manager.ReadMemory(repaired, kMagic) && g_track_manager.WriteMemory(kMagic) == repaired);
    return 0;
}
