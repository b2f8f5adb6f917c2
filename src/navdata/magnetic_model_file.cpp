#include "core/files.h"
#include "core/numbers.h"
#include "core/text.h"
#include "navdata/magnetic_model.h"

#include <cmath>
#include <string_view>
#include <vector>

#include <QFile>

namespace {

constexpr int kLargestFile = 100'000; ///< bytes; the standard's has 4600
constexpr std::size_t kLongestLine = 80;
constexpr double kLargestNumber = 1e6;
constexpr std::string_view kEnd = "9999";

bool ReadText(const char* path, std::string& text)
{
    if (path == nullptr || *path != ':') return path != nullptr && read_whole_file(path, text, kLargestFile);
    QFile resource(QString::fromUtf8(path));
    if (!resource.open(QIODevice::ReadOnly) || resource.size() > kLargestFile) return false;
    text = resource.readAll().toStdString();
    return true;
}

/// The next line without its end; false behind the last one.
bool TakeLine(std::string_view& text, std::string_view& line)
{
    if (text.empty()) return false;
    const std::size_t end = std::min(text.find('\n'), text.size());
    line = text.substr(0, end);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    text.remove_prefix(std::min(end + 1, text.size()));
    return true;
}

std::vector<std::string> Words(std::string_view line)
{
    std::vector<std::string> words;
    break_string_args(std::string(line), ' ', words);
    return words;
}

bool ParseNumber(const std::string& word, double& value)
{
    const auto parsed = ParseDouble(word);
    value = parsed.value_or(0.0);
    return parsed && std::fabs(value) < kLargestNumber;
}

bool ParseHead(std::string_view line, WMM_MagneticModel& model)
{
    const auto words = Words(line);
    if (words.size() < 2 || !ParseNumber(words[0], model.epoch)) return false;
    model.name = words[1];
    return true;
}

/// "n m g h g-dot h-dot".
bool ParseCoefficients(std::string_view line, WMM_MagneticModel& model, std::array<bool, kWMMCoefficients>& seen)
{
    const auto words = Words(line);
    if (line.size() > kLongestLine || words.size() < 6) return false;
    const int n = ParseInt(words[0]).value_or(0);
    const int m = ParseInt(words[1]).value_or(-1);
    if (n < 1 || n > kWMMDegree || m < 0 || m > n) return false;
    const std::size_t i = WMM_MagneticModel::Index(n, m);
    if (seen[i]) return false;
    seen[i] = true;
    return ParseNumber(words[2], model.g[i]) && ParseNumber(words[3], model.h[i]) &&
           ParseNumber(words[4], model.g_dot[i]) && ParseNumber(words[5], model.h_dot[i]);
}

} // namespace

bool WMM_readMagneticModel(const char* path, WMM_MagneticModel& model)
{
    std::string text;
    if (!ReadText(path, text)) return false;
    std::string_view rest = text;
    std::string_view line;
    if (!TakeLine(rest, line) || !ParseHead(line, model)) return false;

    std::array<bool, kWMMCoefficients> seen{};
    seen[0] = true; // no degree 0: there are no magnetic monopoles
    while (TakeLine(rest, line)) {
        if (line.starts_with(kEnd)) return std::find(seen.begin(), seen.end(), false) == seen.end();
        if (!ParseCoefficients(line, model, seen)) return false;
    }
    return false;
}
