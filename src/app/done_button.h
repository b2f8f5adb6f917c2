#pragma once

#include <functional>

/// The single callback behind the "Done" button. Main thread only.
class CDoneButton {
public:
    /// `on_change` is called after every change of IsActive().
    explicit CDoneButton(std::function<void()> on_change)
        : changed(std::move(on_change))
    {}

    void SetCallback(std::function<void()> callback);
    /// Takes the callback out and runs it; the button stays when the callback has stored a new one.
    void Invoke();
    void Clear();
    bool IsActive() const { return bool(done); }

private:
    std::function<void()> done;
    std::function<void()> changed;
};
