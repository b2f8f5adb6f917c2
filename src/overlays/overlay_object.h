#pragma once

#include "core/geometry.h"
#include "core/zt_hwnd.h"
#include "overlays/mapping.h"
#include "overlays/view_params.h"

#include <compare>
#include <cstdint>

class CPolynomialProjection;
class CRastelleView;
class QPainter;

/// Something that is drawn over a chart: a mark, a route, a piece of a track, a moving target. Every change is
/// published through Listener<COverlayObject>. Main thread only.
class COverlayObject {
public:
    using CMapping = ::CMapping;
    using CViewParams = ::CViewParams;

    enum object_type : std::uint32_t {
        kMark = 0,
        kRoute = 1,
        kTrackSection = 2,
        kWaypoint = 5,
        kMovingTarget = 6,
    };
    enum update_action : std::uint32_t {
        kChanged = 0,     ///< geometry or content: a view maps the object anew
        kLookChanged = 1, ///< a view only repaints
        kDeleted = 2,     ///< a view forgets the object, and must not call it any more
        kAllGone = 3,     ///< a view empties its list; the object that carries this is a temporary one
    };
    /// Views show the classes in this order, the last on top.
    enum order_class : unsigned {
        kLines = 2,   ///< routes and track sections
        kTargets = 5, ///< moving targets
        kPoints = 10, ///< marks and waypoints
    };
    /// What a view files an object by: `number` orders, the address tells objects with equal numbers apart.
    struct Key {
        std::uint32_t number = 0;
        const COverlayObject* object = nullptr;
        friend auto operator<=>(const Key&, const Key&) = default;
    };

    object_type type;
    update_action action = kChanged; ///< the change being published, set just before a dispatch
    std::uint32_t order_key;         ///< the order class << 28

    COverlayObject(unsigned order, object_type new_type) : type(new_type), order_key(order << 28) {}
    COverlayObject(const COverlayObject&) = delete;
    COverlayObject& operator=(const COverlayObject&) = delete;

    /// Publishes kDeleted, so that every view drops the dying object.
    virtual ~COverlayObject();
    /// Fills the mapping, which comes cleared, for a chart.
    virtual void Map(CMapping& mapping, const CPolynomialProjection& projection) const = 0;
    virtual void Draw(QPainter* painter, const CViewParams& params, CMapping& mapping) const = 0;
    virtual bool isVisible() { return true; }
    /// The handlers get the place on the screen (device pixels) and on the chart (chart pixels). Not 0: taken.
    virtual int onTap(CRastelleView*, const FPoint&, const DblPoint&) { return 0; }
    virtual int onMouseDown(CRastelleView*, const FPoint&, const DblPoint&) { return 0; }
    virtual int onMouseMove(CRastelleView*, const FPoint&, const DblPoint&) { return 0; }
    virtual void onMouseUp(CRastelleView*) {}
    virtual void onMenuDown(ZT_HWND) {}
    virtual int onRightClick(CRastelleView*, const FPoint&, const DblPoint&) { return 0; }

    /// Stores the action and publishes the object.
    void Dispatch(update_action new_action);
    /// The order key plus 28 bits of the address; it also identifies the object's system notification.
    std::uint32_t Number() const;
    Key ViewKey() const { return {Number(), this}; }
};
