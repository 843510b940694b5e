#include "app/application_adaptor.hpp"

#include "app/instance_requests.hpp"

namespace zelvaine {
namespace {

// Launchers pass the token under either name, depending on the window system they serve.
QString activationToken(const QVariantMap& platformData)
{
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    return token.isEmpty() ? platformData.value(QStringLiteral("desktop-startup-id")).toString() : token;
}

} // namespace

ApplicationAdaptor::ApplicationAdaptor(QObject* parent, InstanceRequests& requests)
    : QDBusAbstractAdaptor(parent), requests_(requests)
{}

void ApplicationAdaptor::Activate(const QVariantMap& platformData)
{
    requests_.request({}, activationToken(platformData));
}

void ApplicationAdaptor::Open(const QStringList& uris, const QVariantMap& platformData)
{
    requests_.request(uris, activationToken(platformData));
}

void ApplicationAdaptor::ActivateAction(const QString&, const QVariantList&, const QVariantMap& platformData)
{
    requests_.request({}, activationToken(platformData));
}

} // namespace zelvaine
