#pragma once

#include "ui/zt_dialog.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

class QThread;

/// What a long operation and its progress dialog share. The worker writes the counts at any time, `error` before it
/// sets `finished`, and reads `cancelled`; everything else belongs to the main thread.
struct CProgressDialogData {
    std::atomic<std::int64_t> done{0};  ///< bytes or steps
    std::atomic<std::int64_t> total{0}; ///< 0: not known
    std::atomic<bool> cancelled{false};
    std::atomic<bool> finished{false};
    QThread* worker = nullptr;            ///< joined before the callback; null: there is none
    std::string error;                    ///< shown at the end when not empty
    std::function<void()> cancel;         ///< called when the user cancels, before `cancelled` is set
    std::string message;                  ///< what is being done
    std::function<void(bool ok)> on_done; ///< for the operation's own use
};

/// Follows the operation every 200 ms. Closes with 0, or -1 when it was cancelled.
class CDlg_progress : public CZTDialog {
    Q_OBJECT
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(bool total_known READ total_known NOTIFY progressChanged)
    Q_PROPERTY(QString time_remaining READ time_remaining NOTIFY timeRemainingChanged)
    Q_PROPERTY(bool cancelable READ cancelable NOTIFY cancelableChanged)
    Q_PROPERTY(bool plug_in_message_hidden READ plug_in_message_hidden NOTIFY plugInMessageHiddenChanged)

public:
    using callback_function = std::function<void(CProgressDialogData*)>;
    static constexpr const char* dialog_url = "qrc:/dlg_progress.qml";
    static constexpr int kTickMilliseconds = 200;
    using CZTDialog::CZTDialog;

    /// Starts the timer. `data` must live until `on_close`, which is where it may be released.
    void Follow(CProgressDialogData* data, const std::string& message, callback_function on_close);

    QString message() const { return m_message; }
    /// 0 to 1; 0 as long as the total is not known.
    double progress() const { return m_progress; }
    bool total_known() const { return m_total_known; }
    QString time_remaining() const { return m_time_remaining; }
    bool cancelable() const { return m_cancelable; }
    void set_cancelable(bool cancelable);
    /// The advice to plug in; it comes up with the first estimate of 301 seconds or more and stays.
    bool plug_in_message_hidden() const { return !m_long_operation; }
    int timerId() const { return m_timer; }

    /// Asks the operation to end; it is the operation that then sets `finished`.
    Q_INVOKABLE void clickedCancel();
    void onDismiss(int code) override;

signals:
    void messageChanged();
    void progressChanged();
    void timeRemainingChanged();
    void cancelableChanged();
    void plugInMessageHiddenChanged();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void Finish();
    void UpdateEstimate();
    void StopTimer();

    CProgressDialogData* m_data = nullptr;
    callback_function m_on_close;
    QString m_message;
    QString m_time_remaining;
    double m_progress = 0.0;
    double m_rate = 0.0; ///< running mean of the fraction done
    int m_timer = 0;     ///< 0: not running
    int m_ticks = 0;
    bool m_total_known = false;
    bool m_cancelable = true;
    bool m_long_operation = false;
};

/// Waits 10 ms for the operation to end by itself; then either joins its worker and calls `callback` at once, without a
/// dialog, or shows the progress dialog and calls `callback` when that closes. `callback` always runs once, with the
/// worker joined; it may release `data`. Without a window the operation is followed in the same way, unseen.
void showProgressDialog_join(ZT_HWND parent, CProgressDialogData* data, const std::string& message,
                             CDlg_progress::callback_function callback, bool cancelable = true);

/// "2 minutes", "1 hour , 5 mins": a remaining time of whole seconds as the dialog words it.
std::string RemainingTimeText(int seconds);

/// Replaces the 10 ms wait, for tests; an empty function brings it back.
void SetProgressWait(std::function<void(int milliseconds)> wait);
