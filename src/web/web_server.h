#pragma once

#include "core/safe_replace.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include <QObject>
#include <QPointer>
#include <QUrl>

class QNetworkReply;

/// Fetches files from one server without blocking. One operation at a time; the object can be used again afterwards.
/// Main thread only.
class CWebServer_NB : public QObject {
    Q_OBJECT

public:
    /// Port 0 is the scheme's own.
    CWebServer_NB(const std::string& host, bool secure, int port);
    /// Ends a running operation without calling back.
    ~CWebServer_NB() override;
    void SetServer(const std::string& host, bool secure, int port);

    /// Downloads to `local_path`, which is replaced only by a whole file. `callback` gets 1 on success, 0 on failure,
    /// -1 when the request could not be started (then at once). It may delete this object or start the next operation.
    void GetFile(const std::string& remote_path, const std::string& local_path, std::function<void(int)> callback);
    /// Ends the running operation: its callback gets 0, and there is no error text.
    void Cancel();

    /// What went wrong, for the user; empty after a success or a cancelled operation.
    const std::string& error() const { return m_error; }
    bool failed() const { return m_failed; }
    bool cancelled() const { return m_cancelled; }

    /// Gets the bytes received and expected (-1: unknown) and answers whether to go on; may be empty.
    std::function<bool(std::int64_t, std::int64_t)> progress;
    std::int64_t size_limit = 0; ///< bytes; a larger file fails. 0: no limit

private:
    void Drop();
    void Start(QNetworkReply* reply);
    void OnReadyRead();
    void OnProgress(qint64 received, qint64 total);
    void OnFinished();
    /// False, with the error set, when the rest is of no use.
    bool StoreReceived();
    void Report(int result);

    QUrl m_url;
    QPointer<QNetworkReply> m_reply; ///< null: nothing runs
    std::optional<CSafeReplace> m_file;
    std::int64_t m_received = 0; ///< bytes
    std::string m_error;
    bool m_failed = false;
    bool m_cancelled = false;
    std::function<void(int)> m_callback;
};
