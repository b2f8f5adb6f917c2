#include "overlays/overlay_track.h"

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
    Section section(stream);
    const bool begun = section.declare(name) && section.declarecolor(colour) && section.declare(line_width) &&
                       SerializeSections(section);
    const bool whole = begun && section.declare(comment) && section.declare(line_style) &&
                       (section.atEnd() || SerializeSyncable(stream)) && section.declare(category);
    if (!reading) return whole;
    AfterReading();
    return whole || !sections.empty();
}

bool COverlayTrack::SerializeSections(Section& section)
{
    return section.reading() ? ReadSections(section) : CSerializableDeclareStatic(section, sections);
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
