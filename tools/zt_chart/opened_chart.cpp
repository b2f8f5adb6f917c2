#include "tools/zt_chart/opened_chart.h"

#include "chart/rastelle1.h"
#include "core/files.h"
#include "core/message_sink.h"

#include <cstring>

namespace {

/// Keeps the last message instead of showing it.
class CKeptMessage : public IMessageSink {
public:
    CKeptMessage() : before(SetMessageSink(this)) {}
    ~CKeptMessage() override { SetMessageSink(before); }
    CKeptMessage(const CKeptMessage&) = delete;
    CKeptMessage& operator=(const CKeptMessage&) = delete;

    void Show(ZT_HWND, const std::string&, const std::string& shown, std::function<void()> done) override
    {
        text = shown;
        if (done) done();
    }
    void Hint(ZT_HWND, const std::string&) override {}
    void Status(const std::string&) override {}

    std::string text;

private:
    IMessageSink* before;
};

/// All of a chart but its pixels.
class CHeaderOfChart : public CRastelle {
public:
    int ReadBlock(int, int, int level, unsigned char* out, ThreadDataForRead*) override
    {
        std::memset(out, 0, static_cast<std::size_t>(kTilePixels >> level));
        return 1;
    }
};

} // namespace

COpenedChart::COpenedChart(const std::string& path, Need need)
{
    if (!isRegularFile(path)) {
        error = "cannot open " + path + ": not a regular file";
        return;
    }
    CKeptMessage message;
    bool opened = false;
    const auto note = [&opened](CRastelle*, bool good) { opened = good; };
    chart.reset(CRastelle::CreateNew({}, path.c_str(), note, CRastelle::WrongMagic::keep));
    if (!chart && message.text.empty()) {
        // The program is silent about a file that is no chart at all; the opening of a chart file has words for it.
        CRastelle1 flat;
        flat.Open({}, path.c_str(), [](bool) {});
    }
    if (opened) return;
    error = !message.text.empty() ? message.text : "cannot open " + path;
    const bool header_suffices = need == Need::header && chart && message.text.empty();
    chart.reset();
    if (!header_suffices) return;
    chart = std::make_unique<CHeaderOfChart>();
    chart->Open({}, path.c_str(), [&opened](bool good) { opened = good; });
    if (!opened) chart.reset();
}
