#include "nmea/connection_background.h"

#include <utility>

namespace {

IBackgroundActivity* background_activity = nullptr;

} // namespace

IBackgroundActivity* SetBackgroundActivity(IBackgroundActivity* activity)
{
    return std::exchange(background_activity, activity);
}

bool IsConnectionNeededInBackground()
{
    const IBackgroundActivity* activity = background_activity;
    if (activity == nullptr) return false;
    return activity->AnythingRunning() || (activity->RecordsInBackground() && activity->IsRecordingTrack());
}
