#include "navdata/units.h"

#include "core/listener.h"
#include "core/persistant_data.h"
#include "navdata/position_format.h"
#include "navdata/unit_tables.h"

#include <iterator>

class CDefaultUnits::Persistant : public PersistantData {
public:
    Persistant() : PersistantData("CDefaultUnits") {}
    void DeclareData() override;

    static Persistant group_of_units;
};

constexpr CDefaultUnits::CDefaultUnits() : CUnits(&pf_dm) {}

constinit CDefaultUnits CDefaultUnits::u;
constinit CUnits* CUnits::Default = &CDefaultUnits::u;
CDefaultUnits::Persistant CDefaultUnits::Persistant::group_of_units;

namespace {

struct Family {
    std::int32_t small_dist;
    std::int32_t speed;
    std::int32_t depth;
    std::int32_t temperature;
};
constexpr std::int32_t kUnchanged = -1;
constexpr Family kFamilies[] = {
    {CUnits::kFeet, CUnits::kMilesPerHour, CUnits::kDepthFeet, CUnits::kFahrenheit},
    {CUnits::kYards, CUnits::kKnots, kUnchanged, kUnchanged},
    {CUnits::kMetres, CUnits::kKilometresPerHour, CUnits::kDepthMetres, CUnits::kCelsius},
};

/// Takes a number from the settings if it is below `count`.
template <class T>
void TakeRow(std::int32_t from_file, std::size_t count, T& row)
{
    if (from_file >= 0 && static_cast<std::size_t>(from_file) < count) row = static_cast<T>(from_file);
}

} // namespace

void CUnits::set_unit_family(e_dist_units family)
{
    const Family& f = kFamilies[family];
    dist = family;
    small_dist = f.small_dist;
    speed = f.speed;
    if (f.depth != kUnchanged) depth = f.depth;
    if (f.temperature != kUnchanged) temperature = f.temperature;
}

void CUnits::SettingsModified()
{
    if (this == Default) CDefaultUnits::Persistant::group_of_units.SetModified();
}

void CUnits::Changed()
{
    SettingsModified();
    if (this == Default) DispatchToListeners<CUnits>(*this);
}

void CDefaultUnits::Persistant::DeclareData()
{
    std::int32_t rows[] = {u.dist, u.speed, u.depth, u.bearings, u.temperature};
    Declare("units", rows[0]);
    Declare("speed", rows[1]);
    Declare("depth", rows[2]);
    Declare("bearings", rows[3]);
    Declare("temperature", rows[4]);
    std::string format_name = u.position_format->name;
    Declare("posnfmt", format_name);
    Declare("magnetic_variation", u.magnetic_variation);
    Declare("bearing_lat", u.bearing_lat);
    Declare("bearing_lon", u.bearing_lon);
    Declare("bearing_time", u.bearing_time);
    if (s_saving) return;

    TakeRow(rows[0], std::size(tab_dist_units), u.dist);
    TakeRow(rows[1], std::size(tab_speed_units), u.speed);
    TakeRow(rows[2], std::size(tab_depth_units), u.depth);
    TakeRow(rows[3], 2, u.bearings);
    TakeRow(rows[4], 2, u.temperature);
    if (u.dist <= kMetric) u.small_dist = kFamilies[u.dist].small_dist;
    u.position_format = PositionFormatType::Find(format_name);
}
