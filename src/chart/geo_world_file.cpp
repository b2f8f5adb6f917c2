#include "chart/polynomial_projection.h"
#include "core/files.h"
#include "core/numbers.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string_view>

namespace {

using world_numbers = std::array<double, 6>;

std::optional<world_numbers> ReadSixNumbers(const char* path)
{
    FILE* file = openRegularFile(path, "rb");
    if (file == nullptr) return {};
    char buffer[255];
    std::string_view text(buffer, std::fread(buffer, 1, sizeof(buffer), file));
    std::fclose(file);
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    world_numbers numbers;
    for (double& number : numbers) {
        text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
        const auto word = text.substr(0, text.find_first_of(kBlanks));
        const auto value = ParseDouble(word);
        if (!value) return {};
        number = *value;
        text.remove_prefix(word.size());
    }
    return numbers;
}

} // namespace

bool CPolynomialProjection::ReadGeoWorldFile(const char* path, int new_width, int new_height)
{
    valid = false;
    const auto numbers = ReadSixNumbers(path);
    if (!numbers) return false;
    const auto& p = *numbers;
    const double d = 1.0 / (p[1] * p[2] - p[0] * p[3]);
    if (!std::isfinite(d)) return false;
    const double new_inverse[2][10] = {{p[5], p[2], p[3]}, {p[4], p[0], p[1]}};
    const double new_forward[2][10] = {{(p[3] * p[4] - p[1] * p[5]) * d, p[1] * d, -p[3] * d},
                                       {(p[0] * p[5] - p[2] * p[4]) * d, -p[0] * d, p[2] * d}};
    init(new_forward, new_inverse, new_width, new_height, 0.0, 0.0);
    return true;
}
