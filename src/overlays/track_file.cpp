#include "core/folders.h"
#include "overlays/gps_position.h"
#include "overlays/track_file_layout.h"
#include "overlays/track_manager.h"

#include <iterator>
#include <memory>

namespace {

constexpr int kTracksMagic = 0x0A2089E8;

std::string TracksFile()
{
    return getAppDirectory() + "/tracks.zttf";
}

} // namespace

std::size_t CTrackManager::most_bytes_in_section = 90'000'000; // of the 100,000,000 that a section may take

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
    return stream.reading() ? ReadTracks(stream) : WriteTracks(stream);
}

bool CTrackManager::WriteTracks(IOStream& stream)
{
    PruneTombstones();
    const CTrackFileLayout layout(*this, most_bytes_in_section);
    return layout.Write(stream, default_track);
}

bool CTrackManager::ReadTracks(IOStream& stream)
{
    DestroyAll();
    COverlayTrack* last = nullptr;
    std::uint32_t missing = 0;
    bool good = true;
    {
        Section section(stream);
        good = ReadList(section, nullptr, last) && (section.atEnd() || default_track.Serialize(stream)) &&
               CTrackFileLayout::ReadContinuations(section, missing);
    }
    while (good && missing > 0 && stream.ok() && !stream.atEnd()) {
        Section section(stream);
        bool same_track = false;
        if (!CTrackFileLayout::IsContinuation(section, same_track)) continue; // a newer program's
        --missing;
        good = ReadList(section, same_track ? last : nullptr, last);
    }
    if (missing > 0) stream.damaged = true;
    return good;
}

bool CTrackManager::ReadList(Section& section, COverlayTrack* begun, COverlayTrack*& last)
{
    constexpr std::uint32_t kMostTracks = 10'000'000;
    last = begun;
    std::uint32_t left = 0;
    if (!section.declare_count(left, kMostTracks)) return false;
    for (; left > 0 && !section.atEnd() && section.stream.ok(); --left) {
        last = ReadRecord(section.stream, begun);
        begun = nullptr;
    }
    if (left > 0) section.stream.damaged = true;
    return left == 0 && section.stream.ok();
}

COverlayTrack* CTrackManager::ReadRecord(IOStream& stream, COverlayTrack* begun)
{
    auto track = std::make_unique<COverlayTrack>();
    if (!track->Serialize(stream)) {
        stream.damaged = true;
        return nullptr;
    }
    if (begun != nullptr) {
        begun->TakePart(*track);
        return begun;
    }
    // Nobody misses one that was never worth keeping.
    if (track->object_id == 0 && track->isTrivial()) return nullptr;
    push_back(track.release());
    return back();
}

void CTrackManager::PruneTombstones()
{
    for (auto at = begin(); at != end();) at = ages.IsSpent(**at) ? Destroy(at) : std::next(at);
}
