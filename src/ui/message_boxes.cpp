#include "ui/message_boxes.h"

#include "ui/ui_context.h"

#include <cstdarg>
#include <cstdio>
#include <iterator>
#include <utility>

namespace {

constexpr const char* kOk = "  OK  ";
constexpr const char* kYes = "  Yes  ";
constexpr const char* kNo = " No ";
constexpr const char* kGotIt = " Got it! ";

struct MessageForm {
    const char* title;
    const char* button;
};
constexpr MessageForm kMessageForms[] = {{"Information", kOk}, {"Warning", kOk}, {"Error", kOk}, {"Hint", kGotIt}};

std::string FormatList(const char* format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length <= 0) return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, arguments);
    text.pop_back();
    return text;
}

} // namespace

void CMessageBoxDlg::onButtonClicked(int button)
{
    if (IsClosing() || m_answered) return;
    m_answered = true;
    const QPointer<CMessageBoxDlg> alive(this);
    if (const auto call = std::exchange(callback, {})) call(button);
    if (alive) closeDialog(button);
}

bool MessageBox3(ZT_HWND parent, const std::string& title, const std::string& message,
                 std::function<void(int)> callback, const std::string& button0, const std::string& button1,
                 const std::string& button2)
{
    return CZTDialog::ShowDialog<CMessageBoxDlg>(parent, [&](CMessageBoxDlg* box) {
               box->title = QString::fromStdString(title);
               box->message = QString::fromStdString(message);
               box->button0 = QString::fromStdString(button0);
               box->button1 = QString::fromStdString(button1);
               box->button2 = QString::fromStdString(button2);
               box->callback = std::move(callback);
           }) != nullptr;
}

bool MessageBox3(ZT_HWND parent, const std::string& title, const std::string& message, void (*function)(void*, int),
                 void* user, const std::string& button0, const std::string& button1, const std::string& button2)
{
    std::function<void(int)> callback;
    if (function != nullptr) callback = [function, user](int button) { function(user, button); };
    return MessageBox3(parent, title, message, std::move(callback), button0, button1, button2);
}

bool MessageBoxOK(ZT_HWND parent, const std::string& title, const std::string& message, std::function<void()> done)
{
    return MessageBox3(
        parent, title, message,
        [done = std::move(done)](int) {
            if (done) done();
        },
        kOk);
}

bool MessageBoxYesNo(ZT_HWND parent, const std::string& title, const std::string& message,
                     std::function<void(int)> callback)
{
    return MessageBox3(parent, title, message, std::move(callback), kYes, kNo);
}

bool MessageBoxYes(ZT_HWND parent, const std::string& title, const std::string& message, std::function<void()> yes)
{
    return MessageBoxYesNo(parent, title, message, [yes = std::move(yes)](int button) {
        if (button == 0 && yes) yes();
    });
}

bool MessageBoxHint(ZT_HWND parent, const std::string& text)
{
    return MessageBox3(parent, "Hint", text, {}, kGotIt);
}

void messageprintf(ZT_HWND parent, int flags, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const std::string text = FormatList(format, arguments);
    va_end(arguments);
    const bool known = flags >= 0 && flags < static_cast<int>(std::size(kMessageForms));
    const MessageForm& form = kMessageForms[known ? flags : kMessageInformation];
    MessageBox3(parent, form.title, text, {}, form.button);
}

void CMessageBoxSink::Show(ZT_HWND parent, const std::string& title, const std::string& text,
                           std::function<void()> done)
{
    MessageBoxOK(parent, title, text, std::move(done));
}

void CMessageBoxSink::Hint(ZT_HWND parent, const std::string& text)
{
    MessageBoxHint(parent, text);
}

void CMessageBoxSink::Status(const std::string& text)
{
    if (IUiContext* context = TheUiContext()) context->SetStatusText(QString::fromStdString(text));
}
