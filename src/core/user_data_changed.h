#pragma once

#include <functional>

/// To be called by whoever changed something that the user would miss: a mark, a track, a setting, a page. The program
/// saves a few seconds after the last call. Main thread only.
void NoteUserDataChanged();
/// Sets what NoteUserDataChanged() calls; an empty function makes it do nothing.
void SetUserDataChangedCallback(std::function<void()> callback);
