#include "ui/progress_dialog.h"

#include "core/text.h"
#include "core/worker_thread.h"
#include "ui/message_boxes.h"

#include <algorithm>
#include <utility>

#include <QThread>
#include <QTimerEvent>

namespace {

constexpr int kWaitMilliseconds = 10;
constexpr int kFirstEstimateTick = 10; ///< before that the rate says nothing
constexpr double kLeastRate = 0.0001;
constexpr int kLongOperationSeconds = 301;

std::function<void(int)> progress_wait;

void WaitBriefly()
{
    if (progress_wait) {
        progress_wait(kWaitMilliseconds);
    } else {
        QThread::msleep(kWaitMilliseconds);
    }
}

void JoinWorker(QThread* worker)
{
    if (worker == nullptr) return;
    if (auto* created = dynamic_cast<QThread_created*>(worker)) {
        created->Join();
    } else {
        worker->wait();
    }
}

/// A blank keeps the place of the missing plural.
char PluralLetter(int n)
{
    return n == 1 ? ' ' : 's';
}

} // namespace

std::string RemainingTimeText(int seconds)
{
    if (seconds < 60) return stringprintf("%d second%c", seconds, PluralLetter(seconds));
    if (seconds < 120) return stringprintf("1 m, %d s", seconds - 60);
    if (seconds < 3600) return stringprintf("%d minutes", seconds / 60);
    const int hours = seconds / 3600;
    const int minutes = seconds % 3600 / 60;
    return stringprintf("%d hour%c, %d min%c", hours, PluralLetter(hours), minutes, PluralLetter(minutes));
}

void SetProgressWait(std::function<void(int)> wait)
{
    progress_wait = std::move(wait);
}

void CDlg_progress::Follow(CProgressDialogData* data, const std::string& message, callback_function on_close)
{
    m_data = data;
    m_on_close = std::move(on_close);
    m_message = QString::fromStdString(message);
    emit messageChanged();
    m_timer = startTimer(kTickMilliseconds);
}

void CDlg_progress::set_cancelable(bool cancelable)
{
    if (m_cancelable == cancelable) return;
    m_cancelable = cancelable;
    emit cancelableChanged();
}

void CDlg_progress::clickedCancel()
{
    if (m_data == nullptr) return;
    if (m_data->cancel) m_data->cancel();
    m_data->cancelled = true;
}

void CDlg_progress::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer || m_data == nullptr) return;
    ++m_ticks;
    if (m_data->finished) {
        Finish();
    } else {
        UpdateEstimate();
    }
}

void CDlg_progress::Finish()
{
    StopTimer();
    const int code = m_data->cancelled ? -1 : 0;
    if (m_data->error.empty() || code != 0) {
        closeDialog(code);
        return;
    }
    const QPointer<CDlg_progress> alive(this);
    const bool shown = MessageBoxOK(hWnd(), "Error", m_data->error, [alive, code] {
        if (alive) alive->closeDialog(code);
    });
    if (!shown) closeDialog(code);
}

void CDlg_progress::UpdateEstimate()
{
    const std::int64_t total = m_data->total;
    if (total <= 0) return;
    const double fraction = std::clamp(static_cast<double>(m_data->done) / static_cast<double>(total), 0.0, 1.0);
    if (fraction != m_progress || !m_total_known) {
        m_progress = fraction;
        m_total_known = true;
        emit progressChanged();
    }
    if (m_ticks < kFirstEstimateTick) return;
    m_rate = 0.5 * (fraction + m_rate);
    if (m_rate <= kLeastRate || fraction <= 0.0) return;
    const double elapsed_seconds = m_ticks * kTickMilliseconds / 1000.0;
    const int seconds = static_cast<int>(std::min(elapsed_seconds * (1.0 - fraction) / m_rate, 1e9));
    m_time_remaining = QString::fromStdString(RemainingTimeText(seconds));
    emit timeRemainingChanged();
    if (seconds >= kLongOperationSeconds && !m_long_operation) {
        m_long_operation = true;
        emit plugInMessageHiddenChanged();
    }
}

void CDlg_progress::StopTimer()
{
    if (m_timer != 0) killTimer(m_timer);
    m_timer = 0;
}

void CDlg_progress::onDismiss(int)
{
    StopTimer();
    CProgressDialogData* data = std::exchange(m_data, nullptr);
    if (data == nullptr) return;
    JoinWorker(data->worker);
    if (const auto call = std::exchange(m_on_close, {})) call(data);
}

void showProgressDialog_join(ZT_HWND parent, CProgressDialogData* data, const std::string& message,
                             CDlg_progress::callback_function callback, bool cancelable)
{
    data->message = message;
    WaitBriefly();
    if (data->finished) {
        JoinWorker(data->worker);
        if (callback) callback(data);
        return;
    }
    const auto start = [&](CDlg_progress* dialog) {
        dialog->set_cancelable(cancelable);
        dialog->Follow(data, message, callback);
    };
    if (CZTDialog::ShowDialog<CDlg_progress>(parent, start) == nullptr) start(new CDlg_progress);
}
