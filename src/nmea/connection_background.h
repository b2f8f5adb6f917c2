#pragma once

/// What the connection has to know of the program when the application goes into the background. The rooms above fill
/// it in; without one nothing goes on there. Main thread only.
struct IBackgroundActivity {
    virtual ~IBackgroundActivity() = default;
    /// Whether an activity runs that must not be cut off, such as a download.
    virtual bool AnythingRunning() const = 0;
    /// Whether the user wants tracks recorded in the background.
    virtual bool RecordsInBackground() const = 0;
    virtual bool IsRecordingTrack() const = 0;
};

/// Sets what is asked, and returns the one before; null is allowed. It must outlive its use.
IBackgroundActivity* SetBackgroundActivity(IBackgroundActivity* activity);
/// Whether the connection has work to do while the application is in the background.
bool IsConnectionNeededInBackground();
