#include "core/message_sink.h"

#include <QDebug>

namespace {

/// Used while nobody shows messages: no dialog will ever be closed, so `done` follows at once.
struct CLoggingSink : IMessageSink {
    void Show(ZT_HWND, const std::string& title, const std::string& text, std::function<void()> done) override
    {
        qInfo("%s: %s", title.c_str(), text.c_str());
        if (done) done();
    }
    void Hint(ZT_HWND, const std::string& text) override { qInfo("%s", text.c_str()); }
    void Status(const std::string&) override {}
};

IMessageSink* sink_in_force = nullptr;

} // namespace

IMessageSink& TheMessageSink()
{
    static CLoggingSink logger;
    return sink_in_force != nullptr ? *sink_in_force : logger;
}

IMessageSink* SetMessageSink(IMessageSink* sink)
{
    IMessageSink* before = sink_in_force;
    sink_in_force = sink;
    return before;
}

void ShowMessage(ZT_HWND parent, const std::string& title, const std::string& text, std::function<void()> done)
{
    TheMessageSink().Show(parent, title, text, std::move(done));
}

void SetStatusMessage(const std::string& text)
{
    TheMessageSink().Status(text);
}

void ClearStatusMessage()
{
    TheMessageSink().Status({});
}
