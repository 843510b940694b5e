#pragma once

// What another launch of the game asks of the running one, whichever way it arrived.

#include <QObject>
#include <QString>
#include <QStringList>

namespace zelvaine {

class InstanceRequests : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // `activationToken` lets the window manager raise the window for a launch the player made
    // elsewhere; empty when the launcher gave none.
    void request(const QStringList& uris, const QString& activationToken)
    {
        emit activate(activationToken);
        if (!uris.isEmpty()) emit open(uris);
    }

signals:
    void activate(const QString& activationToken);
    // File URIs or local paths, in the order given.
    void open(const QStringList& uris);
};

} // namespace zelvaine
