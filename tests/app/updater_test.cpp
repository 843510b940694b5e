#include "app/updater.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "test_http_server.hpp"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

using testing::TestHttpServer;
using testing::TestResponse;
using State = Updater::State;

QByteArray feedWith(const QByteArray& items)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rss version=\"2.0\"><channel><title>Zelvaine</title>" + items +
           "</channel></rss>";
}

QByteArray item(const QByteArray& version, const QByteArray& build)
{
    return "<item><title>Zelvaine " + version + "</title><version>" + version + "</version><build>" + build +
           "</build><link>https://example.org/notes/" + version +
           "</link><enclosure url=\"https://example.org/zelvaine-" + version +
           ".tar.xz\" type=\"application/x-xz\"/></item>";
}

UpdateConfigurationReading configurationFor(const QUrl& feed, bool automatic = false)
{
    return {UpdateConfiguration{feed, automatic, std::chrono::hours(24)}, {}};
}

Updater::Options options(std::chrono::milliseconds timeout = std::chrono::seconds(10))
{
    Updater::Options result;
    result.timeout = timeout;
    result.maxFeedBytes = 64 * 1024;
    result.version = QStringLiteral("1.2");
    result.buildNumber = 5;
    return result;
}

// Starts a user check and waits for its result; canCheckForUpdates must be false meanwhile.
void checkAndWait(Updater& updater)
{
    QSignalSpy results(&updater, &Updater::resultReady);
    ASSERT_TRUE(updater.canCheckForUpdates());
    updater.checkForUpdates();
    EXPECT_FALSE(updater.canCheckForUpdates());
    EXPECT_EQ(updater.state(), State::Checking);
    updater.checkForUpdates(); // ignored while one runs
    ASSERT_TRUE(results.wait(20000)) << "no result";
    EXPECT_EQ(results.count(), 1);
    EXPECT_TRUE(updater.canCheckForUpdates());
}

TEST(Updater, ReportsANewerReleaseWithItsVersionAndAddresses)
{
    TestHttpServer server;
    server.serve("/feed.xml", {200, feedWith(item("1.1", "9") + item("1.3", "7") + item("1.2", "6")), {}, true, false});
    InMemoryDefaultsStore defaults;
    Updater updater(configurationFor(server.url("/feed.xml")), &defaults, options());
    EXPECT_EQ(updater.feedHost(), "127.0.0.1");
    EXPECT_EQ(updater.currentVersion(), "1.2 (5)");

    checkAndWait(updater);
    EXPECT_EQ(updater.state(), State::UpdateAvailable);
    EXPECT_EQ(updater.latestVersion(), "1.3 (7)");
    EXPECT_EQ(updater.downloadUrl(), QUrl("https://example.org/zelvaine-1.3.tar.xz"));
    EXPECT_EQ(updater.releaseNotesUrl(), QUrl("https://example.org/notes/1.3"));
    EXPECT_TRUE(updater.failureReason().isEmpty());
    EXPECT_TRUE(defaults.integer("zelvaine.updates.last-check").has_value());

    // A plain request: the feed's own path, our name and version, nothing about the system.
    ASSERT_EQ(server.requests().size(), 1);
    const auto& request = server.requests().first();
    EXPECT_TRUE(request.startsWith("GET /feed.xml HTTP/1.1\r\n")) << request.toStdString();
    EXPECT_TRUE(request.contains("User-Agent: Zelvaine/1.2\r\n")) << request.toStdString();
    EXPECT_FALSE(request.contains("Cookie")) << request.toStdString();
}

TEST(Updater, SaysUpToDateWhenTheNewestReleaseIsOursOrOlder)
{
    const struct {
        QByteArray feed;
        const char* newest;
    } cases[] = {
        {feedWith(item("1.2", "5")), "1.2 (5)"},
        {feedWith(item("1.1", "40") + item("0.9", "1")), "1.1 (40)"},
        {feedWith(item("1.2", "4")), "1.2 (4)"},
        {feedWith("<item><version>1.2.0</version><link>https://example.org/notes</link></item>"), "1.2.0"},
    };
    for (const auto& [feed, newest] : cases) {
        TestHttpServer server;
        server.serve("/feed.xml", {200, feed, {}, true, false});
        Updater updater(configurationFor(server.url("/feed.xml")), nullptr, options());
        checkAndWait(updater);
        EXPECT_EQ(updater.state(), State::UpToDate) << feed.toStdString() << " " << updater.failureReason().toStdString();
        EXPECT_EQ(updater.latestVersion(), newest);
    }
}

TEST(Updater, BadFeedsEndInAFailureThatSaysWhy)
{
    const QByteArray billionLaughs =
        "<?xml version=\"1.0\"?><!DOCTYPE rss [<!ENTITY a \"aaaaaaaaaa\">"
        "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">]>"
        "<rss><channel><item><title>&c;</title></item></channel></rss>";
    const struct {
        TestResponse response;
        const char* reason;
    } cases[] = {
        {{200, "<rss><channel><item><version>2.0</version>", {}, true, false}, "damaged"},
        {{200, "this is not xml at all", {}, true, false}, "not valid XML"},
        {{200, "", {}, true, false}, "empty"},
        {{200, feedWith(""), {}, true, false}, "no releases"},
        {{200, feedWith("<item><version>two</version><link>https://example.org</link></item>"), {}, true, false},
         "no release with a readable version"},
        {{200, "<html><body>Moved</body></html>", {}, true, false}, "did not send a release feed"},
        {{200, billionLaughs, {}, true, false}, "document type"},
        {{404, "gone", {}, true, false}, "HTTP 404"},
        {{200, QByteArray(200 * 1024, 'x'), {}, true, false}, "larger than 64 KB"},
        {{200, QByteArray(200 * 1024, 'x'), {}, false, false}, "larger than 64 KB"},
    };
    for (const auto& [response, reason] : cases) {
        TestHttpServer server;
        server.serve("/feed.xml", response);
        Updater updater(configurationFor(server.url("/feed.xml")), nullptr, options());
        checkAndWait(updater);
        EXPECT_EQ(updater.state(), State::Failed) << reason;
        EXPECT_TRUE(updater.failureReason().contains(QLatin1String(reason))) << updater.failureReason().toStdString();
        EXPECT_TRUE(updater.latestVersion().isEmpty());
    }
}

TEST(Updater, AServerThatIsGoneOrSilentEndsInAFailure)
{
    QUrl closedPort;
    {
        QTcpServer probe;
        ASSERT_TRUE(probe.listen(QHostAddress::LocalHost));
        closedPort = QUrl(QStringLiteral("http://127.0.0.1:%1/feed.xml").arg(probe.serverPort()));
    }
    Updater unreachable(configurationFor(closedPort), nullptr, options());
    checkAndWait(unreachable);
    EXPECT_EQ(unreachable.state(), State::Failed);
    EXPECT_TRUE(unreachable.failureReason().contains("could not be reached"))
        << unreachable.failureReason().toStdString();

    TestHttpServer server;
    server.serve("/feed.xml", {200, {}, {}, true, true});
    Updater slow(configurationFor(server.url("/feed.xml")), nullptr, options(std::chrono::milliseconds(300)));
    checkAndWait(slow);
    EXPECT_EQ(slow.state(), State::Failed);
    EXPECT_TRUE(slow.failureReason().contains("did not answer")) << slow.failureReason().toStdString();

    // The next check starts afresh and can succeed.
    server.serve("/feed.xml", {200, feedWith(item("1.2", "5")), {}, true, false});
    checkAndWait(slow);
    EXPECT_EQ(slow.state(), State::UpToDate);
}

// The player may stop a check that hangs: no result is shown, and the next check can start.
TEST(Updater, ACancelledCheckEndsQuietly)
{
    TestHttpServer server;
    server.serve("/feed.xml", {200, {}, {}, true, true});
    Updater updater(configurationFor(server.url("/feed.xml")), nullptr, options());
    QSignalSpy results(&updater, &Updater::resultReady);
    updater.checkForUpdates();
    ASSERT_EQ(updater.state(), State::Checking);
    updater.cancelCheck();
    EXPECT_EQ(updater.state(), State::Idle);
    EXPECT_TRUE(updater.canCheckForUpdates());
    QTest::qWait(100);
    EXPECT_EQ(results.count(), 0);

    server.serve("/feed.xml", {200, feedWith(item("1.2", "5")), {}, true, false});
    checkAndWait(updater);
    EXPECT_EQ(updater.state(), State::UpToDate);
}

TEST(Updater, RedirectsStayOnAllowedAddressesAndAreLimited)
{
    TestHttpServer server;
    server.serve("/moved", {301, {}, {{"Location", server.url("/feed.xml").toEncoded()}}, true, false});
    server.serve("/feed.xml", {200, feedWith(item("2.0", "1")), {}, true, false});
    server.serve("/away", {302, {}, {{"Location", "http://example.org/feed.xml"}}, true, false});
    for (int hop = 0; hop < 10; ++hop) {
        const auto next = server.url(QStringLiteral("/hop%1").arg(hop + 1)).toEncoded();
        server.serve(QStringLiteral("/hop%1").arg(hop), {302, {}, {{"Location", next}}, true, false});
    }

    Updater followed(configurationFor(server.url("/moved")), nullptr, options());
    checkAndWait(followed);
    EXPECT_EQ(followed.state(), State::UpdateAvailable);

    Updater refused(configurationFor(server.url("/away")), nullptr, options());
    checkAndWait(refused);
    EXPECT_EQ(refused.state(), State::Failed);
    EXPECT_TRUE(refused.failureReason().contains("HTTPS")) << refused.failureReason().toStdString();

    Updater looping(configurationFor(server.url("/hop0")), nullptr, options());
    checkAndWait(looping);
    EXPECT_EQ(looping.state(), State::Failed);
    EXPECT_TRUE(looping.failureReason().contains("redirected")) << looping.failureReason().toStdString();
    EXPECT_EQ(server.requests().size(), 1 + 1 + 1 + 6); // the chain: the first request and five redirects
}

TEST(Updater, WithoutAUsableConfigurationNothingCanBeChecked)
{
    const UpdateConfigurationReading readings[] = {
        readUpdateConfiguration(R"({"feedURL": "http://updates.example.org/feed.xml"})"),
        loadUpdateConfiguration(QStringLiteral("/nonexistent/update.json")),
        readUpdateConfiguration("{ broken"),
    };
    for (const auto& reading : readings) {
        Updater updater(reading, nullptr, options());
        EXPECT_FALSE(updater.isConfigured());
        EXPECT_FALSE(updater.canCheckForUpdates());
        EXPECT_TRUE(updater.feedHost().isEmpty());
        QSignalSpy results(&updater, &Updater::resultReady);
        updater.checkForUpdates();
        EXPECT_EQ(results.count(), 1);
        EXPECT_EQ(updater.state(), State::Failed);
        EXPECT_FALSE(updater.failureReason().isEmpty());
        EXPECT_FALSE(updater.canCheckForUpdates());
        updater.startAutomaticChecks();
        EXPECT_FALSE(updater.nextAutomaticCheck().isValid());
    }
    EXPECT_TRUE(Updater(readings[0], nullptr, options()).configurationProblem().contains("HTTPS"));
}

// A build without a feed is not broken: it says that it never checks, and blames no network.
TEST(Updater, ABuildWithoutAFeedNeverChecks)
{
    for (const char* json : {R"({"feedURL": ""})", R"({"automaticChecks": true})", R"({"feedURL": null})"}) {
        const auto reading = readUpdateConfiguration(json);
        EXPECT_FALSE(reading.configuration.has_value()) << json;
        EXPECT_TRUE(reading.failure.isEmpty()) << json;
        Updater updater(reading, nullptr, options());
        EXPECT_FALSE(updater.canCheckForUpdates());
        EXPECT_TRUE(updater.feedHost().isEmpty());
        updater.checkForUpdates();
        EXPECT_EQ(updater.state(), State::Failed);
        EXPECT_TRUE(updater.failureReason().contains("no update feed")) << updater.failureReason().toStdString();
    }
}

TEST(Updater, ScheduledChecksRunOncePerIntervalAndSpeakOnlyOfUpdates)
{
    TestHttpServer server;
    server.serve("/feed.xml", {200, feedWith(item("1.2", "5")), {}, true, false});
    InMemoryDefaultsStore defaults;
    auto clock = QDateTime(QDate(2026, 7, 28), QTime(12, 0), Qt::UTC);
    auto timed = options();
    timed.clock = [&clock] { return clock; };

    // Checked an hour ago: nothing now, the next one a day after the last.
    defaults.set("zelvaine.updates.last-check", static_cast<std::int64_t>(clock.addSecs(-3600).toSecsSinceEpoch()));
    {
        Updater updater(configurationFor(server.url("/feed.xml"), true), &defaults, timed);
        updater.startAutomaticChecks();
        EXPECT_TRUE(updater.canCheckForUpdates());
        EXPECT_EQ(updater.nextAutomaticCheck(), clock.addSecs(23 * 3600));
    }
    EXPECT_TRUE(server.requests().isEmpty());

    // A day later: it checks at once, finds nothing new and says nothing.
    clock = clock.addDays(1);
    {
        Updater updater(configurationFor(server.url("/feed.xml"), true), &defaults, timed);
        QSignalSpy results(&updater, &Updater::resultReady);
        QSignalSpy ready(&updater, &Updater::canCheckForUpdatesChanged);
        updater.startAutomaticChecks();
        EXPECT_FALSE(updater.canCheckForUpdates());
        while (!updater.canCheckForUpdates()) ASSERT_TRUE(ready.wait(20000));
        EXPECT_EQ(results.count(), 0);
        EXPECT_EQ(updater.state(), State::Idle);
        EXPECT_EQ(defaults.integer("zelvaine.updates.last-check"), clock.toSecsSinceEpoch());
        EXPECT_EQ(updater.nextAutomaticCheck(), clock.addDays(1));
    }
    EXPECT_EQ(server.requests().size(), 1);

    // Another day, and a newer release: that one is reported.
    clock = clock.addDays(1);
    server.serve("/feed.xml", {200, feedWith(item("1.4", "1")), {}, true, false});
    Updater updater(configurationFor(server.url("/feed.xml"), true), &defaults, timed);
    QSignalSpy results(&updater, &Updater::resultReady);
    updater.startAutomaticChecks();
    ASSERT_TRUE(results.wait(20000));
    EXPECT_EQ(updater.state(), State::UpdateAvailable);
    EXPECT_EQ(updater.latestVersion(), "1.4 (1)");

    // Switched off in the configuration: never.
    Updater off(configurationFor(server.url("/feed.xml"), false), &defaults, timed);
    clock = clock.addDays(30);
    off.startAutomaticChecks();
    EXPECT_TRUE(off.canCheckForUpdates());
    EXPECT_FALSE(off.nextAutomaticCheck().isValid());
}

} // namespace
} // namespace zelvaine
