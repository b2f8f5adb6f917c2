#pragma once

#include "app/message_frames.h"

#include <vector>

#include <QByteArray>
#include <QGuiApplication>
#include <QLocalServer>
#include <QLocalSocket>

/// The application object, and whether this process is the first one of this user (the primary instance).
///
/// A lock file that the kernel releases with its process decides, so that a killed primary never blocks the next start.
/// Secondary instances hand their messages over through a local socket. Both lie in the user's private runtime folder.
/// A message has at most CMessageFrames::kMaxMessage bytes. Main thread only.
class SingleApplication : public QGuiApplication {
    Q_OBJECT
public:
    /// `timeout_ms`: how long a secondary instance waits for the primary to answer.
    SingleApplication(int& argc, char** argv, int timeout_ms = 1000);
    ~SingleApplication() override;

    bool isPrimary() const { return primary; }
    bool isSecondary() const { return !primary; }
    /// Hands a message to the primary instance; false when it is too long or no byte was taken for `timeout_ms`.
    bool sendMessage(const QByteArray& message, int timeout_ms);
    /// Messages are kept until somebody is ready for them; this delivers the kept ones and all later ones.
    void StartDelivery();

signals:
    void receivedMessage(quint32 instanceId, QByteArray message);

private:
    struct Peer {
        QLocalSocket* socket = nullptr;
        quint32 id = 0;
        CMessageFrames frames;
    };

    void StartServer(const QString& socket_path);
    void ConnectToPrimary(const QString& socket_path, int timeout_ms);
    void OnNewConnection();
    void OnReadyRead(QLocalSocket* socket);
    void Deliver(quint32 id, const QByteArray& message);
    Peer* FindPeer(QLocalSocket* socket);

    int lock_handle = -1;
    bool primary = true;
    bool delivering = false;
    quint32 last_id = 0;
    QLocalServer server;
    QLocalSocket to_primary;
    std::vector<Peer> peers;
    std::vector<std::pair<quint32, QByteArray>> kept;
};
