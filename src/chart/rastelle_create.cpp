#include "chart/rastelle.h"
#include "chart/rastelle1.h"
#include "chart/rastelle3.h"
#include "core/files.h"
#include "core/message_sink.h"

#include <map>
#include <unistd.h>

namespace {

struct SharedChart {
    CRastelle* chart = nullptr;
    int count = 0;
};

/// The charts that Create has given out, by path. Main thread only.
std::map<std::string, SharedChart>& SharedCharts()
{
    static std::map<std::string, SharedChart> charts;
    return charts;
}

struct FirstWords {
    std::uint32_t magic = 0;
    std::uint32_t version = 0;
};

/// How many of the first bytes of a regular file could be read; -1 when it could not be opened.
ssize_t ReadFirstWords(const char* path, FirstWords& words)
{
    const int file = openRegularHandle(path);
    if (file < 0) return -1;
    const ssize_t got = read(file, &words, sizeof(words));
    close(file);
    return got;
}

/// A closed chart of the class that the file's family asks for; null when there is none.
CRastelle* MakeChart(ZT_HWND parent, const char* path, CRastelle::WrongMagic wrong_magic)
{
    using Header = CRastelle::Header;
    FirstWords words;
    const ssize_t got = ReadFirstWords(path, words);
    if (got < static_cast<ssize_t>(sizeof(words.magic))) return nullptr;
    if ((words.magic | 1U) != Header::kMagic) {
        // Deliberate, and only for a file whose first bytes are known to be something else.
        if (wrong_magic == CRastelle::WrongMagic::remove) unlink(path);
        return nullptr;
    }
    if (got < static_cast<ssize_t>(sizeof(words))) return nullptr;
    const std::uint32_t family = words.version & Header::kFamilyMask;
    if (family == Header::kFamilyFlat) return new CRastelle1;
    if (Header::IsChunked(family)) return new CRastelle3;
    if (family == Header::kFamilyRL2) ShowMessage(parent, "Problem", CRastelle::kRL2Message);
    return nullptr;
}

} // namespace

CRastelle* CRastelle::CreateNew(ZT_HWND parent, const char* path, std::function<void(CRastelle*, bool)> done,
                                WrongMagic wrong_magic)
{
    CRastelle* chart = MakeChart(parent, path, wrong_magic);
    if (chart != nullptr) chart->Open(parent, path, [&](bool opened) { done(chart, opened); });
    return chart;
}

CRastelle* CRastelle::Create(ZT_HWND parent, const char* path, std::function<void(CRastelle*, bool)> done)
{
    auto& charts = SharedCharts();
    SharedChart& shared = charts[path];
    if (shared.chart != nullptr) {
        ++shared.count;
        CRastelle* chart = shared.chart;
        done(chart, chart->open);
        return chart;
    }
    CRastelle* chart = MakeChart(parent, path, WrongMagic::remove);
    if (chart == nullptr) {
        charts.erase(path);
        return nullptr;
    }
    // Entered before it opens: the callback may ask for the same path or give the chart back.
    shared = {chart, 1};
    chart->Open(parent, path, [&](bool opened) { done(chart, opened); });
    const auto entry = charts.find(path);
    return entry != charts.end() && entry->second.chart == chart ? chart : nullptr;
}

void CRastelle::Destroy()
{
    auto& charts = SharedCharts();
    for (auto entry = charts.begin(); entry != charts.end(); ++entry) {
        if (entry->second.chart != this) continue;
        if (--entry->second.count > 0) return;
        charts.erase(entry);
        break;
    }
    delete this;
}
