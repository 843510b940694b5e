#include "app/update_feed.hpp"

#include <QCoreApplication>

#include <QFile>
#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>

namespace zelvaine {

namespace {

// Nine digits always fit an int.
bool isNumber(const QString& text)
{
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,9}$"));
    return digits.match(text).hasMatch();
}

bool isLoopback(const QString& host)
{
    if (host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0) return true;
    const QHostAddress address(host);
    return !address.isNull() && address.isLoopback();
}

std::optional<FeedRelease> readItem(QXmlStreamReader& xml)
{
    QString title, version, build;
    QUrl link, enclosure;
    while (xml.readNextStartElement()) {
        const auto name = xml.name();
        if (name == QLatin1String("enclosure")) {
            enclosure = QUrl(xml.attributes().value(QLatin1String("url")).toString().trimmed());
            xml.skipCurrentElement();
            continue;
        }
        const auto text = xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        if (name == QLatin1String("title")) title = text;
        else if (name == QLatin1String("version")) version = text;
        else if (name == QLatin1String("build")) build = text;
        else if (name == QLatin1String("link")) link = QUrl(text);
    }
    auto parsed = ReleaseVersion::parse(version, build);
    if (!parsed) return std::nullopt;
    // The player is sent to these addresses, so they follow the feed's own rule.
    if (!enclosure.isEmpty() && addressRefusal(enclosure)) enclosure.clear();
    if (!link.isEmpty() && addressRefusal(link)) link.clear();
    if (enclosure.isEmpty() && link.isEmpty()) return std::nullopt;
    return FeedRelease{std::move(*parsed), title, enclosure, link};
}

} // namespace

std::optional<ReleaseVersion> ReleaseVersion::parse(const QString& version, const QString& build)
{
    const auto parts = version.trimmed().split(QLatin1Char('.'));
    if (parts.size() > 4) return std::nullopt;
    ReleaseVersion result;
    for (const auto& part : parts) {
        if (!isNumber(part)) return std::nullopt;
        result.components.push_back(part.toInt());
    }
    const auto buildText = build.trimmed();
    if (!buildText.isEmpty()) {
        if (!isNumber(buildText)) return std::nullopt;
        result.build = buildText.toInt();
    }
    return result;
}

QString ReleaseVersion::text() const
{
    QStringList parts;
    for (int component : components) parts.append(QString::number(component));
    auto joined = parts.join(QLatin1Char('.'));
    if (build) joined += QStringLiteral(" (%1)").arg(*build);
    return joined;
}

int compareVersions(const ReleaseVersion& a, const ReleaseVersion& b)
{
    const auto length = std::max(a.components.size(), b.components.size());
    for (std::size_t index = 0; index < length; ++index) {
        const int left = index < a.components.size() ? a.components[index] : 0;
        const int right = index < b.components.size() ? b.components[index] : 0;
        if (left != right) return left < right ? -1 : 1;
    }
    if (a.build && b.build && *a.build != *b.build) return *a.build < *b.build ? -1 : 1;
    return 0;
}

FeedReading readFeed(const QByteArray& data)
{
    QXmlStreamReader xml(data);
    // A feed has no use for a document type; refusing it keeps entity tricks out altogether.
    while (!xml.atEnd() && xml.tokenType() != QXmlStreamReader::StartElement) {
        if (xml.readNext() == QXmlStreamReader::DTD)
            return {std::nullopt,
                    QCoreApplication::translate("UpdateFeed",
                                                "The update feed declares a document type, which is not accepted.")};
    }
    if (xml.tokenType() != QXmlStreamReader::StartElement) {
        return {std::nullopt, data.trimmed().isEmpty()
                                  ? QCoreApplication::translate("UpdateFeed", "The update server sent an empty answer.")
                                  : QCoreApplication::translate("UpdateFeed", "The update feed is not valid XML.")};
    }
    if (xml.name() != QLatin1String("rss"))
        return {std::nullopt,
                QCoreApplication::translate("UpdateFeed", "The update server did not send a release feed.")};

    int items = 0;
    std::optional<FeedRelease> newest;
    while (xml.readNextStartElement()) {
        if (xml.name() != QLatin1String("channel")) {
            xml.skipCurrentElement();
            continue;
        }
        while (xml.readNextStartElement()) {
            if (xml.name() != QLatin1String("item")) {
                xml.skipCurrentElement();
                continue;
            }
            ++items;
            auto release = readItem(xml);
            if (release && (!newest || compareVersions(release->version, newest->version) > 0))
                newest = std::move(release);
        }
    }
    if (xml.hasError())
        return {std::nullopt, QCoreApplication::translate("UpdateFeed", "The update feed is damaged (line %1: %2).")
                                  .arg(xml.lineNumber())
                                  .arg(xml.errorString())};
    if (items == 0)
        return {std::nullopt, QCoreApplication::translate("UpdateFeed", "The update feed lists no releases.")};
    if (!newest)
        return {std::nullopt,
                QCoreApplication::translate("UpdateFeed",
                                            "The update feed lists no release with a readable version and address.")};
    return {std::move(newest), {}};
}

std::optional<QString> addressRefusal(const QUrl& url)
{
    if (!url.isValid() || url.host().isEmpty())
        return QCoreApplication::translate("UpdateFeed", "The address \"%1\" is not valid.").arg(url.toString());
    const auto scheme = url.scheme().toLower();
    if (scheme == QLatin1String("https")) return std::nullopt;
    if (scheme == QLatin1String("http") && isLoopback(url.host())) return std::nullopt;
    return QCoreApplication::translate("UpdateFeed", "Updates are only fetched over HTTPS; \"%1\" was refused.")
        .arg(url.toString());
}

UpdateConfigurationReading readUpdateConfiguration(const QByteArray& json)
{
    const auto damaged = [](const QString& why) {
        return UpdateConfigurationReading{
            std::nullopt, QCoreApplication::translate("UpdateFeed", "The update configuration is damaged: %1").arg(why)};
    };
    QJsonParseError error{};
    const auto document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) return damaged(error.errorString());
    if (!document.isObject()) return damaged(QStringLiteral("it is not an object."));
    const auto object = document.object();

    UpdateConfiguration configuration;
    const auto feed = object.value(QLatin1String("feedURL"));
    // A build whose packager named no feed never checks: that is a choice, not damage.
    if (feed.isUndefined() || feed.isNull() || (feed.isString() && feed.toString().isEmpty()))
        return {std::nullopt, {}};
    if (!feed.isString()) return damaged(QStringLiteral("\"feedURL\" must be a text."));
    configuration.feedUrl = QUrl(feed.toString(), QUrl::StrictMode);
    if (auto refusal = addressRefusal(configuration.feedUrl)) return damaged(*refusal);

    if (object.contains(QLatin1String("automaticChecks"))) {
        const auto automatic = object.value(QLatin1String("automaticChecks"));
        if (!automatic.isBool()) return damaged(QStringLiteral("\"automaticChecks\" must be true or false."));
        configuration.automaticChecks = automatic.toBool();
    }
    if (object.contains(QLatin1String("checkIntervalHours"))) {
        const auto interval = object.value(QLatin1String("checkIntervalHours"));
        const double hours = interval.toDouble(-1);
        if (!interval.isDouble() || hours < 1 || hours > 720 || hours != std::floor(hours))
            return damaged(QStringLiteral("\"checkIntervalHours\" must be a whole number from 1 to 720."));
        configuration.checkInterval = std::chrono::hours(static_cast<int>(hours));
    }
    return {configuration, {}};
}

UpdateConfigurationReading loadUpdateConfiguration(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {std::nullopt,
                QCoreApplication::translate("UpdateFeed", "The update configuration %1 could not be read.").arg(path)};
    // The file is a few lines; anything much larger is not ours.
    return readUpdateConfiguration(file.read(64 * 1024));
}

} // namespace zelvaine
