#include "core/type_serializer.h"

/// The flat layer: the first byte chooses the string form, each further choice comes from the bytes themselves, so that
/// every operation follows every other.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CTypeMemoryIn in({data, size});
    std::uint8_t choice = 0;
    in.declare(choice);
    in.wide_strings = choice % 2 == 0;
    std::string text;
    char buffer[16];
    for (int i = 0; i < 64 && in.ok; ++i) {
        int number = 0;
        bool flag = false;
        int capacity = static_cast<int>(sizeof buffer);
        in.declare(choice);
        switch (choice % 6) {
        case 0:
            in.declare(text);
            break;
        case 1:
            in.declare(number);
            break;
        case 2:
            in.declare(flag);
            break;
        case 3:
            in.declaresize(buffer, capacity);
            break;
        case 4:
            in.getstr(buffer, 1 + choice % static_cast<int>(sizeof buffer));
            break;
        default:
            in.declaremagic(0x319E8613);
            break;
        }
        if (capacity < 0 || capacity > static_cast<int>(sizeof buffer)) __builtin_trap();
    }
    if (in.byte_count > static_cast<std::int64_t>(size)) __builtin_trap();
    return 0;
}
