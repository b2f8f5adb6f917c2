#include "built_seeds.h"
#include "navdata/position_format.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    std::vector<std::string> seeds = {"54 30.6 N 010 15 E", "N54\u00b030'.6 W010\u2032", "tg514131", "-33.5,151"};
    for (auto* format = CUnits::PositionFormatType::head; format != nullptr; format = format->next) {
        std::string text;
        format->format(51.4778, -0.0014, text);
        seeds.push_back(text);
        format->format(-41.2889, 174.7772, text);
        seeds.push_back(text);
    }
    AddBuiltSeeds(argc, argv, seeds, 240); // texts of 200 characters and more are refused unread
    return 0;
}

namespace {

using Format = CUnits::PositionFormatType;

/// The formats of each way of reading: that of latitude and longitude has several of writing.
std::vector<std::vector<const Format*>> FormatsByReader()
{
    std::vector<std::vector<const Format*>> readers(1);
    for (const Format* format = Format::head; format != nullptr; format = format->next) {
        if (dynamic_cast<const CUnits::PosFmtLatLon*>(format) != nullptr)
            readers.front().push_back(format);
        else
            readers.push_back({format});
    }
    return readers;
}

void WriteAndReadAgain(const Format& format, double lat, double lon)
{
    static std::string written;
    format.format(lat, lon, written);
    if (written == "<off grid>") return; // a reading grid may be wider than what is written
    if (written.empty() || !format.scan(written.c_str(), lat, lon)) __builtin_trap();
}

} // namespace

/// One text, offered to every reader: what is read is a position, what is refused leaves it alone, and what was read
/// can be written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto readers = FormatsByReader();
    const auto text = std::make_unique<char[]>(size + 1); // exactly as long as its string, for the sanitizer
    if (size != 0) std::memcpy(text.get(), data, size);
    for (const std::vector<const Format*>& formats : readers) {
        constexpr double kBefore = 777.0;
        double lat = kBefore, lon = kBefore;
        if (!formats.front()->scan(text.get(), lat, lon)) {
            if (lat != kBefore || lon != kBefore) __builtin_trap();
            continue;
        }
        if (!(std::fabs(lat) <= 90.0) || !(std::fabs(lon) <= 360.0)) __builtin_trap();
        for (const Format* format : formats) WriteAndReadAgain(*format, lat, lon);
    }
    return 0;
}
