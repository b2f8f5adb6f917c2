#include "overlays/track_file_layout.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int kContinuationMark = 0x5C0B7A1E;
constexpr std::size_t kFixedFields = 200; ///< bytes of a record without its texts and sections
constexpr std::size_t kSectionRoom = CTrackSection::kMostPoints * sizeof(CTrackPoint) + 13;

std::size_t RoomOfTexts(const COverlayTrack& track)
{
    constexpr std::size_t kLongestFiled = 1'000'000;
    std::size_t room = 0;
    for (const std::string* text : {&track.name, &track.comment, &track.category})
        room += std::min(text->size(), kLongestFiled);
    return room;
}

/// Whether the mark comes next in a section that is being read.
bool TakeMark(CSerializable::Section& section)
{
    return section.BytesLeft() >= sizeof kContinuationMark && section.declaremagic(kContinuationMark);
}

} // namespace

CTrackFileLayout::CTrackFileLayout(const std::list<COverlayTrack*>& tracks, std::size_t most_bytes)
    : most(most_bytes), lists(1)
{
    for (COverlayTrack* track : tracks) Add(*track);
}

void CTrackFileLayout::Add(COverlayTrack& track)
{
    const std::size_t fields = RoomOfTexts(track) + kFixedFields;
    std::size_t left = track.sections.size();
    if (bytes > 0 && bytes + fields + left * kSectionRoom > most) Begin(false);
    const std::size_t part = std::max<std::size_t>((most - std::min(most, fields)) / kSectionRoom, 1);
    auto at = track.sections.cbegin();
    for (; left > part; left -= part) {
        const auto end = std::next(at, static_cast<std::ptrdiff_t>(part));
        lists.back().records.push_back({&track, {at, end}});
        Begin(true);
        at = end;
    }
    lists.back().records.push_back({&track, {at, track.sections.cend()}});
    bytes += fields + left * kSectionRoom;
}

void CTrackFileLayout::Begin(bool same_track)
{
    lists.push_back({same_track, {}});
    bytes = 0;
}

bool CTrackFileLayout::Write(CSerializable::IOStream& stream, COverlayTrack& default_track) const
{
    if (!WriteFirst(stream, default_track)) return false;
    return std::all_of(std::next(lists.begin()), lists.end(), [&](const CFiledList& list) {
        CSerializable::Section section(stream);
        bool same_track = list.same_track;
        return section.declaremagic(kContinuationMark) && section.declare(same_track) && WriteList(section, list);
    });
}

bool CTrackFileLayout::WriteFirst(CSerializable::IOStream& stream, COverlayTrack& default_track) const
{
    CSerializable::Section section(stream);
    if (!WriteList(section, lists.front()) || !default_track.Serialize(stream)) return false;
    auto continuations = static_cast<std::uint32_t>(lists.size() - 1);
    return continuations == 0 || (section.declaremagic(kContinuationMark) && section.declare(continuations));
}

bool CTrackFileLayout::WriteList(CSerializable::Section& section, const CFiledList& list)
{
    auto count = static_cast<std::uint32_t>(list.records.size());
    return section.declare(count) && std::all_of(list.records.begin(), list.records.end(), [&](const CRecord& record) {
               return record.track->WritePart(section.stream, record.range);
           });
}

bool CTrackFileLayout::ReadContinuations(CSerializable::Section& section, std::uint32_t& number)
{
    number = 0;
    return !TakeMark(section) || section.declare(number);
}

bool CTrackFileLayout::IsContinuation(CSerializable::Section& section, bool& same_track)
{
    return TakeMark(section) && section.declare(same_track);
}
