#include "app/done_button.h"

#include <utility>

void CDoneButton::SetCallback(std::function<void()> callback)
{
    done = std::move(callback);
    changed();
}

void CDoneButton::Invoke()
{
    const std::function<void()> callback = std::exchange(done, {});
    if (callback) callback();
    changed();
}

void CDoneButton::Clear()
{
    done = {};
    changed();
}
