#pragma once

#include <string>

/// Parts a position as a user types it into the text of its latitude and of its longitude: at the first comma, before
/// the longitude's letter when the letters come first, behind the latitude's letter, or at a blank behind a number (of
/// several the middle one, so that "54 30 10 12" are two times degrees and minutes). False when nothing parts it.
bool SplitPosition(const char* text, std::string& latitude, std::string& longitude);

/// Degrees with or without minutes and seconds, each with a decimal fraction, parted by degree signs, primes, blanks,
/// ":" or "-"; the letter of a hemisphere stands in front or behind. A sign counts for the whole angle, and the
/// negative letter turns it around. 999.0 for anything else.
double scan_deg_min_sec(const std::string& text, char positive_letter, char negative_letter);
