#pragma once

#include <QObject>
#include <QTimer>

/// Saves changed user data while the program runs, so that a pulled plug costs seconds and not the day: a few seconds
/// after the last change, and at the latest kLongestDelay after the first one. Main thread only.
class CAutoSave : public QObject {
    Q_OBJECT
public:
    static constexpr int kDelay_ms = 3000;
    static constexpr int kLongestDelay_ms = 20000;

    explicit CAutoSave(int delay_ms = kDelay_ms, int longest_delay_ms = kLongestDelay_ms);
    ~CAutoSave() override;
    /// Something of the user's has changed.
    void NoteChange();

private:
    void Save();

    QTimer quiet;  ///< restarted by every change
    QTimer latest; ///< started by the first change after a save
};
