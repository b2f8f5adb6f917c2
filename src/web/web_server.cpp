#include "web/web_server.h"

#include "core/text.h"
#include "web/network_manager.h"

#include <cerrno>
#include <cstdio>
#include <utility>

#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace {

constexpr qint64 kBlockSize = 1024;

} // namespace

CWebServer_NB::CWebServer_NB(const std::string& host, bool secure, int port)
{
    SetServer(host, secure, port);
}

CWebServer_NB::~CWebServer_NB()
{
    Drop();
}

void CWebServer_NB::Drop()
{
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply->deleteLater();
        m_reply = nullptr;
    }
    if (m_file) m_file->Discard();
}

void CWebServer_NB::SetServer(const std::string& host, bool secure, int port)
{
    m_url.setScheme(secure ? QStringLiteral("https") : QStringLiteral("http"));
    m_url.setHost(QString::fromStdString(host));
    m_url.setPort(port != 0 ? port : -1);
}

void CWebServer_NB::GetFile(const std::string& remote_path, const std::string& local_path,
                            std::function<void(int)> callback)
{
    Drop();
    m_error.clear();
    m_failed = false;
    m_cancelled = false;
    m_received = 0;
    m_callback = std::move(callback);
    m_file.emplace(local_path);
    if (m_file->File() == nullptr) {
        m_error = "Could not open tmp file for writing: " + local_path;
        Report(-1);
        return;
    }
    m_url.setPath(QString::fromStdString(remote_path));
    QNetworkRequest request(m_url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    Start(getGlobalNetworkAccessManager()->get(request));
}

void CWebServer_NB::Start(QNetworkReply* reply)
{
    if (reply == nullptr) {
        m_error = "Request failed";
        Report(-1);
        return;
    }
    m_reply = reply;
    connect(reply, &QNetworkReply::readyRead, this, &CWebServer_NB::OnReadyRead);
    connect(reply, &QNetworkReply::downloadProgress, this, &CWebServer_NB::OnProgress);
    connect(reply, &QNetworkReply::finished, this, &CWebServer_NB::OnFinished);
}

void CWebServer_NB::Cancel()
{
    m_cancelled = true;
    if (m_reply) m_reply->abort();
}

void CWebServer_NB::OnReadyRead()
{
    if (m_reply && !StoreReceived()) m_reply->abort();
}

bool CWebServer_NB::StoreReceived()
{
    char block[kBlockSize];
    for (;;) {
        const qint64 count = m_reply->read(block, kBlockSize);
        if (count <= 0) return true;
        m_received += count;
        if (size_limit > 0 && m_received > size_limit) {
            m_error = "The file is too large";
            return false;
        }
        const auto size = static_cast<std::size_t>(count);
        if (std::fwrite(block, 1, size, m_file->File()) != size) {
            m_error = stringprintf("Write error: errno %d", errno);
            return false;
        }
    }
}

void CWebServer_NB::OnProgress(qint64 received, qint64 total)
{
    if (m_reply && progress && !progress(received, total)) Cancel();
}

void CWebServer_NB::OnFinished()
{
    const QNetworkReply::NetworkError fault = m_reply->error();
    bool whole = fault == QNetworkReply::NoError && StoreReceived();
    // What ended it here has its text already; the manager's time-out counts as a fault of the network.
    if (fault != QNetworkReply::NoError && !m_cancelled && m_error.empty()) {
        m_error = m_reply->errorString().toStdString();
    }
    m_reply->deleteLater();
    m_reply = nullptr;
    if (whole && !m_file->Commit()) {
        m_error = stringprintf("Write error: errno %d", errno);
        whole = false;
    }
    Report(whole ? 1 : 0);
}

void CWebServer_NB::Report(int result)
{
    m_failed = result != 1;
    if (m_failed) m_file->Discard();
    m_file.reset();
    // Moved out: the callback may delete this object.
    const std::function<void(int)> callback = std::exchange(m_callback, nullptr);
    if (callback) callback(result);
}
