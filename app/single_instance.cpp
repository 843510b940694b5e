#include "app/single_instance.hpp"

#include "app/application_adaptor.hpp"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFileInfo>
#include <QUrl>
#include <QVariantMap>

#include <iostream>

namespace zelvaine {
namespace {

constexpr const char* applicationInterface = "org.freedesktop.Application";
// The running game may still be starting; it answers once its event loop runs.
constexpr int answerMilliseconds = 20000;

QVariantMap platformData(const QString& activationToken)
{
    if (activationToken.isEmpty()) return {};
    return {{QStringLiteral("activation-token"), activationToken},
            {QStringLiteral("desktop-startup-id"), activationToken}};
}

} // namespace

SingleInstance::SingleInstance() = default;
SingleInstance::~SingleInstance() = default;

QString SingleInstance::fileUri(const QString& argument)
{
    const QUrl url(argument);
    if (url.isValid() && url.scheme().size() > 1) return argument; // a URI already (a drive letter is no scheme)
    return QUrl::fromLocalFile(QFileInfo(argument).absoluteFilePath()).toString(QUrl::FullyEncoded);
}

bool SingleInstance::handOver(const QStringList& uris, const QString& activationToken)
{
    switch (claimBus(uris, activationToken)) {
    case BusClaim::owner: return false;
    case BusClaim::handedOver: return true;
    case BusClaim::unavailable: break;
    }
    local_ = std::make_unique<LocalInstanceChannel>(LocalInstanceChannel::defaultSocketPath(), requests_);
    switch (local_->claimOrHandOver(uris, activationToken)) {
    case LocalInstanceChannel::Claim::listening: return false;
    case LocalInstanceChannel::Claim::handedOver: return true;
    case LocalInstanceChannel::Claim::failed: break;
    }
    // Better a second game than none; the saved game itself notices when another saved after it.
    std::cerr << "zelvaine: could not reach the running game; starting another\n";
    local_.reset();
    return false;
}

SingleInstance::BusClaim SingleInstance::claimBus(const QStringList& uris, const QString& activationToken)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return BusClaim::unavailable;
    const QString name = QString::fromLatin1(applicationId);
    const QString path = QString::fromLatin1(applicationObjectPath);

    // The object first: a request that follows the name must find it there.
    exported_ = std::make_unique<QObject>();
    new ApplicationAdaptor(exported_.get(), requests_);
    if (bus.registerObject(path, exported_.get(), QDBusConnection::ExportAdaptors) && bus.registerService(name)) {
        return BusClaim::owner;
    }
    bus.unregisterObject(path);
    exported_.reset();

    QDBusMessage call =
        QDBusMessage::createMethodCall(name, path, QString::fromLatin1(applicationInterface),
                                       uris.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
    if (!uris.isEmpty()) call << uris;
    call << platformData(activationToken);
    const QDBusMessage reply = bus.call(call, QDBus::Block, answerMilliseconds);
    if (reply.type() == QDBusMessage::ReplyMessage) return BusClaim::handedOver;
    std::cerr << "zelvaine: the running game did not answer: " << reply.errorMessage().toStdString() << '\n';
    return BusClaim::unavailable;
}

} // namespace zelvaine
