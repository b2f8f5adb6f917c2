#include "core/text.h"
#include "navdata/feeds/ais_target_manager.h"
#include "overlays/mark_manager.h"

#include <cmath>

// The mark that follows a person overboard.

namespace {

constexpr float kGotoRange = 500.0F; ///< metres
constexpr double kSecondsPerDay = 86400.0;

COverlayMark* FindMark(const std::string& name)
{
    for (COverlayMark* mark : g_mark_manager.marks)
        if (!mark->deleted && mark->name == name) return mark;
    return nullptr;
}

} // namespace

bool CAISTargetManager::MayMakeMark()
{
    const double day = std::floor(CHeartbeat::TheHeartbeat.Timestamp() / kSecondsPerDay);
    if (day != marks_day) {
        marks_day = day;
        marks_made = 0;
    }
    if (marks_made >= kMostMarksADay) return false;
    ++marks_made;
    return true;
}

void CAISTargetManager::MarkManOverboard(const CAISTarget& target)
{
    const std::string name = stringprintf("AIS MOB: %u", target.mmsi);
    COverlayMark* mark = FindMark(name);
    if (mark == nullptr) {
        if (!MayMakeMark()) return;
        mark = new COverlayMark;
        mark->name = name;
        g_mark_manager.marks.push_back(mark);
    }
    mark->lat = target.latitude;
    mark->lon = target.longitude;
    mark->SetIcon("X", mark->colour);
    mark->setVisible(true);
    mark->SetModifiedNow();
    g_mark_manager.marks_modified = true;
    if (target.range < kGotoRange && !mark->isNavigatingToMark()) g_mark_manager.SetGoto(mark);
    mark->Dispatch(COverlayObject::kChanged);
}
