#include "app/updater.hpp"

#include "store/defaults_store.hpp"
#include "zelvaine/version.hpp"

#include <QNetworkReply>
#include <QNetworkRequest>

#include <algorithm>

namespace zelvaine {

namespace {

constexpr const char* lastCheckKey = "zelvaine.updates.last-check";
// The schedule is looked at again at least this often, so a sleeping machine or a clock set
// back cannot push a check far beyond its interval.
constexpr std::chrono::hours scheduleTick{1};

} // namespace

Updater::Updater(UpdateConfigurationReading configuration, DefaultsStore* defaults, QObject* parent)
    : Updater(std::move(configuration), defaults, Options{}, parent)
{}

Updater::Updater(UpdateConfigurationReading configuration, DefaultsStore* defaults, Options options, QObject* parent)
    : QObject(parent),
      configuration_(std::move(configuration.configuration)),
      configurationProblem_(std::move(configuration.failure)),
      defaults_(defaults),
      options_(std::move(options))
{
    if (options_.version.isEmpty()) options_.version = QString::fromLatin1(build::version);
    if (options_.buildNumber <= 0) options_.buildNumber = build::number;
    // Redirects are followed by hand, so a refused address is never even looked up.
    network_.setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
    deadline_.setSingleShot(true);
    connect(&deadline_, &QTimer::timeout, this, [this] {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(options_.timeout).count();
        fail(tr("The update server did not answer within %n second(s).", nullptr,
                static_cast<int>(std::max<qint64>(seconds, 1))));
    });
    automaticTimer_.setSingleShot(true);
    connect(&automaticTimer_, &QTimer::timeout, this, &Updater::onAutomaticTimer);
    canCheck_ = configuration_.has_value();
}

Updater::~Updater()
{
    if (reply_) {
        reply_->disconnect(this);
        reply_->abort();
    }
}

QString Updater::feedHost() const { return configuration_ ? configuration_->feedUrl.host() : QString(); }

QString Updater::currentVersion() const
{
    return QStringLiteral("%1 (%2)").arg(options_.version).arg(options_.buildNumber);
}

QDateTime Updater::now() const { return options_.clock ? options_.clock() : QDateTime::currentDateTimeUtc(); }

void Updater::setCanCheck(bool value)
{
    if (canCheck_ == value) return;
    canCheck_ = value;
    emit canCheckForUpdatesChanged();
}

void Updater::checkForUpdates()
{
    if (!configuration_ && !reply_) {
        // The menu item is disabled then; a call from elsewhere still gets an honest answer.
        origin_ = Origin::player;
        if (configurationProblem_.isEmpty())
            return finish(State::Failed, tr("This copy of Zelvaine has no update feed and never checks for updates."));
        return finish(State::Failed, tr("Checking for updates is turned off: %1").arg(configurationProblem_));
    }
    if (!canCheck_) return;
    begin(Origin::player);
}

void Updater::cancelCheck()
{
    if (!reply_ || origin_ != Origin::player) return;
    QNetworkReply* reply = reply_.data();
    reply_ = nullptr;
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
    deadline_.stop();
    state_ = State::Idle;
    emit stateChanged();
    setCanCheck(true);
    if (automaticStarted_) scheduleAutomaticCheck();
}

void Updater::begin(Origin origin)
{
    origin_ = origin;
    received_.clear();
    pendingFailure_.clear();
    redirects_ = 0;
    setCanCheck(false);
    if (origin == Origin::player) {
        state_ = State::Checking;
        latestVersion_.clear();
        downloadUrl_.clear();
        releaseNotesUrl_.clear();
        failureReason_.clear();
        emit stateChanged();
    }
    if (defaults_) defaults_->set(lastCheckKey, static_cast<std::int64_t>(now().toSecsSinceEpoch()));
    // One deadline for the whole check, redirects included.
    deadline_.start(options_.timeout);

    request(configuration_->feedUrl);
}

void Updater::request(const QUrl& url)
{
    currentUrl_ = url;
    received_.clear();
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Zelvaine/%1").arg(options_.version));
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    // Nothing is kept between checks, and nothing is sent but the request itself.
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    auto* reply = network_.get(request);
    reply_ = reply;

    connect(reply, &QNetworkReply::metaDataChanged, this, [this, reply] {
        if (reply != reply_) return;
        const auto length = reply->header(QNetworkRequest::ContentLengthHeader);
        if (length.isValid() && length.toLongLong() > options_.maxFeedBytes)
            fail(tr("The update feed is larger than %1 KB and was not read.").arg(options_.maxFeedBytes / 1024));
    });
    connect(reply, &QNetworkReply::readyRead, this, [this, reply] {
        if (reply != reply_) return;
        received_ += reply->read(options_.maxFeedBytes + 1 - received_.size());
        if (received_.size() > options_.maxFeedBytes)
            fail(tr("The update feed is larger than %1 KB and was not read.").arg(options_.maxFeedBytes / 1024));
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply] { complete(reply); });
}

void Updater::fail(const QString& reason)
{
    auto* reply = reply_.data();
    if (!reply) return;
    pendingFailure_ = reason;
    reply->abort();
    // abort() normally reports the end at once; make sure the check ends either way.
    if (reply_ == reply) complete(reply);
}

void Updater::followRedirect(const QNetworkReply& reply)
{
    const auto location = reply.attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (location.isEmpty()) return finish(State::Failed, tr("The update server redirected without saying where to."));
    const auto target = currentUrl_.resolved(location);
    if (++redirects_ > options_.maxRedirects)
        return finish(State::Failed, tr("The update server redirected more than %n time(s); the check was stopped.",
                                        nullptr, options_.maxRedirects));
    if (currentUrl_.scheme() == QLatin1String("https") && target.scheme() != QLatin1String("https"))
        return finish(State::Failed,
                      tr("The update server redirected from HTTPS to an unencrypted address; it was not followed."));
    if (auto refusal = addressRefusal(target)) return finish(State::Failed, *refusal);
    request(target);
}

void Updater::complete(QNetworkReply* reply)
{
    if (!reply || reply != reply_) return;
    reply_ = nullptr;
    reply->disconnect(this);
    reply->deleteLater();

    if (!pendingFailure_.isEmpty()) return finish(State::Failed, pendingFailure_);
    if (reply->error() != QNetworkReply::NoError) return finish(State::Failed, failureFor(*reply));
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status >= 300 && status < 400 && status != 304) return followRedirect(*reply);
    if (status != 200)
        return finish(State::Failed, tr("The update server answered with an error (HTTP %1).").arg(status));

    received_ += reply->read(options_.maxFeedBytes + 1 - received_.size());
    if (received_.size() > options_.maxFeedBytes)
        return finish(State::Failed,
                      tr("The update feed is larger than %1 KB and was not read.").arg(options_.maxFeedBytes / 1024));

    auto reading = readFeed(received_);
    received_.clear();
    if (!reading.newest) return finish(State::Failed, reading.failure);
    const auto ours = ReleaseVersion::parse(options_.version, QString::number(options_.buildNumber));
    if (ours && compareVersions(reading.newest->version, *ours) <= 0)
        return finish(State::UpToDate, {}, reading.newest);
    finish(State::UpdateAvailable, {}, reading.newest);
}

QString Updater::failureFor(const QNetworkReply& reply) const
{
    const auto host = currentUrl_.host();
    switch (reply.error()) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::TimeoutError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyNotFoundError:
        return tr("The update server %1 could not be reached. Check the network connection and try again.").arg(host);
    case QNetworkReply::SslHandshakeFailedError:
        return tr("The identity of the update server %1 could not be verified.").arg(host);
    default: break;
    }
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status >= 400) return tr("The update server answered with an error (HTTP %1).").arg(status);
    return tr("The update check failed: %1").arg(reply.errorString());
}

void Updater::finish(State state, const QString& reason, const std::optional<FeedRelease>& release)
{
    deadline_.stop();
    const bool speak = origin_ == Origin::player || state == State::UpdateAvailable;
    if (speak) {
        state_ = state;
        failureReason_ = reason;
        latestVersion_ = release ? release->version.text() : QString();
        downloadUrl_ = release ? release->downloadUrl : QUrl();
        releaseNotesUrl_ = release ? release->releaseNotesUrl : QUrl();
        emit stateChanged();
    }
    setCanCheck(configuration_.has_value());
    if (automaticStarted_) scheduleAutomaticCheck();
    if (speak) emit resultReady();
}

void Updater::startAutomaticChecks()
{
    if (!configuration_ || !configuration_->automaticChecks) return;
    automaticStarted_ = true;
    scheduleAutomaticCheck();
    if (nextAutomaticCheck_ <= now()) onAutomaticTimer();
}

void Updater::scheduleAutomaticCheck()
{
    const auto current = now();
    const auto interval = std::chrono::duration_cast<std::chrono::seconds>(configuration_->checkInterval).count();
    const auto last = defaults_ ? defaults_->integer(lastCheckKey) : std::nullopt;
    auto due = last ? QDateTime::fromSecsSinceEpoch(*last, Qt::UTC).addSecs(interval) : current;
    // A last check in the future means the clock was set back: count from now instead.
    if (last && *last > current.toSecsSinceEpoch()) due = current.addSecs(interval);
    nextAutomaticCheck_ = due;
    const auto wait = std::clamp<qint64>(current.msecsTo(due), 0,
                                         std::chrono::duration_cast<std::chrono::milliseconds>(scheduleTick).count());
    automaticTimer_.start(std::chrono::milliseconds(wait));
}

void Updater::onAutomaticTimer()
{
    // A check of the player's own is running: it counts as this one.
    if (!canCheck_) return;
    if (nextAutomaticCheck_ > now()) return scheduleAutomaticCheck();
    automaticTimer_.stop();
    begin(Origin::schedule);
}

} // namespace zelvaine
