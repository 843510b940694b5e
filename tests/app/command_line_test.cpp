#include "app/command_line.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace zelvaine {
namespace {

struct Read {
    CommandLine line;
    std::string out;
    std::string err;
};

Read read(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "zelvaine");
    std::ostringstream out;
    std::ostringstream err;
    CommandLine line = readCommandLine(static_cast<int>(arguments.size()), arguments.data(), out, err);
    return {std::move(line), out.str(), err.str()};
}

TEST(CommandLine, QtOptionValuesAreNotTakenForTheSharedGame)
{
    const Read r = read({"-platform", "offscreen", "--style", "Basic", "-reverse", "deal.zelvaine"});
    EXPECT_FALSE(r.line.exitStatus);
    EXPECT_EQ(r.line.sharedGame, "deal.zelvaine");
    EXPECT_EQ(r.err, "");
}

TEST(CommandLine, UpdateConfigurationTakesItsFileEitherWay)
{
    EXPECT_EQ(read({"--update-configuration=/tmp/feed.json"}).line.updateConfiguration, "/tmp/feed.json");
    const Read separate = read({"--update-configuration", "/tmp/feed.json", "game.zelvaine"});
    EXPECT_EQ(separate.line.updateConfiguration, "/tmp/feed.json");
    EXPECT_EQ(separate.line.sharedGame, "game.zelvaine");
    EXPECT_EQ(read({"--update-configuration="}).line.exitStatus, 2);
    EXPECT_EQ(read({"--update-configuration"}).line.exitStatus, 2);
}

TEST(CommandLine, AfterTwoDashesAFileMayStartWithADash)
{
    const Read r = read({"--quit-after-first-frame", "--", "--odd.zelvaine"});
    EXPECT_FALSE(r.line.exitStatus);
    EXPECT_TRUE(r.line.quitAfterFirstFrame);
    EXPECT_EQ(r.line.sharedGame, "--odd.zelvaine");
}

TEST(CommandLine, MistakesAreRefusedOnStandardError)
{
    for (const auto& arguments : std::vector<std::vector<const char*>>{
             {"--frobnicate"}, {"-platform"}, {"a.zelvaine", "b.zelvaine"}, {"--update-configurationx=f"}}) {
        const Read r = read(arguments);
        EXPECT_EQ(r.line.exitStatus, 2) << arguments.front();
        EXPECT_EQ(r.out, "");
        EXPECT_NE(r.err.find("zelvaine --help"), std::string::npos) << r.err;
    }
}

} // namespace
} // namespace zelvaine
