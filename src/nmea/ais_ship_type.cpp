#include "nmea/ais_sentences.h"

#include <array>
#include <string_view>

// The texts of all 256 types stand ready, so that a message only points at its own.

namespace CNEMA_AIS {
namespace {

constexpr std::size_t kLongest = 24;
constexpr std::size_t kLongestSuffix = 10;

constexpr std::string_view kThirties[10] = {"Fishing",  "Towing",  "Big Towing",     "Dredging", "Diving",
                                            "Military", "Sailing", "Pleasure craft", "Type 38",  "Type 39"};
constexpr std::string_view kFifties[10] = {
    "Pilot",           "Search and rescue", "Tug",     "Tender",  "Anti-pollution",
    "Law enforcement", "Type 56",           "Type 57", "Medical", "Type 59"};
constexpr std::string_view kTens[10] = {"Unknown",        "1",          "WIG",    "",    "HSC", "",
                                        "Passenger ship", "Cargo ship", "Tanker", "Ship"};
constexpr std::string_view kUnits[10] = {"", ":Haz A", ":Haz B", ":Haz C", ":Haz D", "", "", "", "", ""};

/// A text that grows up to kLongest characters.
struct CTypeText {
    std::array<char, kLongest + 1> text = {};
    std::size_t length = 0;

    constexpr void Append(std::string_view more)
    {
        for (const char c : more.substr(0, kLongest - length)) text[length++] = c;
    }
    constexpr void AppendNumber(int number)
    {
        if (number >= 10) AppendNumber(number / 10);
        const char digit[] = {static_cast<char>('0' + number % 10)};
        Append({digit, 1});
    }
};

constexpr CTypeText TextOf(int type)
{
    CTypeText text;
    const std::size_t tens = static_cast<std::size_t>(type) / 10;
    const std::size_t units = static_cast<std::size_t>(type) % 10;
    if (type > 99) {
        text.Append("Type ");
        text.AppendNumber(type);
    } else if (tens == 3) {
        text.Append(kThirties[units]);
    } else if (tens == 5) {
        text.Append(kFifties[units]);
    } else {
        text.Append(kTens[tens]);
        text.Append(kUnits[units].substr(0, kLongestSuffix));
    }
    return text;
}

constexpr auto kTexts = [] {
    std::array<CTypeText, 256> texts;
    for (int type = 0; type < 256; ++type) texts[static_cast<std::size_t>(type)] = TextOf(type);
    return texts;
}();

} // namespace

const char* CAIS_Sentence::decode_type(unsigned char type)
{
    return kTexts[type].text.data();
}

} // namespace CNEMA_AIS
