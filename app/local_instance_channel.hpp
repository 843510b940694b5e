#pragma once

// Where there is no session bus (a bare X server, a remote shell), the running game listens on a
// socket of the user's own instead, and a second launch hands its files over through it.

#include <QLocalServer>
#include <QString>
#include <QStringList>

#include <memory>

namespace zelvaine {

class InstanceRequests;

class LocalInstanceChannel {
public:
    enum class Claim {
        listening,  // this process is the game; requests arrive through `requests`
        handedOver, // the running game took the request
        failed,     // neither: this process goes on as a game of its own
    };

    LocalInstanceChannel(QString socketPath, InstanceRequests& requests);
    ~LocalInstanceChannel();

    LocalInstanceChannel(const LocalInstanceChannel&) = delete;
    LocalInstanceChannel& operator=(const LocalInstanceChannel&) = delete;

    Claim claimOrHandOver(const QStringList& uris, const QString& activationToken);

    // The socket in the runtime folder, which only the user can enter; in the temporary folder
    // under the user's number where there is none.
    static QString defaultSocketPath();

private:
    void accept();

    QString socketPath_;
    InstanceRequests& requests_;
    std::unique_ptr<QLocalServer> server_;
};

} // namespace zelvaine
