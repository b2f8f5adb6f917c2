#include "overlays/overlay_track.h"

#include "core/bounds.h"
#include "core/text.h"
#include "navdata/units.h"
#include "overlays/overlay_views.h"
#include "overlays/track_manager.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr const char* kChunkPrefix = ":chunk";
constexpr int kLeastPoints = 3;          ///< of a track worth keeping
constexpr double kSamePosition = 1.7e-5; ///< degrees, about two metres

} // namespace

COverlayTrack::COverlayTrack() : CLineAppearance(g_track_manager.DefaultTrack())
{
    const COverlayTrack& from = g_track_manager.DefaultTrack();
    do_not_sync = from.do_not_sync;
    category = ExpandDateAndTime(from.category, 0.0);
}

COverlayTrack::COverlayTrack(const std::string& name_template)
{
    name = name_template;
}

COverlayTrack::~COverlayTrack()
{
    ClearSections();
}

void COverlayTrack::ClearSections()
{
    for (CTrackSection* section : sections) delete section;
    sections.clear();
    ClearStats();
}

void COverlayTrack::addPoint(const CTrackPoint& point, bool dispatch)
{
    g_track_manager.SetModified();
    if (point.time > modified) modified = point.time;
    PackPoint(point, dispatch);
}

void COverlayTrack::PackPoint(const CTrackPoint& point, bool dispatch)
{
    if (sections.empty()) sections.push_back(new CTrackSection(this));
    if (sections.back()->addPoint(point, dispatch)) return;
    const CTrackPoint shared = sections.back()->Last();
    sections.push_back(new CTrackSection(this));
    sections.back()->addPoint(shared, false);
    sections.back()->addPoint(point, dispatch);
}

const CTrackPoint* COverlayTrack::FirstPoint() const
{
    for (const CTrackSection* section : sections)
        if (section->count > 0) return section->points;
    return nullptr;
}

const CTrackPoint* COverlayTrack::LastPoint() const
{
    for (auto at = sections.rbegin(); at != sections.rend(); ++at)
        if ((*at)->count > 0) return &(*at)->Last();
    return nullptr;
}

bool COverlayTrack::isTrivial() const
{
    if (sections.empty() || name.starts_with(kChunkPrefix)) return true;
    return sections.size() == 1 && sections.front()->count < kLeastPoints;
}

bool COverlayTrack::isRecording() const
{
    return CTrackManager::doRecordTrack && !g_track_manager.empty() && g_track_manager.back() == this;
}

void COverlayTrack::Dispatch(COverlayObject::update_action action)
{
    for (CTrackSection* section : sections) section->Dispatch(action);
    g_track_manager.SetModified();
}

bool COverlayTrack::sameData(const COverlayTrack& other) const
{
    if (getTotalPoints() != other.getTotalPoints() || !sameSyncableData(other)) return false;
    CTrackCursor mine(*this);
    CTrackCursor theirs(other);
    for (;;) {
        const CTrackPoint* a = mine.Next();
        const CTrackPoint* b = theirs.Next();
        if (a == nullptr || b == nullptr) return a == b;
        if (!(std::abs(a->lat - b->lat) <= kSamePosition && std::abs(a->lon - b->lon) <= kSamePosition)) return false;
    }
}

void COverlayTrack::ClearData()
{
    if (TheOverlayViews().IsSelected(*this)) TheOverlayViews().Deselect();
    ClearSections();
    grid = {};
    name.clear();
    comment.clear();
    category.clear();
}

void COverlayTrack::getLonLatBounds(CBounds& bounds) const
{
    for (const CTrackSection* section : sections) section->ExpandLonLatBounds(bounds);
}

std::string COverlayTrack::getSubText(const CSimpleGrid&) const
{
    std::string text;
    if (const double start = getTimeOfStart(); start != 0.0) {
        CUnits::FormatDate(start, text);
        text += ", ";
    }
    double moving = 0.0;
    double fastest = 0.0;
    const double metres = total_distance != 0.0 ? total_distance : getStats(moving, fastest);
    return text + CUnits::Default->FormatDistance(metres);
}

CTrackCursor::CTrackCursor(const COverlayTrack& track) : section(track.sections.begin()), end(track.sections.end()) {}

const CTrackPoint* CTrackCursor::Next()
{
    for (; section != end; ++section, index = 1)
        if (index < (*section)->count) return (*section)->points + index++;
    return nullptr;
}
