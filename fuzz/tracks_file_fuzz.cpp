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

/// A list of one track with a full section and one more, in which a point is its latitude alone: short, so that the
/// fuzzer is quick with it.
struct CNarrowTrack : CSerializable {
    bool Serialize(IOStream& stream) override
    {
        Section list(stream);
        std::uint32_t tracks = 1;
        return list.declare(tracks) && WriteTrack(stream) && WriteTrack(stream);
    }
    static bool WriteTrack(IOStream& stream)
    {
        Section track(stream);
        std::string name = "narrow";
        GraphicsColor colour;
        float line_width = 2.0F;
        std::uint32_t sections = 2;
        return track.declare(name) && track.declarecolor(colour) && track.declare(line_width) &&
               track.declare(sections) && WriteSection(stream, 50.0, CTrackSection::kMostPoints) &&
               WriteSection(stream, 10.0, 3);
    }
    static bool WriteSection(IOStream& stream, double first, int count)
    {
        double latitudes[CTrackSection::kMostPoints];
        for (double& latitude : latitudes) latitude = first, first += 0.5;
        Section section(stream);
        return section.declare(count) && section.declare_array(latitudes, sizeof(double), count);
    }
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    g_track_manager.push_back(MakeTrack("track", 3));
    g_track_manager.push_back(MakeTrack("gone", 0));
    const std::string file = g_track_manager.WriteMemory(kMagic);
    // From here on, so that what is read is written in parts as well.
    CTrackManager::most_bytes_in_section = 300;
    const std::string in_parts = g_track_manager.WriteMemory(kMagic);
    const std::string two_sections = CNarrowTrack().WriteMemory(kMagic);
    AddBuiltSeeds(argc, argv,
                  {file.substr(kFrame), file.substr(kFrame, 200), in_parts.substr(kFrame), two_sections.substr(kFrame)},
                  900);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::string frame = g_track_manager.WriteMemory(kMagic).substr(0, kFrame);
    static std::string bytes;
    bytes = frame;
    bytes.append(reinterpret_cast<const char*>(data), size);
    CTrackManager read;
    const bool whole = read.ReadMemory(bytes, kMagic);
    for (COverlayTrack* track : read) CheckTrack(*track);
    if (!whole) return 0;
    const std::string written = read.WriteMemory(kMagic);
    CTrackManager again;
    Check(again.ReadMemory(written, kMagic) && again.WriteMemory(kMagic) == written);
    return 0;
}
