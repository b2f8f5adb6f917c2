#include "core/calendar.h"
#include "nmea/sentence_tools.h"

#include <climits>
#include <memory>
#include <random>

#include <gtest/gtest.h>

namespace {

/// A text in memory of exactly its size.
class CTightText {
public:
    explicit CTightText(const std::string& text) : bytes(std::make_unique<char[]>(text.size() + 1))
    {
        std::memcpy(bytes.get(), text.c_str(), text.size() + 1);
    }
    char* get() const { return bytes.get(); }

private:
    std::unique_ptr<char[]> bytes;
};

double DateOf(const std::string& field)
{
    return CNMEASentence::GetDate(CTightText(field).get());
}

} // namespace

TEST(Checksum, Verdicts)
{
    struct CCase {
        const char* name;
        const char* text;
        bool good;
    };
    const CCase cases[] = {
        {"right", "$IIMTW,11.5,C*16", true},
        {"bytes_beyond_ascii", "$\xC3\xA9*6A", true},
        {"digits_in_lower_case_are_zeroes", "$\xC3\xA9*6a", false},
        {"a_letter_that_is_a_zero_where_a_zero_is_due", "$0*3x", true},
        {"wrong", "$IIMTW,11.5,C*15", false},
        {"behind_the_digits_nothing_counts", "$IIMTW,11.5,C*16*00 junk", true},
        {"the_first_star_ends_it", "$A*41*", true},
        {"no_star", "$IIMTW,11.5,C", false},
        {"nothing_behind_the_star", "$IIMTW,11.5,C*", false},
        {"one_digit", "$A*4", false},
        {"one_digit_and_a_zero", "$0\x70*4", true},
        {"empty_body", "$*00", true},
        {"empty_body_and_no_digits", "$*", true},
        {"start_alone", "$", false},
        {"nothing", "", false},
    };
    for (const CCase& c : cases) EXPECT_EQ(CNMEASentence::check_checksum(CTightText(c.text).get()), c.good) << c.name;
}

TEST(Checksum, EveryLengthAgreesWithTheSumByteByByte)
{
    std::mt19937 random(3);
    for (std::size_t length = 0; length < 130; ++length) {
        std::string text = "!";
        while (text.size() <= length) {
            const char byte = static_cast<char>(random() % 255 + 1);
            if (byte != '*') text += byte;
        }
        std::string buffer = text + "????";
        buffer[text.size()] = 0;
        CNMEASentence::compute_checksum(buffer.data());
        EXPECT_STREQ(buffer.c_str(), WithChecksum(text).c_str());
        EXPECT_TRUE(CNMEASentence::check_checksum(CTightText(buffer.c_str()).get()));
        for (std::size_t i = 1; i <= length; ++i) {
            std::string broken = buffer;
            broken[i] ^= 0x10;
            if (broken[i] == 0 || broken[i] == '*') continue;
            EXPECT_FALSE(CNMEASentence::check_checksum(CTightText(broken).get())) << length << " " << i;
        }
    }
}

TEST(Fields, AreSplitAtCommasUpToTheChecksum)
{
    struct CCase {
        const char* text;
        std::vector<std::string> fields;
    };
    const CCase cases[] = {
        {"$GPRMC,1,2*33", {"$GPRMC", "1", "2"}},
        {"$GPRMC,1,,3,4,5*33", {"$GPRMC", "1", "", "3,4,5*33"}},
        {"$GPRMC,1*33,9", {"$GPRMC", "1", "", ""}},
        {"$GPRMC", {"$GPRMC", "", ""}},
        {",", {"", "", ""}},
        {"", {"", ""}},
        {"$GPGSV,0123456789abcdefghijklmnopqrstuvwxyz,x,0123456789abcdef,0123456789abcde,,1*33",
         {"$GPGSV", "0123456789abcdefghijklmnopqrstuvwxyz", "x", "0123456789abcdef", "0123456789abcde", "", "1", ""}},
    };
    for (const CCase& c : cases) {
        const CTightText text(c.text);
        const int count = static_cast<int>(c.fields.size());
        std::vector<char*> fields(c.fields.size());
        CNMEASentence::SplitArgs(text.get(), count, fields.data());
        const std::string last = c.fields.back();
        for (std::size_t i = 0; i + 1 < fields.size(); ++i) EXPECT_EQ(fields[i], c.fields[i]) << c.text << " " << i;
        EXPECT_EQ(std::string(fields.back()), last.substr(0, last.find(','))) << c.text;
    }
    char untouched[] = "a,b";
    CNMEASentence::SplitArgs(untouched, 0, nullptr);
    EXPECT_STREQ(untouched, "a,b");
}

TEST(Fields, BehindTheLastOneTheTextStaysUnsplit)
{
    char text[] = "$GPRMC,1,2,3*00";
    char* fields[2];
    CNMEASentence::SplitArgs(text, 2, fields);
    EXPECT_STREQ(fields[1] + 2, "2,3*00");
}

TEST(Fields, Coordinates)
{
    struct CCase {
        const char* name;
        const char* latitude;
        const char* north_south;
        double degrees;
    };
    const CCase latitudes[] = {
        {"north_is_positive", "4807.038", "N", 48 + 7.038 / 60},
        {"south_is_negative", "4807.038", "S", -(48 + 7.038 / 60)},
        {"south_by_its_first_letter", "4807.038", "South", -(48 + 7.038 / 60)},
        {"without_hemisphere", "4807.038", "", 48 + 7.038 / 60},
        {"missing_leading_zero", "512.5", "N", 0.0},
        {"longitude_in_its_place", "01131.000", "N", 0.0},
        {"empty", "", "N", 0.0},
        {"whole_minutes", "4807", "N", 0.0},
        {"whole_minutes_and_a_point", "4807.", "N", 48 + 7.0 / 60},
        {"many_digits", "4807.0380000001", "N", 48 + 7.0380000001 / 60},
        {"no_digits", "abcd.", "N", 0.0},
        {"minutes_that_are_no_number", "48na.n", "N", 48.0},
        {"minutes_beyond_reason", "48 7.0e99", "N", 48.0},
    };
    for (const CCase& c : latitudes) {
        const CTightText field(c.latitude);
        const CTightText side(c.north_south);
        char* fields[] = {field.get(), side.get()};
        EXPECT_NEAR(CNMEASentence::GetLat(fields), c.degrees, 1e-13) << c.name;
        if (std::strlen(c.latitude) < 5 || c.latitude[4] != '.') continue;
        const std::string longitude = std::string("1").append(c.latitude);
        const CTightText wide(longitude);
        const CTightText west(*c.north_south == 'S' ? "W" : "E");
        char* wide_fields[] = {wide.get(), west.get()};
        const double sign = *c.north_south == 'S' ? -1.0 : 1.0;
        const bool digits = c.latitude[0] != 'a';
        EXPECT_NEAR(CNMEASentence::GetLon(wide_fields), digits ? c.degrees + 100 * sign : 1.0, 1e-12) << c.name;
    }
}

TEST(Fields, AShortFieldDoesNotTouchItsNeighbours)
{
    DateOf("010100"); // so that no cached day answers for the fields below
    for (const char* text : {"$GPRMC,1,2,N,5.5,4807.0*00", "$GPRMC,,,N,.,4807.0*00", "$GPRMC,12,3,N,10.,4807.0*00"}) {
        const CTightText line(text);
        char* fields[6];
        CNMEASentence::SplitArgs(line.get(), 6, fields);
        EXPECT_EQ(CNMEASentence::GetLat(fields + 1), 0.0);
        EXPECT_EQ(CNMEASentence::GetLon(fields + 1), 0.0);
        EXPECT_EQ(CNMEASentence::GetUTC(fields[1]), 0);
        EXPECT_EQ(CNMEASentence::GetUTC(fields[2]), 0);
        EXPECT_EQ(CNMEASentence::GetDate(fields[4]), 0.0) << fields[4];
        EXPECT_STREQ(fields[3], "N");
        EXPECT_STREQ(fields[5], "4807.0");
    }
}

TEST(Fields, Times)
{
    struct CCase {
        const char* field;
        int seconds;
    };
    const CCase cases[] = {{"123519", 45319}, {"123519.99", 45319}, {"000000", 0},      {"235959.999", 86399},
                           {"1235", 45300},   {"12355", 45305},     {"123", 0},         {"", 0},
                           {"ab35cd", 2100},  {"1235nan", 45300},   {"12351e99", 45300}};
    for (const CCase& c : cases) EXPECT_EQ(CNMEASentence::GetUTC(CTightText(c.field).get()), c.seconds) << c.field;
}

TEST(Fields, Dates)
{
    struct CCase {
        const char* name;
        const char* field;
        double seconds;
    };
    const CCase cases[] = {
        {"plain", "230394", 3920140800.0},
        {"seventy_is_2070", "010170", 3155760000.0},
        {"three_digits_from_1900", "0101125", 1735689600.0},
        {"four_digits_as_they_are", "01011994", 757382400.0},
        {"leap_day", "290224", 1709164800.0},
        {"day_beyond_the_month", "320124", 1706745600.0},
        {"no_day_and_no_month", "000000", 943920000.0},
        {"month_13", "011324", 1735689600.0},
        {"without_a_year", "0101", 946684800.0},
        {"too_short", "010", 0.0},
        {"letters", "abcdef", 943920000.0},
    };
    DateOf("010100");
    for (const CCase& c : cases) {
        EXPECT_EQ(DateOf(c.field), c.seconds) << c.name;
        EXPECT_EQ(DateOf(c.field), c.seconds) << c.name << " again";
    }
}

TEST(Fields, ARepeatedDateIsNotReadAgain)
{
    DateOf("150624");
    const CTightText again("150624");
    EXPECT_EQ(CNMEASentence::GetDate(again.get()), 1718409600.0);
    EXPECT_STREQ(again.get(), "150624");
}

TEST(Calendar, DaysOfOddMonthsAndYears)
{
    EXPECT_EQ(getDaysSince1970(1970, 1, 1), 0);
    EXPECT_EQ(getDaysSince1970(1969, 12, 31), -1);
    EXPECT_EQ(getDaysSince1970(2000, 3, 1) - getDaysSince1970(2000, 2, 28), 2);
    EXPECT_EQ(getDaysSince1970(1900, 3, 1) - getDaysSince1970(1900, 2, 28), 1);
    EXPECT_EQ(getDaysSince1970(2024, 0, 31), getDaysSince1970(2023, 12, 31));
    EXPECT_EQ(getDaysSince1970(2024, -11, 1), getDaysSince1970(2023, 1, 1));
    EXPECT_EQ(getDaysSince1970(2024, 25, 0), getDaysSince1970(2025, 12, 31));
    EXPECT_EQ(getDaysSince1970(1'000'000'000, 1, 1), getDaysSince1970(32767, 1, 1));
    EXPECT_EQ(getDaysSince1970(0, INT_MIN, 1), getDaysSince1970(-32767, 4, 1));
}
