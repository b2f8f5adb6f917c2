#include "navdata/position_format.h"

constinit const CUnits::PositionFormatType* CUnits::PositionFormatType::head = nullptr;

const CUnits::PositionFormatType* CUnits::PositionFormatType::Find(const std::string& name)
{
    for (const PositionFormatType* format = head; format != nullptr; format = format->next) {
        if (name == format->name) return format;
    }
    return &pf_dm;
}
