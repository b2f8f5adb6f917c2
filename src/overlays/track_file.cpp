#include "core/folders.h"
#include "overlays/gps_position.h"
#include "overlays/track_manager.h"

#include <algorithm>
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

// One section has room for some three million points. What is more follows in sections of its own behind the first; a
// track that is itself too long is filed in parts, records of the same id behind one another.

/// Gathers tracks into sections.
class CTrackManager::CWriter {
public:
    CWriter(IOStream& to, COverlayTrack& with_default) : stream(to), default_track(with_default) {}

    void Add(COverlayTrack& track)
    {
        const std::size_t room = RoomOf(track);
        if (bytes + room > most_bytes_in_section) Flush();
        if (room > most_bytes_in_section) {
            AddInParts(track);
            return;
        }
        group.push_back(&track);
        bytes += room;
    }
    bool Finish()
    {
        if (first || !group.empty()) Flush();
        return good && stream.ok();
    }

private:
    static constexpr std::size_t kSectionRoom = 64 * sizeof(CTrackPoint) + 13;
    static std::size_t RoomOf(const COverlayTrack& track)
    {
        constexpr std::size_t kFixedFields = 200;
        return kSectionRoom * track.sections.size() + track.name.size() + track.comment.size() + track.category.size() +
               kFixedFields;
    }

    void Flush()
    {
        if (group.empty() && !first) return;
        Section section(stream);
        good = good && CSerializableDeclareStatic(section, group) && (!first || default_track.Serialize(stream));
        first = false;
        group.clear();
        bytes = 0;
    }
    /// Each part is the track with some of its sections.
    void AddInParts(COverlayTrack& track)
    {
        const auto most = static_cast<std::ptrdiff_t>(std::max<std::size_t>(most_bytes_in_section / kSectionRoom, 1));
        track.GetObjectID(); // by which the parts find together
        std::list<CTrackSection*> left;
        std::list<CTrackSection*> written;
        left.swap(track.sections);
        while (!left.empty()) {
            const auto part = std::min(most, static_cast<std::ptrdiff_t>(left.size()));
            track.sections.splice(track.sections.end(), left, left.begin(), std::next(left.begin(), part));
            group.push_back(&track);
            Flush();
            written.splice(written.end(), track.sections);
        }
        track.sections.swap(written);
    }

    IOStream& stream;
    COverlayTrack& default_track;
    std::list<COverlayTrack*> group;
    std::size_t bytes = 0;
    bool first = true;
    bool good = true;
};

bool CTrackManager::WriteTracks(IOStream& stream)
{
    PruneTombstones();
    CWriter writer(stream, default_track);
    for (COverlayTrack* track : *this) writer.Add(*track);
    return writer.Finish();
}

bool CTrackManager::ReadTracks(IOStream& stream)
{
    while (!empty()) Destroy(back());
    bool good = true;
    {
        Section section(stream);
        good = ReadList(section) && (section.atEnd() || default_track.Serialize(stream));
    }
    while (good && stream.ok() && !stream.atEnd()) {
        Section more(stream);
        good = ReadList(more);
    }
    return good;
}

bool CTrackManager::ReadList(Section& section)
{
    constexpr std::uint32_t kMostTracks = 10'000'000;
    std::uint32_t left = 0;
    if (!section.declare_count(left, kMostTracks)) return false;
    for (; left > 0 && !section.atEnd() && section.stream.ok(); --left) {
        auto track = std::make_unique<COverlayTrack>();
        const bool read = track->Serialize(section.stream);
        if (!read) section.stream.damaged = true;
        if (read && track->object_id != 0 && !empty() && back()->object_id == track->object_id) {
            back()->TakePart(*track);
            continue;
        }
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
