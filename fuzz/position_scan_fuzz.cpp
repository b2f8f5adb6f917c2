#include "built_seeds.h"
#include "navdata/position_format.h"

#include <cmath>
#include <cstring>
#include <memory>

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
    AddBuiltSeeds(argc, argv, seeds);
    return 0;
}

/// One text, offered to every format: what is read is a position, what is refused leaves it alone, and what was read
/// can be written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto text = std::make_unique<char[]>(size + 1); // exactly as long as its string, for the sanitizer
    if (size != 0) std::memcpy(text.get(), data, size);
    for (auto* format = CUnits::PositionFormatType::head; format != nullptr; format = format->next) {
        constexpr double kBefore = 777.0;
        double lat = kBefore, lon = kBefore;
        if (!format->scan(text.get(), lat, lon)) {
            if (lat != kBefore || lon != kBefore) __builtin_trap();
            continue;
        }
        if (!(std::fabs(lat) <= 90.0) || !(std::fabs(lon) <= 360.0)) __builtin_trap();
        std::string written;
        format->format(lat, lon, written);
        if (written == "<off grid>") continue; // a reading grid may be wider than what is written
        if (written.empty() || !format->scan(written.c_str(), lat, lon)) __builtin_trap();
    }
    return 0;
}
