// Runs the built zelvaine-cli as a script would and checks its answers and exit statuses.

#include "engine/state_json.hpp"
#include "tests/support/positions.hpp"
#include "tests/support/scratch_folder.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>

namespace zelvaine {
namespace {

namespace fs = std::filesystem;

struct CliRun {
    int status = -1;
    std::string out;
    std::string err;
};

std::string slurp(const fs::path& path)
{
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

class Cli : public ::testing::Test {
protected:
    std::string save(const GameState& state, const std::string& name = "state.json")
    {
        return write(toJson(state), name);
    }
    std::string write(const std::string& text, const std::string& name)
    {
        std::ofstream(dir_ / name) << text;
        return (dir_ / name).string();
    }

    // Arguments are passed through the shell; tests use only plain words and file names.
    CliRun run(const std::string& arguments, const std::string& input = "")
    {
        const auto in = write(input, "stdin.txt");
        const std::string command = std::string(ZELVAINE_CLI_PATH) + " " + arguments + " <" + in + " >" +
                                    (dir_ / "out.txt").string() + " 2>" + (dir_ / "err.txt").string();
        const int raw = std::system(command.c_str());
        CliRun result;
        result.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
        result.out = slurp(dir_ / "out.txt");
        result.err = slurp(dir_ / "err.txt");
        return result;
    }

    testing::ScratchFolder scratch_;
    const fs::path& dir_ = scratch_.path();
};

GameState smallBoard()
{
    GameState s = testing::emptyBoard();
    s.tableau[0] = testing::cards("9C 8H");
    s.tableau[3] = testing::cards("9S");
    s.hand[1] = testing::card("AD");
    s.foundations[2] = testing::foundationUpTo("2C");
    s.moveCount = 5;
    return s;
}

TEST_F(Cli, DealPrintsAFreshWellFormedPosition)
{
    const CliRun r = run("deal");
    ASSERT_EQ(r.status, 0) << r.err;
    auto state = gameStateFromJson(r.out);
    ASSERT_TRUE(state) << state.error().describe();
    EXPECT_TRUE(isWellFormed(*state));
    EXPECT_EQ(state->moveCount, 0);
}

TEST_F(Cli, MoveReportsEachOutcome)
{
    const auto file = save(smallBoard());

    const CliRun moved = run("move " + file + " tableau:0:1 tableau:3");
    ASSERT_EQ(moved.status, 0) << moved.err;
    const std::string prefix = R"({"outcome":"moved","counted":true,"fromFoundation":false,"state":)";
    ASSERT_EQ(moved.out.substr(0, prefix.size()), prefix);
    auto after = gameStateFromJson(moved.out.substr(prefix.size(), moved.out.size() - prefix.size() - 2));
    ASSERT_TRUE(after) << after.error().describe();
    EXPECT_EQ(after->tableau[3].size(), 2U);
    EXPECT_EQ(after->moveCount, 6);

    EXPECT_TRUE(run("move " + file + " foundation:2 hand:0")
                    .out.starts_with(R"({"outcome":"moved","counted":true,"fromFoundation":true,"state":)"));
    EXPECT_TRUE(run("move " + file + " hand:1 hand:3")
                    .out.starts_with(R"({"outcome":"moved","counted":false,"fromFoundation":false,"state":)"));
    EXPECT_EQ(run("move " + file + " tableau:0:1 tableau:0").out, "{\"outcome\":\"ignored\"}\n");
    EXPECT_EQ(run("move " + file + " tableau:3:0 tableau:0").out,
              "{\"outcome\":\"refused\",\"reason\":\"nine must land on an opposite-color ten. eight of hearts "
              "cannot accept it.\"}\n");
    // Off the board is a normal refusal, not a failure.
    const CliRun offBoard = run("move " + file + " tableau:99:-4 foundation:12");
    EXPECT_EQ(offBoard.status, 0);
    EXPECT_EQ(offBoard.out, "{\"outcome\":\"refused\",\"reason\":\"That card is not available.\"}\n");
}

TEST_F(Cli, HintDestinationAndFinish)
{
    const auto file = save(smallBoard());
    EXPECT_EQ(run("hint " + file).out, "{\"source\":\"hand:1\",\"text\":\"Move ace of diamonds to foundation 1.\"}\n");
    EXPECT_EQ(run("destination " + file + " hand:1").out, "{\"automatic\":\"foundation:0\",\"foundation\":0}\n");
    EXPECT_EQ(run("destination " + file + " tableau:0:1").out, "{\"automatic\":\"tableau:3\",\"foundation\":null}\n");
    EXPECT_EQ(run("destination " + file + " hand:0").out, "{\"automatic\":null,\"foundation\":null}\n");

    const CliRun finish = run("finish " + file);
    EXPECT_TRUE(finish.out.starts_with(
        R"({"hasNoBlockedKing":true,"canAutoComplete":false,"next":{"source":"hand:1","foundationIndex":0,"card":{)"))
        << finish.out;

    GameState stuck = testing::emptyBoard();
    stuck.tableau[0] = testing::cards("5S");
    stuck.hand = {testing::card("5C"), testing::card("5C"), testing::card("5C"), testing::card("5C")};
    const auto stuckFile = save(stuck, "stuck.json");
    EXPECT_EQ(run("hint " + stuckFile).out,
              "{\"source\":null,\"text\":\"No immediate move found. Undo or start a new deal.\"}\n");
    EXPECT_EQ(run("finish " + stuckFile).out, "{\"hasNoBlockedKing\":true,\"canAutoComplete\":false,\"next\":null}\n");
}

TEST_F(Cli, ReadsThePositionFromStandardInput)
{
    const CliRun r = run("hint -", toJson(smallBoard()));
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "{\"source\":\"hand:1\",\"text\":\"Move ace of diamonds to foundation 1.\"}\n");
}

TEST_F(Cli, BadInputIsOneLineOnStderrAndStatusTwo)
{
    const auto file = save(smallBoard());
    const auto broken = write(R"({"tableau":[],"foundations":[],"hand":[]})", "broken.json");
    struct Case {
        std::string arguments;
        std::string message;
    };
    const Case cases[] = {
        {"hint " + broken, "zelvaine-cli: unreadable position: missing key \"moveCount\"\n"},
        {"hint " + (dir_ / "absent.json").string(), "zelvaine-cli: cannot read position file"},
        {"move " + file + " column:1 hand", "zelvaine-cli: bad source \"column:1\""},
        {"move " + file + " hand:1 hand:x", "zelvaine-cli: bad destination \"hand:x\""},
        {"move " + file + " hand:1", "zelvaine-cli: 'move' takes 3 arguments\n"},
        {"shuffle", "zelvaine-cli: unknown command \"shuffle\"\n"},
        {"", "zelvaine-cli: missing command\n"},
    };
    for (const auto& [arguments, message] : cases) {
        const CliRun r = run(arguments);
        EXPECT_EQ(r.status, 2) << arguments;
        EXPECT_EQ(r.out, "") << arguments;
        EXPECT_EQ(r.err.substr(0, message.size()), message) << arguments;
    }
    const CliRun notJson = run("hint -", "{\"tableau\":");
    EXPECT_EQ(notJson.status, 2);
    EXPECT_EQ(notJson.err.substr(0, 51), "zelvaine-cli: unreadable position: not valid JSON (");
}

TEST_F(Cli, SolveGivesAReplayableLine)
{
    GameState state = testing::emptyBoard();
    const char* tops[] = {"KC", "KD", "JH", "KS", "KC", "KD", "KH", "KS"};
    for (std::size_t f = 0; f < 8; ++f) state.foundations[f] = testing::foundationUpTo(tops[f]);
    state.tableau[4] = testing::cards("KH QH");
    const auto file = save(state);

    const CliRun solved = run("solve " + file);
    ASSERT_EQ(solved.status, 0) << solved.err;
    const std::string expected =
        R"({"verdict":"winnable","moves":["tableau:4:1>foundation:2","tableau:4:0>foundation:2"],)"
        R"("length":2,"positions":)";
    EXPECT_EQ(solved.out.substr(0, expected.size()), expected);
    EXPECT_NE(solved.out.find(R"(,"milliseconds":)"), std::string::npos);

    // The king of hearts lies on the queen it must follow; the one free hand slot is the way out.
    state.tableau[4] = testing::cards("QH KH");
    state.foundations[2] = testing::foundationUpTo("JH");
    state.foundations[1] = testing::foundationUpTo("QD");
    state.foundations[5] = testing::foundationUpTo("QD");
    state.foundations[0] = testing::foundationUpTo("QC");
    state.hand = {testing::card("KD"), testing::card("KD"), testing::card("KC"), std::nullopt};
    EXPECT_TRUE(run("solve " + save(state, "second.json")).out.starts_with(R"({"verdict":"winnable")"));

    const CliRun cut = run("solve " + save(testing::knownDeal(), "deal.json") + " --budget 10");
    EXPECT_TRUE(cut.out.starts_with(R"({"verdict":"unknown","moves":[],"length":0,"positions":10,)")) << cut.out;

    EXPECT_EQ(run("solve " + file + " --budget 0").status, 2);
    EXPECT_EQ(run("solve " + file + " --budget lots").status, 2);
    EXPECT_EQ(run("solve " + file + " --depth 4").status, 2);
}

TEST_F(Cli, SurveyRepeatsForTheSameSeed)
{
    // Everything but the times must come out the same on every run.
    auto withoutTimes = [](std::string out) {
        const auto start = out.find(R"("milliseconds":{)");
        if (start != std::string::npos) out.erase(start, out.find('}', start) - start + 1);
        return out;
    };
    const CliRun first = run("survey --deals 3 --seed 9 --budget 2000");
    ASSERT_EQ(first.status, 0) << first.err;
    EXPECT_TRUE(first.out.starts_with(R"({"deals":3,"seed":9,"budget":2000,"winnable":)")) << first.out;
    EXPECT_NE(first.out.find(R"("wilson95":[)"), std::string::npos);
    EXPECT_NE(first.out.find(R"("solutionLength":{"median":)"), std::string::npos);
    EXPECT_EQ(withoutTimes(run("survey --deals 3 --seed 9 --budget 2000").out), withoutTimes(first.out));
    EXPECT_EQ(run("survey --deals 3").status, 2);

    const CliRun exact = run("survey --deals 1 --seed 9 --exact --budget 2000");
    ASSERT_EQ(exact.status, 0) << exact.err;
    EXPECT_NE(exact.out.find(R"("memoryBudgetMB":1024})"), std::string::npos) << exact.out;
}

TEST_F(Cli, ExportThenOpenGivesTheSameGameWithNewIds)
{
    GameState deal = dealNewGame();
    const auto dealFile = save(deal, "deal.json");
    const CliRun exported = run("export " + dealFile + " " + dealFile);
    ASSERT_EQ(exported.status, 0) << exported.err;
    EXPECT_TRUE(exported.out.starts_with(R"({"currentPosition":{"foundations":[[],)"));
    EXPECT_EQ(exported.out.back(), '}');

    const auto shared = write(exported.out, "game.zelvaine");
    const CliRun opened = run("open " + shared);
    ASSERT_EQ(opened.status, 0) << opened.err;
    const std::string prefix = R"({"currentState":)";
    ASSERT_TRUE(opened.out.starts_with(prefix));
    const auto split = opened.out.find(R"(,"initialState":)");
    auto current = gameStateFromJson(opened.out.substr(prefix.size(), split - prefix.size()));
    ASSERT_TRUE(current) << current.error().describe();
    EXPECT_EQ(current->tableau[0][0].rank, deal.tableau[0][0].rank);
    EXPECT_NE(current->tableau[0][0].id, deal.tableau[0][0].id);

    EXPECT_EQ(run("export " + save(testing::emptyBoard(), "empty.json") + " " + dealFile).status, 2);
}

TEST_F(Cli, OpenReportsThePlayersSentence)
{
    const CliRun garbage = run("open " + write("not json", "bad.zelvaine"));
    EXPECT_EQ(garbage.status, 1);
    EXPECT_EQ(garbage.out, "{\"error\":\"Zelvaine could not open that game file.\"}\n");
    const CliRun large = run("open " + write(std::string(1'000'001, ' '), "large.zelvaine"));
    EXPECT_EQ(large.out, "{\"error\":\"This Zelvaine game file is too large to open.\"}\n");
}

TEST_F(Cli, RestoreTellsWhatAStoreWouldMakeOfASavedValue)
{
    GameState deal = dealNewGame();
    deal.moveCount = 4;
    EXPECT_TRUE(
        run("restore " + save(deal, "bare.json")).out.starts_with(R"({"restored":"position","state":{"foundations":)"));
    const CliRun none = run("restore " + write("{}", "empty.json"));
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.out,
              "{\"restored\":\"none\",\"state\":null,\"historyCount\":0,\"redoCount\":0,\"challenge\":null}\n");
}

} // namespace
} // namespace zelvaine
