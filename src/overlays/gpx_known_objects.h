#pragma once

#include "overlays/overlay_mark.h"
#include "overlays/overlay_route.h"
#include "overlays/overlay_track.h"

#include <cmath>
#include <cstdint>
#include <list>
#include <unordered_map>

/// The objects of a list by their ids, and by their texts and the place where they begin, made once per import, so that
/// looking for one does not go through them all.
template <class Object>
class CKnownObjects {
public:
    explicit CKnownObjects(const std::list<Object*>& list)
    {
        for (Object* object : list) {
            if (object->object_id != 0) by_id.emplace(object->object_id, object);
            Add(object);
        }
    }

    /// Null without one, and for the id 0.
    Object* FindWithID(std::uint64_t id) const
    {
        const auto found = id != 0 ? by_id.find(id) : by_id.end();
        return found != by_id.end() ? found->second : nullptr;
    }
    /// Whether an object with equal data is there.
    bool Has(const Object& object) const
    {
        // Equal objects begin within two metres of each other, which may be in the neighbouring cell.
        const Cell middle = CellOf(object);
        const std::uint64_t texts = HashOfTexts(object);
        for (long lat = middle.lat - 1; lat <= middle.lat + 1; ++lat) {
            for (long lon = middle.lon - 1; lon <= middle.lon + 1; ++lon) {
                const auto [first, last] = by_data.equal_range(Key({lat, lon}) ^ texts);
                for (auto candidate = first; candidate != last; ++candidate) {
                    if (candidate->second->sameData(object)) return true;
                }
            }
        }
        return false;
    }
    void Add(Object* object)
    {
        if (object->object_id != 0) by_id.emplace(object->object_id, object);
        by_data.emplace(Key(CellOf(*object)) ^ HashOfTexts(*object), object);
    }

private:
    struct Cell {
        long lat;
        long lon;
    };
    static constexpr double kCellsPerDegree = 10000.0; ///< cells of eleven metres

    static std::uint64_t Key(Cell cell)
    {
        return static_cast<std::uint64_t>(cell.lat) << 32 ^ (static_cast<std::uint64_t>(cell.lon) & 0xFFFFFFFFU);
    }
    /// The same for texts that differ in the case of their letters, which objects with equal data may.
    static std::uint64_t HashOfTexts(const Object& object)
    {
        constexpr std::uint64_t kFnvPrime = 1'099'511'628'211;
        std::uint64_t hash = 14'695'981'039'346'656'037U;
        for (const std::string* text : {&object.name, &object.comment, &object.category})
            for (const char c : *text) hash = (hash ^ static_cast<unsigned char>(c | 0x20)) * kFnvPrime;
        return hash;
    }
    static Cell CellAt(double lat, double lon)
    {
        return {std::lround(lat * kCellsPerDegree), std::lround(lon * kCellsPerDegree)};
    }
    static Cell CellOf(const COverlayMark& mark) { return CellAt(mark.lat, mark.lon); }
    static Cell CellOf(const COverlayRoute& route)
    {
        const COverlayMark* first = route.FirstWaypoint();
        return first != nullptr ? CellAt(first->lat, first->lon) : CellAt(COverlayMark::kNoPosition, 0.0);
    }
    static Cell CellOf(const COverlayTrack& track)
    {
        const CTrackPoint* first = track.FirstPoint();
        return first != nullptr ? CellAt(first->lat, first->lon) : CellAt(COverlayMark::kNoPosition, 0.0);
    }

    std::unordered_map<std::uint64_t, Object*> by_id;
    std::unordered_multimap<std::uint64_t, Object*> by_data;
};
