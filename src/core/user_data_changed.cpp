#include "core/user_data_changed.h"

namespace {
std::function<void()>& UserDataCallback()
{
    static std::function<void()> callback;
    return callback;
}
} // namespace

void NoteUserDataChanged()
{
    if (UserDataCallback()) UserDataCallback()();
}

void SetUserDataChangedCallback(std::function<void()> callback)
{
    UserDataCallback() = std::move(callback);
}
