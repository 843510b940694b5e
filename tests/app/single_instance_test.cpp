// One game per session: a second launch hands its file to the game already running, over a
// session bus of the test's own as a desktop provides it, and over the socket where there is none.

#include "app/single_instance.hpp"
#include "engine/game_state.hpp"
#include "tests/app/game_process.hpp"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFileInfo>
#include <QUrl>

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <string>

namespace zelvaine {
namespace {

// A session bus of the test's own, on a socket in the scratch folder. Like a desktop's, it starts
// the game from its D-Bus service file when something asks for the game's name.
class PrivateBus {
public:
    explicit PrivateBus(const testing::GameHome& home) : address_("unix:path=" + (home.path() / "bus").string())
    {
        const auto services = home.path() / "services";
        std::filesystem::create_directories(services);
        // The service file as built, started from the build instead of where it is installed.
        std::ifstream built(ZELVAINE_SERVICE_FILE);
        std::ofstream service(services / "nl.orvent.zelvaine.service");
        for (std::string line; std::getline(built, line);)
            service << (line.starts_with("Exec=") ? std::string("Exec=") + ZELVAINE_GAME + " --answer-yes" : line)
                    << '\n';
        std::ofstream(home.path() / "bus.conf")
            << "<busconfig><type>session</type><listen>" << address_ << "</listen>"
            << "<servicedir>" << services.string() << "</servicedir>"
            << "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
            << "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
        // Started with the game's surroundings, which the games it starts inherit.
        pid_ = home.start("/usr/bin/dbus-daemon", {"--config-file=" + (home.path() / "bus.conf").string(), "--nofork"});
        testing::eventually([&] { return std::filesystem::exists(home.path() / "bus"); }, std::chrono::seconds(10));
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus()
    {
        kill(pid_, SIGTERM);
        testing::waitForExit(pid_);
    }

    std::string setting() const { return "DBUS_SESSION_BUS_ADDRESS=" + address_; }
    const std::string& address() const { return address_; }

private:
    std::string address_;
    pid_t pid_ = -1;
};

// The desktop's side of the bus: a connection of the test's own, which needs an application object.
class BusClient {
public:
    explicit BusClient(const PrivateBus& bus)
        : application_(argc_, argv_),
          connection_(QDBusConnection::connectToBus(QString::fromStdString(bus.address()), "desktop"))
    {}
    BusClient(const BusClient&) = delete;
    BusClient& operator=(const BusClient&) = delete;
    ~BusClient() { QDBusConnection::disconnectFromBus("desktop"); }

    QDBusConnection& connection() { return connection_; }
    QDBusMessage callGame(const QString& method, const QVariantList& arguments)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(QString::fromLatin1(applicationId),
                                                           QString::fromLatin1(applicationObjectPath),
                                                           "org.freedesktop.Application", method);
        call.setArguments(arguments);
        return connection_.call(call, QDBus::Block, 30000);
    }

private:
    int argc_ = 1;
    char name_[8] = "desktop";
    char* argv_[2] = {name_, nullptr};
    QCoreApplication application_;
    QDBusConnection connection_;
};

class SingleInstanceTest : public ::testing::Test {
protected:
    // A shared game told apart from the running one by its move count.
    std::filesystem::path sharedGame()
    {
        const GameState deal = dealNewGame();
        GameState moved = deal;
        moved.moveCount = 77;
        return home.writeGame("shared game.zelvaine", moved, deal);
    }

    bool openedSharedGame() const
    {
        const auto saved = home.savedGame();
        return saved && saved->challenge.wasImported && saved->currentState.moveCount == 77;
    }

    void stop(pid_t game) const
    {
        kill(game, SIGTERM);
        EXPECT_EQ(testing::waitForExit(game), 0);
    }

    testing::GameHome home;
};

TEST_F(SingleInstanceTest, ASecondLaunchOnTheSessionBusHandsItsFileOverAndEnds)
{
    const PrivateBus bus(home);
    BusClient desktop(bus);
    ASSERT_TRUE(desktop.connection().isConnected());

    const pid_t first = home.start(ZELVAINE_GAME, {"--answer-yes"}, {bus.setting()});
    ASSERT_TRUE(testing::eventually([&] {
        return desktop.connection().interface()->isServiceRegistered(QString::fromLatin1(applicationId)).value();
    })) << "the game never took its name on the bus";

    // No file: the running game only comes forward.
    const pid_t plain = home.start(ZELVAINE_GAME, {}, {bus.setting()});
    EXPECT_EQ(testing::waitForExit(plain), 0);

    // A relative path, as a shell passes it, must reach a game started in another folder.
    const auto file = sharedGame();
    const auto relative = std::filesystem::relative(file, std::filesystem::current_path());
    const pid_t second = home.start(ZELVAINE_GAME, {relative.string()}, {bus.setting()});
    EXPECT_EQ(testing::waitForExit(second), 0);
    EXPECT_TRUE(testing::eventually([&] { return openedSharedGame(); })) << "the running game did not open the file";

    // The desktop itself asks through the freedesktop interface.
    EXPECT_EQ(desktop.callGame("Activate", {QVariantMap{{"activation-token", "test-token"}}}).type(),
              QDBusMessage::ReplyMessage);
    stop(first);
}

TEST_F(SingleInstanceTest, TheDesktopStartsTheGameThroughTheBusWithAFileToOpen)
{
    const PrivateBus bus(home);
    BusClient desktop(bus);
    ASSERT_TRUE(desktop.connection().isConnected());

    // As a DBusActivatable desktop entry is opened: no process, only a call to the entry's name.
    const QDBusMessage reply =
        desktop.callGame("Open", {QStringList{SingleInstance::fileUri(QString::fromStdString(sharedGame().string()))},
                                  QVariantMap{}});
    EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
    EXPECT_TRUE(testing::eventually([&] { return openedSharedGame(); })) << "the started game did not open the file";

    const auto game = desktop.connection().interface()->servicePid(QString::fromLatin1(applicationId));
    ASSERT_TRUE(game.isValid());
    kill(static_cast<pid_t>(game.value()), SIGTERM);
    EXPECT_TRUE(testing::eventually([&] { return kill(static_cast<pid_t>(game.value()), 0) != 0; }));
}

TEST_F(SingleInstanceTest, WithoutASessionBusASecondLaunchHandsItsFileOverThroughTheSocket)
{
    const pid_t first = home.start(ZELVAINE_GAME, {"--answer-yes"});
    ASSERT_TRUE(testing::eventually([&] { return std::filesystem::exists(home.path() / "runtime" / applicationId); }))
        << "the game never listened for other launches";

    const pid_t second = home.start(ZELVAINE_GAME, {sharedGame().string()});
    EXPECT_EQ(testing::waitForExit(second), 0);
    EXPECT_TRUE(testing::eventually([&] { return openedSharedGame(); })) << "the running game did not open the file";

    // A crash leaves the socket behind; the next game must take its place, not hand over to it.
    kill(first, SIGKILL);
    testing::waitForExit(first);
    const auto socket = home.path() / "runtime" / applicationId;
    std::error_code ignored;
    const auto staleSince = std::filesystem::last_write_time(socket, ignored);
    const pid_t next = home.start(ZELVAINE_GAME, {});
    ASSERT_TRUE(testing::eventually([&] {
        std::error_code missing;
        return std::filesystem::last_write_time(socket, missing) != staleSince && !missing;
    })) << "the next game did not listen in place of the crashed one";
    const pid_t probe = home.start(ZELVAINE_GAME, {});
    EXPECT_EQ(testing::waitForExit(probe), 0);
    stop(next);
}

TEST(SingleInstanceFileUri, NamesTheFileWhateverTheFolderItWasGivenIn)
{
    EXPECT_EQ(SingleInstance::fileUri("file:///home/a/b%20c.zelvaine"), QString("file:///home/a/b%20c.zelvaine"));
    EXPECT_EQ(SingleInstance::fileUri("/home/a/b c.zelvaine"), QString("file:///home/a/b%20c.zelvaine"));
    const QString fromHere = SingleInstance::fileUri("game.zelvaine");
    EXPECT_EQ(fromHere, QUrl::fromLocalFile(QFileInfo("game.zelvaine").absoluteFilePath()).toString(QUrl::FullyEncoded));
    EXPECT_TRUE(fromHere.startsWith("file:///"));
}

} // namespace
} // namespace zelvaine
