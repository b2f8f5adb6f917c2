#include "core/folders.h"
#include "overlays/gps_position.h"
#include "overlays/track_manager.h"

#include <memory>

namespace {

constexpr int kTracksMagic = 0x0A2089E8;

std::string TracksFile()
{
    return getAppDirectory() + "/tracks.zttf";
}

} // namespace

bool CTrackManager::LoadFromFile()
{
    Listener<CDataGPSPosition>::Connect();
    Listener<CDataStartTimer>::Connect();
    ages = {};
    default_track.colour = COverlayMovingTarget::gc_color;
    const bool whole = ReadFile(TracksFile(), {}, kTracksMagic);
    for (COverlayTrack* track : *this)
        if (!track->deleted) track->Dispatch(COverlayObject::kChanged);
    tracks_modified = write_failed = false;
    return whole;
}

bool CTrackManager::SaveIfNeeded()
{
    if (!tracks_modified && !write_failed) return true;
    tracks_modified = false;
    write_failed = !WriteFile(TracksFile(), {}, kTracksMagic);
    return !write_failed;
}

bool CTrackManager::Serialize(IOStream& stream)
{
    if (stream.writing()) PruneTombstones();
    Section section(stream);
    const bool listed = section.writing() ? CSerializableDeclareStatic(section, *this) : ReadTracks(section);
    return listed && (section.atEnd() || default_track.Serialize(stream));
}

bool CTrackManager::ReadTracks(Section& section)
{
    constexpr std::uint32_t kMostTracks = 10'000'000;
    while (!empty()) Destroy(back());
    std::uint32_t left = 0;
    if (!section.declare_count(left, kMostTracks)) return false;
    for (; left > 0 && !section.atEnd() && section.stream.ok(); --left) {
        auto track = std::make_unique<COverlayTrack>();
        const bool read = track->Serialize(section.stream);
        if (!read) section.stream.damaged = true;
        // Nobody misses one that was never worth keeping.
        if (read && (track->object_id != 0 || !track->isTrivial())) push_back(track.release());
    }
    if (left > 0) section.stream.damaged = true;
    return left == 0 && section.stream.ok();
}

void CTrackManager::PruneTombstones()
{
    for (auto at = begin(); at != end();) {
        COverlayTrack* const track = *at++;
        if (ages.IsSpent(*track)) Destroy(track);
    }
}
