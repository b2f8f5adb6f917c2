#include "overlays/mark_manager.h"
#include "overlays/overlay_mark.h"

#include <cmath>

class COverlayMark::cType : public Type {
public:
    cType() : Type(kTypeId) {}
    CSerializable* Create() const override { return new COverlayMark; }

    static const cType mark_type;
};

const COverlayMark::cType COverlayMark::cType::mark_type;

namespace {

void KeepRadius(float& metres)
{
    if (!(std::isfinite(metres) && metres >= 0.0F)) metres = 0.0F;
}

} // namespace

bool COverlayMark::Serialize(IOStream& stream)
{
    Section section(stream);
    double created_in_record = created;
    const bool plain = section.declare(name) && section.declare(lat) && section.declare(lon) &&
                       section.declare(created_in_record) && section.declare(link) && section.declare(comment) &&
                       section.declare(goto_target) && section.declare(locked) && section.declare(icon_name) &&
                       section.declarecolor(colour) && section.declare(anchor_radius) && section.declare(alarm_radius);
    const bool has_sync_block = !creating_route && !section.atEnd();
    const bool whole = plain && (!has_sync_block || SerializeSyncable(stream)) && section.declare(category);
    if (section.reading()) AfterReading(created_in_record);
    return whole;
}

void COverlayMark::AfterReading(double created_in_record)
{
    icon_name = CIconManager::to_file_name(icon_name);
    icon = nullptr;
    if (created_in_record != 0.0 && created_in_record < created) created = created_in_record;
    if (!HasPosition()) lat = lon = kNoPosition;
    KeepRadius(anchor_radius);
    KeepRadius(alarm_radius);
}

bool COverlayMark::SyncObject(IOStream& stream, double)
{
    const bool was_target = isNavigatingToMark();
    const bool whole = Serialize(stream);
    if (whole && stream.reading() && goto_target && !was_target) g_mark_manager.SetGoto(this);
    if (stream.reading()) goto_target = isNavigatingToMark();
    return whole;
}
