#pragma once

#include <functional>

/// Shows the "Done" button, whose press calls `callback` once; an empty callback hides the button.
void SetDoneButtonCallback(std::function<void()> callback);
void SetDoneButtonCallback(void (*function)(void*), void* user);
/// A press of the button: hides it, forgets the callback, then calls it.
void PressDoneButton();
