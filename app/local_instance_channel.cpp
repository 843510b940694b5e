#include "app/local_instance_channel.hpp"

#include "app/instance_requests.hpp"

#include <QDataStream>
#include <QDir>
#include <QLocalSocket>
#include <QLockFile>

#include <unistd.h>

namespace zelvaine {
namespace {

constexpr quint32 protocolVersion = 1;
constexpr char accepted = 'y';
// A game that is still starting answers once its window is up: some seconds on a slow machine.
constexpr int answerMilliseconds = 20000;

} // namespace

LocalInstanceChannel::LocalInstanceChannel(QString socketPath, InstanceRequests& requests)
    : socketPath_(std::move(socketPath)), requests_(requests)
{}

LocalInstanceChannel::~LocalInstanceChannel() = default;

QString LocalInstanceChannel::defaultSocketPath()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (QDir::isAbsolutePath(runtime) && QDir(runtime).exists())
        return QDir(runtime).filePath(QStringLiteral("nl.orvent.zelvaine"));
    return QDir::temp().filePath(QStringLiteral("nl.orvent.zelvaine-%1").arg(getuid()));
}

LocalInstanceChannel::Claim LocalInstanceChannel::claimOrHandOver(const QStringList& uris, const QString& activationToken)
{
    // Two launches at the same moment would both find no game and the second would take the
    // first one's socket away; the lock makes looking and listening one step.
    QLockFile lock(socketPath_ + QStringLiteral(".lock"));
    if (!lock.tryLock(5000)) return Claim::failed;

    QLocalSocket socket;
    socket.connectToServer(socketPath_);
    if (socket.waitForConnected(2000)) {
        lock.unlock();
        QByteArray message;
        QDataStream(&message, QIODevice::WriteOnly) << protocolVersion << activationToken << uris;
        socket.write(message);
        if (!socket.waitForBytesWritten(answerMilliseconds)) return Claim::failed;
        char answer = 0;
        if (!socket.waitForReadyRead(answerMilliseconds) || !socket.getChar(&answer) || answer != accepted) {
            return Claim::failed;
        }
        return Claim::handedOver;
    }

    // Whatever is left at the path belongs to a game that is gone.
    QLocalServer::removeServer(socketPath_);
    server_ = std::make_unique<QLocalServer>();
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    if (!server_->listen(socketPath_)) {
        server_.reset();
        return Claim::failed;
    }
    QObject::connect(server_.get(), &QLocalServer::newConnection, server_.get(), [this] { accept(); });
    return Claim::listening;
}

void LocalInstanceChannel::accept()
{
    while (QLocalSocket* socket = server_->nextPendingConnection()) {
        QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
            QDataStream in(socket);
            in.startTransaction();
            quint32 version = 0;
            QString token;
            QStringList uris;
            in >> version >> token >> uris;
            if (!in.commitTransaction()) return; // the rest is still on its way
            if (version != protocolVersion) {
                socket->disconnectFromServer();
                return;
            }
            socket->putChar(accepted);
            socket->flush();
            socket->disconnectFromServer();
            requests_.request(uris, token);
        });
    }
}

} // namespace zelvaine
