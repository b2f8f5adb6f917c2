#pragma once

#include "core/zt_hwnd.h"

#include <functional>
#include <string>

/// Where the rooms without an interface send what the user has to be told: dialogs in the program, a list in a test.
/// Main thread only.
struct IMessageSink {
    virtual ~IMessageSink() = default;
    /// A message box with one OK button; `done` may be empty.
    virtual void Show(ZT_HWND parent, const std::string& title, const std::string& text,
                      std::function<void()> done) = 0;
    /// A hint ("Got it!").
    virtual void Hint(ZT_HWND parent, const std::string& text) = 0;
    /// The text at the top of the window; empty hides it.
    virtual void Status(const std::string& text) = 0;
};

/// The sink in force. Never null: without one set, messages go to Qt's message logger.
IMessageSink& TheMessageSink();
/// Sets the sink (null: the logger again) and returns the one before, null when that was the logger.
IMessageSink* SetMessageSink(IMessageSink* sink);

/// Shows "text" under "title" through the sink.
void ShowMessage(ZT_HWND parent, const std::string& title, const std::string& text, std::function<void()> done = {});
/// Sets the status line; with nobody to show it, does nothing.
void SetStatusMessage(const std::string& text);
void ClearStatusMessage();
