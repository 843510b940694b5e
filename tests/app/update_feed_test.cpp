#include "app/update_feed.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

ReleaseVersion version(const char* text, const char* build = "")
{
    auto parsed = ReleaseVersion::parse(QString::fromLatin1(text), QString::fromLatin1(build));
    EXPECT_TRUE(parsed.has_value()) << text;
    return parsed.value_or(ReleaseVersion{});
}

TEST(ReleaseVersion, ComparesComponentsAsNumbersAndBuildsOnlyBetweenEqualVersions)
{
    const struct {
        const char* a;
        const char* aBuild;
        const char* b;
        const char* bBuild;
        int order;
    } cases[] = {
        {"1.10", "", "1.9", "", 1},      {"1.2", "", "1.2.0", "", 0},  {"2", "", "1.99", "", 1},
        {"1.2", "7", "1.2", "12", -1},   {"1.3", "1", "1.2", "99", 1}, {"1.2", "", "1.2", "5", 0},
        {"0.0.1", "", "0.0.0.9", "", 1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(compareVersions(version(c.a, c.aBuild), version(c.b, c.bBuild)), c.order) << c.a << " vs " << c.b;
        EXPECT_EQ(compareVersions(version(c.b, c.bBuild), version(c.a, c.aBuild)), -c.order) << c.b << " vs " << c.a;
    }
    for (const char* bad : {"", "1.", ".1", "1..2", "1.2.3.4.5", "v1.2", "1.2b", "1.-2", "99999999999"})
        EXPECT_FALSE(ReleaseVersion::parse(QString::fromLatin1(bad)).has_value()) << bad;
    EXPECT_FALSE(ReleaseVersion::parse("1.2", "seven").has_value());
    EXPECT_EQ(version("1.02", "3").text(), "1.2 (3)");
}

TEST(FeedReading, TakesTheNewestUsableItemAndPassesOverTheRest)
{
    const QByteArray feed = R"(<?xml version="1.0"?>
<rss version="2.0" xmlns:other="urn:other"><channel><title>t</title>
  <item><title>Old</title><version>1.0</version><enclosure url="https://example.org/1.0.tar.xz"/></item>
  <item><title>No address</title><version>9.0</version></item>
  <item><title>Plain HTTP</title><version>8.0</version><link>http://example.org/8</link></item>
  <item><title>Bad version</title><version>latest</version><link>https://example.org/x</link></item>
  <item><title>Newest</title><version> 1.4 </version><build>3</build><other:note>ignored <b>here</b></other:note>
        <link>https://example.org/1.4/notes</link></item>
</channel></rss>)";
    const auto reading = readFeed(feed);
    ASSERT_TRUE(reading.newest.has_value()) << reading.failure.toStdString();
    EXPECT_EQ(reading.newest->title, "Newest");
    EXPECT_EQ(reading.newest->version.text(), "1.4 (3)");
    EXPECT_TRUE(reading.newest->downloadUrl.isEmpty());
    EXPECT_EQ(reading.newest->releaseNotesUrl, QUrl("https://example.org/1.4/notes"));
}

TEST(FeedReading, HostileDocumentsAreRefused)
{
    const QByteArray external = R"(<?xml version="1.0"?><!DOCTYPE rss [<!ENTITY x SYSTEM "file:///etc/passwd">]>
<rss><channel><item><version>1.0</version><link>https://example.org/&x;</link></item></channel></rss>)";
    EXPECT_TRUE(readFeed(external).failure.contains("document type"));
    EXPECT_TRUE(readFeed("<rss><channel><item><version>1.0</version>&undeclared;</item></channel></rss>")
                    .failure.contains("damaged"));
    EXPECT_FALSE(readFeed(QByteArray(100000, '<')).newest.has_value());
    EXPECT_FALSE(readFeed(QByteArray("\0\0\0", 3)).newest.has_value());
}

TEST(AddressRule, HttpsEverywhereAndPlainHttpOnlyToThisMachine)
{
    for (const char* allowed : {"https://updates.example.org/feed.xml", "http://127.0.0.1:8080/f", "http://[::1]/f",
                                "http://localhost/f", "HTTPS://Example.org/"})
        EXPECT_FALSE(addressRefusal(QUrl(allowed)).has_value()) << allowed;
    for (const char* refused : {"http://example.org/feed.xml", "http://127.0.0.1.example.org/", "ftp://example.org/f",
                                "file:///etc/passwd", "https:///nohost", "not a url"})
        EXPECT_TRUE(addressRefusal(QUrl(refused)).has_value()) << refused;
}

TEST(UpdateConfigurationReading, AcceptsTheDocumentedFormAndNothingElse)
{
    const auto full = readUpdateConfiguration(
        R"({"feedURL": "https://updates.example.org/feed.xml", "automaticChecks": false, "checkIntervalHours": 6})");
    ASSERT_TRUE(full.configuration.has_value()) << full.failure.toStdString();
    EXPECT_EQ(full.configuration->feedUrl.host(), "updates.example.org");
    EXPECT_FALSE(full.configuration->automaticChecks);
    EXPECT_EQ(full.configuration->checkInterval, std::chrono::hours(6));

    const auto defaults = readUpdateConfiguration(R"({"feedURL": "https://updates.example.org/feed.xml"})");
    ASSERT_TRUE(defaults.configuration.has_value());
    EXPECT_TRUE(defaults.configuration->automaticChecks);
    EXPECT_EQ(defaults.configuration->checkInterval, std::chrono::hours(24));

    for (const char* damaged : {
             "",
             "[]",
             R"({"feedURL": 5})",
             R"({"feedURL": "http://updates.example.org/feed.xml"})",
             R"({"feedURL": "https://u.example.org/f", "automaticChecks": "yes"})",
             R"({"feedURL": "https://u.example.org/f", "checkIntervalHours": 0})",
             R"({"feedURL": "https://u.example.org/f", "checkIntervalHours": 1.5})",
             R"({"feedURL": "https://u.example.org/f", "checkIntervalHours": 1e300})",
         }) {
        const auto reading = readUpdateConfiguration(damaged);
        EXPECT_FALSE(reading.configuration.has_value()) << damaged;
        EXPECT_FALSE(reading.failure.isEmpty()) << damaged;
    }
}

// The built-in configuration names the packager's feed, or none at all.
TEST(UpdateConfigurationReading, TheBuiltInConfigurationNamesThePackagersFeed)
{
    const auto shipped = loadUpdateConfiguration(QStringLiteral(":/update/update.json"));
    ASSERT_TRUE(shipped.failure.isEmpty()) << shipped.failure.toStdString();
    const QString feed = QStringLiteral(ZELVAINE_UPDATE_FEED);
    if (feed.isEmpty()) {
        EXPECT_FALSE(shipped.configuration.has_value());
    } else {
        ASSERT_TRUE(shipped.configuration.has_value());
        EXPECT_EQ(shipped.configuration->feedUrl, QUrl(feed));
    }
}

} // namespace
} // namespace zelvaine
