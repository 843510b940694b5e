#include "test_http_server.hpp"

#include <QHostAddress>
#include <QTcpSocket>

namespace zelvaine::testing {

TestHttpServer::TestHttpServer()
{
    server_.listen(QHostAddress::LocalHost);
    connect(&server_, &QTcpServer::newConnection, this, [this] {
        while (auto* socket = server_.nextPendingConnection()) {
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
                // Requests are GETs without bodies; a client may send several on one connection.
                auto buffered = socket->property("buffered").toByteArray() + socket->readAll();
                for (auto end = buffered.indexOf("\r\n\r\n"); end >= 0; end = buffered.indexOf("\r\n\r\n")) {
                    answer(socket, buffered.left(end));
                    buffered.remove(0, end + 4);
                }
                socket->setProperty("buffered", buffered);
            });
        }
    });
}

QUrl TestHttpServer::url(const QString& path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(path));
}

void TestHttpServer::answer(QTcpSocket* socket, const QByteArray& head)
{
    requests_.append(head);
    const auto requestLine = head.left(head.indexOf("\r\n")).split(' ');
    const auto path = requestLine.size() >= 2 ? QString::fromLatin1(requestLine[1]) : QString();
    auto response = routes_.value(path, TestResponse{404, "not here", {}, true, false});
    if (response.neverAnswers) return;

    QByteArray reply = "HTTP/1.1 " + QByteArray::number(response.status) + " Canned\r\n";
    for (const auto& [name, value] : response.headers) reply += name + ": " + value + "\r\n";
    // Without a length, only the end of the connection tells where the body ends.
    if (response.sendsLength) reply += "Content-Length: " + QByteArray::number(response.body.size()) + "\r\n";
    else reply += "Connection: close\r\n";
    reply += "\r\n" + response.body;
    socket->write(reply);
    if (!response.sendsLength) socket->disconnectFromHost();
}

} // namespace zelvaine::testing
