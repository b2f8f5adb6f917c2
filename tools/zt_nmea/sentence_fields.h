#pragma once

#include "nmea/nmea_sentence.h"
#include "tools/zt_nmea/json_line.h"

/// Adds the fields of a sentence that has been read. Does nothing for a class that is not in the list.
void DescribeFields(CJsonLine& json, const char* type, const CNMEASentence& sentence);
