#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <chrono>
#include <optional>
#include <vector>

namespace zelvaine {

// A release's version: "X.Y" (up to four numeric components) and, when known, its build number.
struct ReleaseVersion {
    std::vector<int> components;
    std::optional<int> build;

    static std::optional<ReleaseVersion> parse(const QString& version, const QString& build = {});
    // "1.2 (34)", or "1.2" without a build number.
    QString text() const;
};

// Negative, zero or positive as `a` is older than, as new as, or newer than `b`. Missing
// components count as zero; build numbers decide only between equal versions that both have one.
int compareVersions(const ReleaseVersion& a, const ReleaseVersion& b);

struct FeedRelease {
    ReleaseVersion version;
    QString title;
    QUrl downloadUrl;     // the item's enclosure
    QUrl releaseNotesUrl; // the item's link
};

// The newest readable release of a feed, or why there is none.
struct FeedReading {
    std::optional<FeedRelease> newest;
    QString failure;
};

FeedReading readFeed(const QByteArray& xml);

// Why an address may not be fetched, or nothing when it may: HTTPS anywhere, plain HTTP only to
// this machine (where tests serve their feeds).
std::optional<QString> addressRefusal(const QUrl& url);

// The update configuration built into the application (resources/update/update.json.in, its
// feed from the ZELVAINE_UPDATE_FEED build option).
struct UpdateConfiguration {
    QUrl feedUrl;
    bool automaticChecks = true;
    std::chrono::hours checkInterval{24};
};

// No configuration and no failure: the build has no feed, and never checks.
struct UpdateConfigurationReading {
    std::optional<UpdateConfiguration> configuration;
    QString failure;
};

UpdateConfigurationReading readUpdateConfiguration(const QByteArray& json);
UpdateConfigurationReading loadUpdateConfiguration(const QString& path);

} // namespace zelvaine
