#pragma once

/// Something on the screen that holds changes of the user which are not in the settings yet. Main thread only.
class CSaveable {
public:
    CSaveable();
    CSaveable(const CSaveable&) = delete;
    CSaveable& operator=(const CSaveable&) = delete;
    virtual ~CSaveable();

    /// Moves the changes into the settings; called before the settings are written.
    virtual void Save() {}
    /// Save() of everything that is open, so that a program which ends under a dialog loses nothing.
    static void SaveAllOpen();

private:
    CSaveable* next_open;
    CSaveable* previous_open = nullptr;
    static CSaveable* first;
};
