#include "overlays/mark_manager.h"
#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"

class COverlayRoute::cType : public Type {
public:
    cType() : Type(kTypeId) {}
    CSerializable* Create() const override { return new COverlayRoute; }

    static const cType route_type;
};

const COverlayRoute::cType COverlayRoute::cType::route_type;

bool COverlayRoute::Serialize(IOStream& stream)
{
    const COverlayMark::CCreatingRoute waypoints_follow;
    Section section(stream);
    if (section.reading()) ClearSegments();
    const bool plain = section.declare(name) && SerializeAppearance(stream) &&
                       CSerializableDeclareStatic(section, waypoints) && section.declare(comment) &&
                       section.declare(following);
    const bool whole = plain && (section.atEnd() || SerializeSyncable(stream)) && section.declare(category);
    if (section.reading()) AfterReading();
    return whole;
}

void COverlayRoute::AfterReading()
{
    for (COverlayMark* waypoint : waypoints) Adopt(*waypoint);
    if (!waypoints.empty() && created > waypoints.front()->created) created = waypoints.front()->created;
}

bool COverlayRoute::SyncObject(IOStream& stream, double)
{
    const bool reading = stream.reading();
    const bool was_followed = g_mark_manager.navigation.route == this;
    const bool whole = Serialize(stream);
    if (!reading) return whole;
    if (whole && following && !was_followed) g_mark_manager.SetFollowRoute(this);
    following = g_mark_manager.navigation.route == this;
    return whole;
}
