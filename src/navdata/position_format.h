#pragma once

#include "navdata/units.h"

#include <string>

/// Positions are degrees on WGS84, north and east positive.
class CUnits::PositionFormatType {
public:
    /// Joins the list; `format_name` stands in the menu and in the settings.
    explicit PositionFormatType(const char* format_name) : next(head), name(format_name) { head = this; }
    PositionFormatType(const PositionFormatType&) = delete;
    PositionFormatType& operator=(const PositionFormatType&) = delete;
    virtual ~PositionFormatType() = default;

    /// Replaces `out`. Where a grid does not reach it is "<off grid>"; empty for numbers that are no position.
    virtual void format(double lat, double lon, std::string& out) const = 0;
    /// Reads what a user typed. False, with the position untouched, for anything that is no position in this format.
    virtual bool scan(const char* text, double& lat, double& lon) const = 0;

    /// The format of that name, or pf_dm.
    static const PositionFormatType* Find(const std::string& name);

    const PositionFormatType* next;
    const char* const name;

    static constinit const PositionFormatType* head;
};

/// Latitude, longitude: reads degrees, minutes and seconds in any of the three ways.
class CUnits::PosFmtLatLon : public PositionFormatType {
public:
    /// `appendPosition`'s style.
    PosFmtLatLon(const char* format_name, int position_style) : PositionFormatType(format_name), style(position_style)
    {}
    void format(double lat, double lon, std::string& out) const override;
    /// Latitudes to 89 degrees, longitudes to 360. Halves are parted by a comma or a space.
    bool scan(const char* text, double& lat, double& lon) const override;

private:
    int style;
};

class CUnits::PosFmtDeg : public PosFmtLatLon {
public:
    PosFmtDeg() : PosFmtLatLon("Degrees", 0) {}
};

class CUnits::PosFmtDegMin : public PosFmtLatLon {
public:
    PosFmtDegMin() : PosFmtLatLon("Deg,Min", 1) {}
};

class CUnits::PosFmtDMS : public PosFmtLatLon {
public:
    PosFmtDMS() : PosFmtLatLon("Deg,Min,Sec", 2) {}
};

/// The format of who has chosen none.
extern const CUnits::PosFmtDegMin pf_dm;
