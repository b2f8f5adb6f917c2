#include "overlays/mark_deletion.h"

#include "core/heartbeat.h"
#include "core/text.h"
#include "overlays/syncable.h"
#include "ui/message_boxes.h"

#include <utility>

namespace {
constexpr double kJustMade = 60.0; ///< seconds
}

bool MayDeleteAtOnce(const CSyncable& object, bool locked)
{
    const double age = CHeartbeat::TheHeartbeat.Timestamp() - object.created;
    return !locked && age >= 0.0 && age < kJustMade;
}

void DeleteAfterQuestion(ZT_HWND parent, const CSyncable& object, bool locked, const std::string& title,
                         std::function<void()> remove)
{
    if (MayDeleteAtOnce(object, locked)) {
        remove();
        return;
    }
    const std::string question =
        stringprintf("Delete \"%s\"%s.\nAre you sure?", object.name.c_str(), locked ? " (locked)" : "");
    MessageBoxYes(parent, title, question, std::move(remove));
}
