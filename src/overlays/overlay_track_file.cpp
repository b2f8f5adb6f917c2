#include "overlays/overlay_track.h"

#include <algorithm>
#include <iterator>

class COverlayTrack::cType : public Type {
public:
    cType() : Type(kTypeId) {}
    CSerializable* Create() const override { return new COverlayTrack; }

    static const cType track_type;
};

const COverlayTrack::cType COverlayTrack::cType::track_type;

bool COverlayTrack::Serialize(IOStream& stream)
{
    const bool reading = stream.reading(); // a stream that fails does neither any more
    const bool whole = SerializeRecord(stream, {sections.cbegin(), sections.cend()});
    if (!reading) return whole;
    AfterReading();
    return whole || !sections.empty();
}

bool COverlayTrack::WritePart(IOStream& stream, CSectionRange range)
{
    return stream.writing() && SerializeRecord(stream, range);
}

bool COverlayTrack::SerializeRecord(IOStream& stream, CSectionRange range)
{
    Section section(stream);
    return section.declare(name) && section.declarecolor(colour) && section.declare(line_width) &&
           (section.reading() ? ReadSections(section) : WriteSections(section, range)) && section.declare(comment) &&
           section.declare(line_style) && (section.atEnd() || SerializeSyncable(stream)) && section.declare(category);
}

bool COverlayTrack::WriteSections(Section& section, CSectionRange range)
{
    auto count = static_cast<std::uint32_t>(std::distance(range.first, range.last));
    return section.declare(count) &&
           std::all_of(range.first, range.last, [&](CTrackSection* piece) { return piece->Serialize(section.stream); });
}

bool COverlayTrack::ReadSections(Section& section)
{
    constexpr std::uint32_t kMostSections = 10'000'000;
    ClearSections();
    std::uint32_t left = 0;
    if (!section.declare_count(left, kMostSections)) return false;
    // Packed anew as they come, so that a file of many small or broken ones takes no more memory than its points.
    CTrackSection piece;
    for (; left > 0 && !section.atEnd() && section.stream.ok(); --left) {
        piece.count = 0;
        if (piece.Serialize(section.stream)) {
            Append(piece);
        } else {
            section.stream.damaged = true;
        }
    }
    if (left > 0) section.stream.damaged = true;
    return left == 0 && section.stream.ok();
}

void COverlayTrack::Append(const CTrackSection& piece)
{
    for (const CTrackPoint& point : piece.Points())
        if (sections.empty() || point != sections.back()->Last()) PackPoint(point, false);
}

void COverlayTrack::TakePart(const COverlayTrack& part)
{
    for (const CTrackSection* section : part.sections) Append(*section);
    ClearStats();
}

void COverlayTrack::AfterReading()
{
    KeepInBounds();
    grid = {};
    ClearStats();
    const double start = getTimeOfStart();
    if (start != 0.0) created = start;
}

bool COverlayTrack::SyncObject(IOStream& stream, double)
{
    return Serialize(stream);
}
