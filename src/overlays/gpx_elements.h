#pragma once

#include "core/xml_document.h"

#include <cstdint>
#include <string>

class COverlayMark;
struct CLineAppearance;
struct CTrackPoint;

/// The id in the element's "src" or, failing that, in its "desc"; 0 without one.
std::uint64_t ObjectIDFromSrc(CXMLnode node);
/// The comment of "desc" and, where it says something else, of "cmt"; what follows "Source: ztid:" is left out.
void read_gpx_comment(CXMLnode node, std::string& out);
/// The position of a point, degrees; false when it is missing, not finite or out of range.
bool read_gpx_position(CXMLnode node, double& lat, double& lon);
/// Fills the mark, whose position has been read.
void read_wpt(CXMLnode node, COverlayMark& mark);
void read_trkpt(CXMLnode node, CTrackPoint& point);
/// Takes the line's looks out of an "extensions" element.
void read_line_style(CXMLnode node, CLineAppearance& line);
