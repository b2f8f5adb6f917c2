#include "nmea/nmea_filter.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace {

bool Passes(const std::vector<const char*>& rules, const char* sentence, bool start = true)
{
    CNMEA_filter filter;
    for (const char* rule : rules) filter.add(rule);
    bool verdict = start;
    filter.apply(sentence, verdict);
    return verdict;
}

} // namespace

TEST(Filter, RuleTexts)
{
    struct CCase {
        const char* text;
        bool allow;
        const char* pattern;
    };
    const CCase cases[] = {{"Allow GPRMC", true, "GPRMC"},
                           {" \t a  GP* ", true, "GP"},
                           {"Deny ?????", false, "?????"},
                           {"aloof GPRMCXY", true, "GPRMCX"},
                           {"Deny", false, ""},
                           {"Allow GP RMC", true, "GP"},
                           {"Allow GPRMC\n", true, "GPRMC"},
                           {"", false, ""},
                           {"GPRMC", false, ""}};
    for (const CCase& c : cases) {
        CNMEA_rule rule;
        rule.init("Allow ??????");
        rule.init(c.text);
        EXPECT_EQ(rule.allow, c.allow) << c.text;
        EXPECT_STREQ(rule.pattern, c.pattern) << c.text;
    }
}

TEST(Filter, TheLastRuleThatMatchesDecides)
{
    EXPECT_TRUE(Passes({"Deny", "Allow GPRMC"}, "$GPRMC,1"));
    EXPECT_FALSE(Passes({"Deny", "Allow GPRMC"}, "$GPGGA,1"));
    EXPECT_FALSE(Passes({"Allow GPRMC", "Deny"}, "$GPRMC,1"));
    EXPECT_FALSE(Passes({"Deny ??RMC"}, "$GNRMC,1"));
    EXPECT_TRUE(Passes({"Deny ??RMC"}, "$GNGGA,1"));
    EXPECT_FALSE(Passes({"Deny G*MC"}, "!GXYZ"));
    EXPECT_TRUE(Passes({"Allow II"}, "$IIMWV", false));
    EXPECT_TRUE(Passes({}, "$IIMWV", true));
    EXPECT_FALSE(Passes({}, "$IIMWV", false));
}

TEST(Filter, APatternDoesNotReachBeyondTheSentence)
{
    EXPECT_TRUE(Passes({"Deny ??????"}, "$GPRMC"));
    EXPECT_FALSE(Passes({"Deny ?????"}, "$GPRMC"));
    EXPECT_TRUE(Passes({"Deny ?"}, "$"));
    EXPECT_TRUE(Passes({"Deny ?"}, ""));
}

TEST(Filter, RulesOfVerdictAndPattern)
{
    CNMEA_filter filter;
    EXPECT_TRUE(filter.empty());
    EXPECT_THROW(filter.add(std::string(), std::string("GP")), std::out_of_range);
    EXPECT_TRUE(filter.empty());
    filter.add(std::string("Allow"), std::string("GPRMCXY"));
    filter.add(std::string("allow"), std::string("GP*RMC"));
    bool verdict = false;
    filter.apply("$GPRMCX", verdict);
    EXPECT_FALSE(verdict);
    filter.clear();
    filter.add(std::string("A"), std::string("GPRMCXY"));
    filter.apply("$GPRMCX", verdict);
    EXPECT_TRUE(verdict);
}
