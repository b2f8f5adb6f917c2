#include "ui/done_button.h"

#include "ui/ui_context.h"

#include <utility>

namespace {
std::function<void()> done_callback;
} // namespace

void SetDoneButtonCallback(std::function<void()> callback)
{
    done_callback = std::move(callback);
    if (IUiContext* context = TheUiContext()) context->SetShowDoneButton(static_cast<bool>(done_callback));
}

void SetDoneButtonCallback(void (*function)(void*), void* user)
{
    if (function == nullptr) {
        SetDoneButtonCallback(std::function<void()>());
        return;
    }
    SetDoneButtonCallback([function, user] { function(user); });
}

void PressDoneButton()
{
    const auto callback = std::exchange(done_callback, {});
    SetDoneButtonCallback(std::function<void()>());
    if (callback) callback();
}
