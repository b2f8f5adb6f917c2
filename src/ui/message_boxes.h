#pragma once

#include "core/message_sink.h"
#include "ui/zt_dialog.h"

#include <string>

/// The box behind every message: a title, a text and up to three buttons; a button without text is not there. Return
/// and Enter press the highlighted button, which is button 0 at first; Escape and Back press button 1, even when the
/// box has only button 0.
class CMessageBoxDlg : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString message MEMBER message CONSTANT)
    Q_PROPERTY(QString button0 MEMBER button0 CONSTANT)
    Q_PROPERTY(QString button1 MEMBER button1 CONSTANT)
    Q_PROPERTY(QString button2 MEMBER button2 CONSTANT)

public:
    static constexpr const char* dialog_url = "qrc:/dlg_message_box.qml";
    using CZTDialog::CZTDialog;

    /// Calls the callback with the number, then closes with it. Presses behind the first do nothing.
    Q_INVOKABLE void onButtonClicked(int button);

    QString title;
    QString message;
    QString button0;
    QString button1;
    QString button2;
    std::function<void(int)> callback; ///< may be empty

private:
    bool m_answered = false;
};

/// Shows a box with up to three buttons; texts are UTF-8 and shown as they stand. `callback` gets 0, 1 or 2. All of
/// these answer false when the box cannot be shown, and then call nothing.
bool MessageBox3(ZT_HWND parent, const std::string& title, const std::string& message,
                 std::function<void(int)> callback, const std::string& button0, const std::string& button1 = {},
                 const std::string& button2 = {});
bool MessageBox3(ZT_HWND parent, const std::string& title, const std::string& message,
                 void (*function)(void* user, int button), void* user, const std::string& button0,
                 const std::string& button1 = {}, const std::string& button2 = {});
/// One button; `done` runs when the box is gone, whichever way.
bool MessageBoxOK(ZT_HWND parent, const std::string& title, const std::string& message,
                  std::function<void()> done = {});
/// `callback` gets 0 for yes and 1 for no.
bool MessageBoxYesNo(ZT_HWND parent, const std::string& title, const std::string& message,
                     std::function<void(int)> callback);
/// The same question; `yes` runs on yes only.
bool MessageBoxYes(ZT_HWND parent, const std::string& title, const std::string& message, std::function<void()> yes);
bool MessageBoxHint(ZT_HWND parent, const std::string& text);

/// What messageprintf shows: a title, and which buttons.
enum MessageFlags : int {
    kMessageInformation = 0, ///< titled "Information", "  OK  "
    kMessageWarning = 1,     ///< titled "Warning", "  OK  "
    kMessageError = 2,       ///< titled "Error", "  OK  "
    kMessageHint = 3,        ///< titled "Hint", " Got it! "
};
void messageprintf(ZT_HWND parent, int flags, const char* format, ...) __attribute__((format(printf, 3, 4)));

/// Messages of the rooms without an interface, as message boxes and as the window's status text.
class CMessageBoxSink : public IMessageSink {
public:
    void Show(ZT_HWND parent, const std::string& title, const std::string& text, std::function<void()> done) override;
    void Hint(ZT_HWND parent, const std::string& text) override;
    void Status(const std::string& text) override;
};
