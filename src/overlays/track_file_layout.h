#pragma once

#include "overlays/overlay_track.h"

#include <cstdint>
#include <list>
#include <vector>

/// What goes into which section of the file of tracks. One section has room for some three million points, and as a
/// rule is all there is: the list, and the default track. What is more follows behind it in continuations: sections
/// that begin with a mark and hold more of the list. The first section then ends with that mark and their number. A
/// track that is itself too long stands in several records, each but the first of which opens a continuation that says
/// so. Only looks at the tracks, which have to outlive it.
class CTrackFileLayout {
public:
    /// `most_bytes`: what a section holds at most; it holds one section of a track at least.
    CTrackFileLayout(const std::list<COverlayTrack*>& tracks, std::size_t most_bytes);

    bool Write(CSerializable::IOStream& stream, COverlayTrack& default_track) const;

    /// At the end of the first section: the number of continuations, 0 when nothing is said of any.
    static bool ReadContinuations(CSerializable::Section& section, std::uint32_t& number);
    /// Whether the section that was just opened is a continuation. If so, `same_track` says whether its first record
    /// goes on with the last track before it, and the list comes next.
    static bool IsContinuation(CSerializable::Section& section, bool& same_track);

private:
    /// A track with some of its sections, as a rule with all.
    struct CRecord {
        COverlayTrack* track;
        COverlayTrack::CSectionRange range;
    };
    struct CFiledList {
        bool same_track = false;
        std::vector<CRecord> records;
    };

    void Add(COverlayTrack& track);
    void Begin(bool same_track);
    bool WriteFirst(CSerializable::IOStream& stream, COverlayTrack& default_track) const;
    static bool WriteList(CSerializable::Section& section, const CFiledList& list);

    const std::size_t most;
    std::size_t bytes = 0;         ///< of the last list
    std::vector<CFiledList> lists; ///< at least one
};
