#pragma once

#include "app/update_feed.hpp"

#include <QDateTime>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <functional>

class QNetworkReply;

namespace zelvaine {

class DefaultsStore;

// Checks the release feed named by the update configuration and tells the player, honestly, what
// it found. Nothing is sent but a plain request for the feed.
class Updater : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application from its update configuration")
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY canCheckForUpdatesChanged FINAL)
    Q_PROPERTY(State state READ state NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString latestVersion READ latestVersion NOTIFY stateChanged FINAL)
    Q_PROPERTY(QUrl downloadUrl READ downloadUrl NOTIFY stateChanged FINAL)
    Q_PROPERTY(QUrl releaseNotesUrl READ releaseNotesUrl NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString failureReason READ failureReason NOTIFY stateChanged FINAL)
    Q_PROPERTY(bool isConfigured READ isConfigured CONSTANT FINAL)
    Q_PROPERTY(QString feedHost READ feedHost CONSTANT FINAL)
    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT FINAL)

public:
    // Capitalised for QML, which only sees enumerators that start with a capital letter.
    enum class State { Idle, Checking, UpToDate, UpdateAvailable, Failed };
    Q_ENUM(State)

    struct Options {
        std::chrono::milliseconds timeout{15000};
        qint64 maxFeedBytes = 1024 * 1024;
        int maxRedirects = 5;
        QString version;                  // empty: this build's
        int buildNumber = 0;              // 0: this build's
        std::function<QDateTime()> clock; // empty: the system clock
    };

    // `defaults` keeps the time of the last check between runs; it may be null.
    Updater(UpdateConfigurationReading configuration, DefaultsStore* defaults, Options options,
            QObject* parent = nullptr);
    Updater(UpdateConfigurationReading configuration, DefaultsStore* defaults, QObject* parent = nullptr);
    ~Updater() override;

    bool canCheckForUpdates() const { return canCheck_; }
    State state() const { return state_; }
    QString latestVersion() const { return latestVersion_; }
    QUrl downloadUrl() const { return downloadUrl_; }
    QUrl releaseNotesUrl() const { return releaseNotesUrl_; }
    QString failureReason() const { return failureReason_; }
    bool isConfigured() const { return configuration_.has_value(); }
    // Empty when the build has no feed (or a damaged configuration); else the feed's host, for
    // the privacy text.
    QString feedHost() const;
    QString currentVersion() const;
    // When the configuration's failure explains why checking is off.
    QString configurationProblem() const { return configurationProblem_; }

    // A check the player asked for; its outcome always ends in resultReady().
    Q_INVOKABLE void checkForUpdates();
    // The player gave up waiting: the check stops without a result.
    Q_INVOKABLE void cancelCheck();
    // Starts the scheduled checks if the configuration asks for them: one now when the last was
    // an interval ago or more, then one per interval. These speak up only when an update exists.
    void startAutomaticChecks();
    // When the next scheduled check is due; invalid when none is scheduled.
    QDateTime nextAutomaticCheck() const { return nextAutomaticCheck_; }

signals:
    void canCheckForUpdatesChanged();
    void stateChanged();
    // The state holds a result to show: after every user-started check, and after a scheduled
    // one that found an update.
    void resultReady();

private:
    enum class Origin { player, schedule };

    void begin(Origin origin);
    void request(const QUrl& url);
    void followRedirect(const QNetworkReply& reply);
    void fail(const QString& reason);
    void complete(QNetworkReply* reply);
    void finish(State state, const QString& reason, const std::optional<FeedRelease>& release = std::nullopt);
    void setCanCheck(bool value);
    void scheduleAutomaticCheck();
    void onAutomaticTimer();
    QDateTime now() const;
    QString failureFor(const QNetworkReply& reply) const;

    std::optional<UpdateConfiguration> configuration_;
    QString configurationProblem_;
    DefaultsStore* defaults_;
    Options options_;
    QNetworkAccessManager network_;
    QPointer<QNetworkReply> reply_;
    Origin origin_ = Origin::player;
    QByteArray received_;
    QString pendingFailure_;
    QUrl currentUrl_;
    int redirects_ = 0;
    QTimer deadline_;
    QTimer automaticTimer_;
    QDateTime nextAutomaticCheck_;
    bool automaticStarted_ = false;

    bool canCheck_ = false;
    State state_ = State::Idle;
    QString latestVersion_;
    QUrl downloadUrl_;
    QUrl releaseNotesUrl_;
    QString failureReason_;
};

} // namespace zelvaine
