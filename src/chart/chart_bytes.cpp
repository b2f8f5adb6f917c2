#include "chart/chart_bytes.h"

#include "core/text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::uint64_t kPage = 4096;
/// Bytes that an item of the header seldom passes.
constexpr std::uint64_t kUsualItem = 64;

} // namespace

CChartFile::CChartFile(int folder, const char* name)
    : file(openat(folder, name, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY))
{
    if (file < 0) return;
    struct stat status {};
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        size = static_cast<std::uint64_t>(status.st_size);
        last_write_ns = status.st_mtim.tv_sec * 1'000'000'000LL + status.st_mtim.tv_nsec;
        return;
    }
    close(file);
    file = -1;
}

CChartFile::~CChartFile()
{
    if (file >= 0) close(file);
}

std::size_t CChartFile::Read(std::uint64_t position, std::span<std::uint8_t> out)
{
    if (position >= size) return 0;
    std::size_t got = 0;
    while (got < out.size()) {
        const ssize_t count = pread(file, out.data() + got, out.size() - got, static_cast<off_t>(position + got));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        got += static_cast<std::size_t>(count);
        if (position + got >= size) break; // saves the read that would say so
    }
    return got;
}

void CWindowedBytes::Prefetch(std::span<const std::uint64_t> positions)
{
    std::size_t best = 0;
    std::uint64_t last = 0;
    for (const std::uint64_t start : positions) {
        if (start == 0 || start >= bytes.Size()) continue;
        std::size_t inside = 0;
        std::uint64_t furthest = start;
        for (const std::uint64_t position : positions) {
            if (position < start || position - start >= kWindow) continue;
            ++inside;
            furthest = std::max(furthest, position);
        }
        if (inside <= best) continue;
        best = inside;
        window_start = start;
        last = furthest;
    }
    // Ending with the page that holds the last item, the window mostly costs the system one page instead of two.
    const std::uint64_t end = (last + kUsualItem + kPage - 1) / kPage * kPage;
    window_size =
        best == 0 ? 0 : bytes.Read(window_start, std::span(window).first(std::min(kWindow, end - window_start)));
}

std::span<const std::uint8_t> CWindowedBytes::InWindow(std::uint64_t position) const
{
    if (position < window_start || position - window_start >= window_size) return {};
    return std::span(window).subspan(position - window_start, window_size - (position - window_start));
}

bool CWindowedBytes::Read(std::uint64_t position, std::span<std::uint8_t> out)
{
    const auto there = InWindow(position);
    if (there.size() < out.size()) return bytes.Read(position, out) == out.size();
    std::ranges::copy(there.first(out.size()), out.begin());
    return true;
}

std::string CWindowedBytes::Text(std::uint64_t position)
{
    if (position == 0) return {};
    std::array<std::uint8_t, kLongestText> own;
    std::span<const std::uint8_t> text = InWindow(position);
    const bool whole = text.size() >= kLongestText || std::ranges::find(text, 0) != text.end() ||
                       position + text.size() == bytes.Size();
    if (!whole) text = std::span(own).first(bytes.Read(position, own));
    text = text.first(std::min(text.size(), kLongestText));
    const auto end = std::ranges::find(text, 0);
    const auto length = static_cast<std::size_t>(end - text.begin());
    return Latin1ToUtf8({reinterpret_cast<const char*>(text.data()), length});
}
