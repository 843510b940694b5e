#pragma once

// One game per user session: two games on one saved game would each save over the other. The
// first launch claims the session bus name that the desktop entry is named after (or, with no
// bus, a socket of the user's own); a later launch hands its files to that game and ends.

#include "app/instance_requests.hpp"
#include "app/local_instance_channel.hpp"

#include <QString>
#include <QStringList>

#include <memory>

namespace zelvaine {

inline constexpr const char* applicationId = "nl.orvent.zelvaine";
inline constexpr const char* applicationObjectPath = "/nl/orvent/zelvaine";

class SingleInstance {
public:
    SingleInstance();
    ~SingleInstance();

    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // True when a running game took the request and this process has nothing left to do.
    // Otherwise this process is the game and its requests arrive through requests().
    bool handOver(const QStringList& uris, const QString& activationToken);

    InstanceRequests& requests() { return requests_; }

    // A file named on the command line as a URI the running game can open whatever its folder.
    static QString fileUri(const QString& argument);

private:
    enum class BusClaim { owner, handedOver, unavailable };
    BusClaim claimBus(const QStringList& uris, const QString& activationToken);

    InstanceRequests requests_;
    std::unique_ptr<QObject> exported_;
    std::unique_ptr<LocalInstanceChannel> local_;
};

} // namespace zelvaine
