#pragma once

#include "core/zt_hwnd.h"

#include <functional>
#include <string>

class CSyncable;

/// Whether the object was made less than a minute ago and is not locked: it may be deleted without a question.
bool MayDeleteAtOnce(const CSyncable& object, bool locked);
/// Calls `remove` at once where that is allowed, and otherwise when the user answers yes. A lock makes the question
/// certain, not the deletion impossible.
void DeleteAfterQuestion(ZT_HWND parent, const CSyncable& object, bool locked, const std::string& title,
                         std::function<void()> remove);
