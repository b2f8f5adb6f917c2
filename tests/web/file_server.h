#pragma once

#include <functional>

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>

/// A web server on this computer that answers each request with bytes of the test's, as they stand. With `hang` it then
/// keeps the connection open.
class CFileServer {
public:
    CFileServer()
    {
        QObject::connect(&server, &QTcpServer::newConnection, &server, [this] {
            QTcpSocket* socket = server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { Answer(socket); });
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        });
        server.listen(QHostAddress::LocalHost);
    }
    int port() const { return server.serverPort(); }

    static QByteArray Whole(const QByteArray& content)
    {
        return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(content.size()) + "\r\n\r\n" + content;
    }

    QByteArray answer;
    bool hang = false;
    QByteArray request; ///< the first line of the last one

private:
    void Answer(QTcpSocket* socket)
    {
        request = socket->readAll();
        request.truncate(request.indexOf('\r'));
        socket->write(answer);
        if (!hang) socket->disconnectFromHost();
    }

    QTcpServer server;
};
