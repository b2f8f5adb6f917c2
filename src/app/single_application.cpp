#include "app/single_application.h"

#include "app/runtime_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QFile>

namespace {

constexpr char kGreeting = 'Z';
constexpr int kMaxPeers = 32;

/// The lock, or -1 while another process holds it.
int TakeLock(const QString& path)
{
    const int handle = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (handle < 0) return -1;
    if (::flock(handle, LOCK_EX | LOCK_NB) == 0) return handle;
    ::close(handle);
    return -1;
}

} // namespace

SingleApplication::SingleApplication(int& argc, char** argv, int timeout_ms) : QGuiApplication(argc, argv)
{
    const QString folder = PrivateRuntimeFolder();
    if (folder.isEmpty()) return; // nowhere to meet: every start stands for itself
    const QString socket_path = folder + QStringLiteral("/socket");
    lock_handle = TakeLock(folder + QStringLiteral("/lock"));
    primary = lock_handle >= 0;
    if (primary) {
        StartServer(socket_path);
    } else {
        ConnectToPrimary(socket_path, timeout_ms);
    }
}

SingleApplication::~SingleApplication()
{
    server.close();
    if (lock_handle >= 0) ::close(lock_handle);
}

void SingleApplication::StartServer(const QString& socket_path)
{
    QLocalServer::removeServer(socket_path); // left by a killed primary; the lock says that it is dead
    server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server, &QLocalServer::newConnection, this, &SingleApplication::OnNewConnection);
    if (!server.listen(socket_path)) qWarning("Single instance: %s", qPrintable(server.errorString()));
}

void SingleApplication::ConnectToPrimary(const QString& socket_path, int timeout_ms)
{
    // The primary may hold the lock and not listen yet.
    QDeadlineTimer deadline(timeout_ms);
    do {
        to_primary.connectToServer(socket_path);
        if (to_primary.waitForConnected(int(deadline.remainingTime()))) break;
        ::usleep(20000);
    } while (!deadline.hasExpired());
    // Its greeting shows that it reads, so that the time-out of a message is not spent on its start-up.
    if (to_primary.state() == QLocalSocket::ConnectedState) to_primary.waitForReadyRead(int(deadline.remainingTime()));
}

bool SingleApplication::sendMessage(const QByteArray& message, int timeout_ms)
{
    if (primary || quint32(message.size()) > CMessageFrames::kMaxMessage) return false;
    to_primary.write(CMessageFrames::Framed(message));
    while (to_primary.bytesToWrite() > 0) {
        if (!to_primary.waitForBytesWritten(timeout_ms)) return false;
    }
    return true;
}

void SingleApplication::OnNewConnection()
{
    while (QLocalSocket* socket = server.nextPendingConnection()) {
        if (peers.size() >= kMaxPeers) {
            delete socket;
            continue;
        }
        peers.push_back({socket, ++last_id, {}});
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { OnReadyRead(socket); });
        connect(socket, &QLocalSocket::disconnected, this, [this, socket] {
            if (socket->bytesAvailable() > 0) OnReadyRead(socket);
            std::erase_if(peers, [socket](const Peer& peer) { return peer.socket == socket; });
            socket->deleteLater();
        });
        socket->write(&kGreeting, 1);
        OnReadyRead(socket);
    }
}

SingleApplication::Peer* SingleApplication::FindPeer(QLocalSocket* socket)
{
    for (Peer& peer : peers) {
        if (peer.socket == socket) return &peer;
    }
    return nullptr;
}

void SingleApplication::OnReadyRead(QLocalSocket* socket)
{
    Peer* peer = FindPeer(socket);
    if (peer == nullptr) return;
    std::vector<QByteArray> messages;
    const quint32 id = peer->id;
    const bool ours = peer->frames.Feed(socket->readAll(), messages);
    for (const QByteArray& message : messages) Deliver(id, message);
    if (!ours) socket->abort(); // the disconnected handler removes the peer
}

void SingleApplication::Deliver(quint32 id, const QByteArray& message)
{
    if (!delivering) {
        kept.emplace_back(id, message);
        return;
    }
    // Queued, so that a receiver that opens dialogs never runs inside the socket's signal.
    QMetaObject::invokeMethod(
        this, [this, id, message] { emit receivedMessage(id, message); }, Qt::QueuedConnection);
}

void SingleApplication::StartDelivery()
{
    delivering = true;
    for (const auto& [id, message] : kept) Deliver(id, message);
    kept.clear();
}
