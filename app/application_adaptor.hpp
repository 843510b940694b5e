#pragma once

// The freedesktop org.freedesktop.Application interface on the session bus: how a desktop that
// starts applications through D-Bus (DBusActivatable in the desktop entry), and a second launch of
// the game itself, hand the running game a request.

#include <QDBusAbstractAdaptor>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

namespace zelvaine {

class InstanceRequests;

class ApplicationAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    // `requests` lives at least as long as the adaptor, which its parent owns.
    ApplicationAdaptor(QObject* parent, InstanceRequests& requests);

public slots:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    // The game names no actions of its own; an action is taken as a plain activation.
    void ActivateAction(const QString& actionName, const QVariantList& parameter, const QVariantMap& platformData);

private:
    InstanceRequests& requests_;
};

} // namespace zelvaine
