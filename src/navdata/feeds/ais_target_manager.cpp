#include "navdata/feeds/ais_target_manager.h"

#include "overlays/gps_position.h"
#include "ui/user_notification_manager.h"

#include <cmath>
#include <numbers>

namespace {

constexpr int kAgeingTicks = 1200;
constexpr double kLostSeconds = 366.0;
constexpr double kRemovedSeconds = 600.0;

} // namespace

CAISTargetManager::CAISTargetManager() : Counter(kAgeingTicks)
{
    Listener<CNEMA_AIS::VDM>::Connect();
    Listener<CNEMA_AIS::VDO>::Connect();
    Listener<CDataGPSPosition>::Connect();
}

CAISTargetManager::~CAISTargetManager() = default;

void CAISTargetManager::OnUpdate(CDataGPSPosition& position)
{
    own_known = position.status != CDataGPSPosition::kNoFix && ValidLatLon(position.latitude, position.longitude);
    if (!own_known) return;
    grid.SetOrigin(position.latitude, position.longitude);
    own_east = own_north = 0.0F;
    if (!(position.course < CDataGPSPosition::kNoBearing)) return; // 360 is a receiver's north
    const double radians = static_cast<double>(position.course) * std::numbers::pi / 180.0;
    const double velocity = kMetresPerSecondPerKnot * static_cast<double>(position.get_speed());
    own_east = static_cast<float>(velocity * std::sin(radians));
    own_north = static_cast<float>(velocity * std::cos(radians));
}

void CAISTargetManager::OnUpdate(CNEMA_AIS::VDM& message)
{
    if (message.message_type == 0) return; // not complete
    CAISTarget* target = Hear(message.mmsi, Listener<CNEMA_AIS::VDM>::pDatasource->Timestamp());
    if (target == nullptr) return;
    target->Take(message);
    if (*target->class_text == 0) return;
    target->OnUpdatedPosition();
    if (target->status == CDataGPSPosition::kNoFix) return;
    if (own_known) detect_collision(*target);
    Publish(*target);
    EnableSettings();
}

void CAISTargetManager::OnUpdate(CNEMA_AIS::VDO& message)
{
    COverlayGPSPosition& own_ship = COverlayGPSPosition::theLatestPosition;
    if (own_ship.status != CDataGPSPosition::kNoFix && own_ship.source_mark != this) return;
    const auto* class_a = std::get_if<CNEMA_AIS::CPositionReport>(&message.body);
    const CNEMA_AIS::CMotion* motion = class_a;
    if (class_a == nullptr) motion = std::get_if<CNEMA_AIS::CClassBPosition>(&message.body);
    if (motion == nullptr || !IsPlace(*motion)) return;

    own_ship.source_mark = this;
    own_ship.status = CDataGPSPosition::kFix;
    own_ship.set_latlon(motion->latitude, motion->longitude);
    if (motion->cog < CNEMA_AIS::kNoCourse)
        own_ship.set_course(motion->cog, motion->sog);
    else
        own_ship.set_course(CDataGPSPosition::kNoCourse, 0.0F);
    own_ship.set_heading(motion->heading < 360.0F ? motion->heading : CDataGPSPosition::kNoCourse, 0.0);
    if (class_a != nullptr) own_ship.time = Listener<CNEMA_AIS::VDO>::pDatasource->Timestamp();
    own_ship.DispatchPositionUpdate();
}

void CAISTargetManager::OnHeartbeat()
{
    const double now = CHeartbeat::TheHeartbeat.Timestamp();
    for (auto it = targets.begin(); it != targets.end();) {
        const auto target = it++;
        const double silent = now - target->time;
        if (silent > kRemovedSeconds) {
            Remove(target);
        } else if (silent > kLostSeconds && target->last_message != CAISTarget::kLostContact) {
            target->LoseContact();
            Publish(*target);
            if (target->alarmed) CancelSystemNotification(static_cast<int>(target->mmsi));
        }
    }
}

CAISTarget* CAISTargetManager::Hear(std::uint32_t mmsi, double now)
{
    const auto known = by_mmsi.find(mmsi);
    if (known != by_mmsi.end()) {
        targets.splice(targets.end(), targets, known->second);
    } else {
        if (by_mmsi.size() >= kMostTargets && !MakeRoom()) return nullptr;
        targets.emplace_back(mmsi);
        by_mmsi.emplace(mmsi, std::prev(targets.end()));
    }
    targets.back().time = now;
    return &targets.back();
}

bool CAISTargetManager::MakeRoom()
{
    for (auto target = targets.begin(); target != targets.end(); ++target) {
        if (target->alarmed) continue;
        Remove(target);
        return true;
    }
    return false;
}

void CAISTargetManager::Remove(Targets::iterator target)
{
    target->last_message = CAISTarget::kRemoved;
    target->status = CDataGPSPosition::kNoFix;
    DispatchToListeners<CAISTarget>(*target);
    if (target->alarmed) CancelSystemNotification(static_cast<int>(target->mmsi));
    by_mmsi.erase(target->mmsi);
    targets.erase(target);
}

void CAISTargetManager::Publish(CAISTarget& target)
{
    DispatchToListeners<CAISTarget>(target);
    target.COverlayObject::Dispatch(COverlayObject::kChanged);
}

CAISTarget* CAISTargetManager::Find(std::uint32_t mmsi)
{
    const auto known = by_mmsi.find(mmsi);
    return known != by_mmsi.end() ? &*known->second : nullptr;
}

void CAISTargetManager::Clear()
{
    while (!targets.empty()) Remove(targets.begin());
}

void CAISTargetManager::GetUpdatesForAll(COverlayObject::update_action action, Listener<COverlayObject>& listener)
{
    for (CAISTarget& target : targets) {
        target.action = action;
        listener.OnUpdate(target);
    }
}
