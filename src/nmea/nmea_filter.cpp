#include "nmea/nmea_filter.h"

namespace {

bool IsBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

const char* SkipBlanks(const char* text)
{
    while (IsBlank(*text)) ++text;
    return text;
}

const char* SkipWord(const char* text)
{
    while (*text != 0 && !IsBlank(*text)) ++text;
    return text;
}

} // namespace

void CNMEA_rule::init(const char* text)
{
    *this = {};
    text = SkipBlanks(text);
    allow = *text == 'A' || *text == 'a';
    text = SkipBlanks(SkipWord(text));
    for (int i = 0; i < kPatternSize && text[i] != 0 && text[i] != '*' && !IsBlank(text[i]); ++i) pattern[i] = text[i];
}

void CNMEA_rule::apply(const char* sentence, bool& verdict) const
{
    if (verdict == allow) return;
    const char* at = *sentence != 0 ? sentence + 1 : sentence;
    for (const char* wanted = pattern; *wanted != 0; ++wanted, ++at)
        if (*at == 0 || (*wanted != '?' && *wanted != *at)) return;
    verdict = allow;
}

void CNMEA_filter::add(const char* text)
{
    rules.emplace_back().init(text);
}

void CNMEA_filter::add(const std::string& verdict, const std::string& pattern)
{
    CNMEA_rule rule;
    rule.allow = verdict.at(0) == 'A';
    pattern.substr(0, pattern.find('*')).copy(rule.pattern, CNMEA_rule::kPatternSize);
    rules.push_back(rule);
}

void CNMEA_filter::apply(const char* sentence, bool& verdict) const
{
    for (const CNMEA_rule& rule : rules) rule.apply(sentence, verdict);
}
