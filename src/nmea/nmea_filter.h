#pragma once

#include <string>
#include <vector>

/// One rule: sentences whose text behind the start character begins with the pattern get the verdict. "?" in the
/// pattern stands for any character; an empty pattern for every sentence.
struct CNMEA_rule {
    static constexpr int kPatternSize = 6;

    bool allow = false;
    char pattern[kPatternSize + 1] = {};

    /// From "Allow GPRMC", "a GP*", "Deny ?????": a first word beginning with A or a allows; the second is the pattern,
    /// cut at 6 characters and at "*".
    void init(const char* text);
    /// Sets `verdict` to the rule's when the sentence matches.
    void apply(const char* sentence, bool& verdict) const;
};

/// Rules in order: the last that matches decides.
class CNMEA_filter {
public:
    void add(const char* text);
    /// Allows when `verdict` begins with an upper-case "A"; an empty verdict throws std::out_of_range.
    void add(const std::string& verdict, const std::string& pattern);
    void apply(const char* sentence, bool& verdict) const;
    bool empty() const { return rules.empty(); }
    void clear() { rules.clear(); }

private:
    std::vector<CNMEA_rule> rules;
};
