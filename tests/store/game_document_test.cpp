#include "store/game_document.hpp"
#include "tests/support/positions.hpp"
#include "tests/support/scratch_folder.hpp"

#include <gtest/gtest.h>

#include <limits>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <unordered_set>

namespace zelvaine {
namespace {

using Error = ZelvaineGameDocumentError;

// A deal and a later position of it: an ace moved to the first foundation, 3 moves made.
struct Pair {
    GameState current;
    GameState restart;
};

Pair samplePair()
{
    Pair pair{dealNewGame(), {}};
    pair.restart = pair.current;
    for (auto& column : pair.current.tableau) {
        if (auto ace = std::ranges::find(column, Rank::ace, &PlayingCard::rank); ace != column.end()) {
            pair.current.foundations[0].push_back(*ace);
            column.erase(ace);
            break;
        }
    }
    pair.current.moveCount = 3;
    return pair;
}

std::optional<Error> conversionError(const Pair& pair)
{
    auto states = ZelvaineGameDocument::fromStates(pair.current, pair.restart).makeStates();
    if (states) return std::nullopt;
    return states.error();
}

TEST(GameDocument, ExportThenOpenGivesTheSamePositionsWithNewIds)
{
    const Pair pair = samplePair();
    const std::string bytes = ZelvaineGameDocument::fromStates(pair.current, pair.restart).encode();
    EXPECT_TRUE(bytes.starts_with(R"({"currentPosition":{"foundations":[[{"deck":)")) << bytes.substr(0, 80);
    EXPECT_NE(bytes.find(R"(},"formatVersion":1,"restartPosition":{"foundations":[[],)"), std::string::npos);

    auto document = ZelvaineGameDocument::decode(bytes);
    ASSERT_TRUE(document) << document.error().detail;
    auto states = document->makeStates();
    ASSERT_TRUE(states);

    // Same cards in the same places, every id new, one id per card across both positions.
    std::unordered_map<Uuid, Uuid> oldToNew;
    auto compare = [&](const GameState& before, const GameState& after) {
        ASSERT_EQ(after.moveCount, before.moveCount);
        ASSERT_EQ(after.tableau.size(), before.tableau.size());
        auto same = [&](const PlayingCard& a, const PlayingCard& b) {
            EXPECT_EQ(a.suit, b.suit);
            EXPECT_EQ(a.rank, b.rank);
            EXPECT_EQ(a.deck, b.deck);
            EXPECT_NE(a.id, b.id);
            auto [entry, added] = oldToNew.try_emplace(a.id, b.id);
            EXPECT_EQ(entry->second, b.id);
        };
        for (std::size_t c = 0; c < before.tableau.size(); ++c) {
            ASSERT_EQ(after.tableau[c].size(), before.tableau[c].size());
            for (std::size_t i = 0; i < before.tableau[c].size(); ++i) same(before.tableau[c][i], after.tableau[c][i]);
        }
        for (std::size_t f = 0; f < before.foundations.size(); ++f) {
            ASSERT_EQ(after.foundations[f].size(), before.foundations[f].size());
            for (std::size_t i = 0; i < before.foundations[f].size(); ++i) {
                same(before.foundations[f][i], after.foundations[f][i]);
            }
        }
        for (std::size_t s = 0; s < before.hand.size(); ++s) {
            ASSERT_EQ(after.hand[s].has_value(), before.hand[s].has_value());
            if (before.hand[s]) same(*before.hand[s], *after.hand[s]);
        }
    };
    compare(pair.current, states->current);
    compare(pair.restart, states->initial);
    EXPECT_EQ(oldToNew.size(), 104U);

    // Opening the same file twice gives two different deals.
    auto again = document->makeStates();
    EXPECT_NE(again->initial.tableau[0][0].id, states->initial.tableau[0][0].id);
}

TEST(GameDocument, EachValidationStepRefusesTheGame)
{
    const std::vector<std::pair<const char*, std::function<void(Pair&)>>> breaks = {
        {"current not well formed", [](Pair& p) { p.current.tableau.pop_back(); }},
        {"restart not well formed", [](Pair& p) { p.restart.hand.pop_back(); }},
        {"negative current count", [](Pair& p) { p.current.moveCount = -1; }},
        {"absurd current count", [](Pair& p) { p.current.moveCount = std::numeric_limits<std::int64_t>::max(); }},
        {"count past the limit", [](Pair& p) { p.current.moveCount = moveCountLimit + 1; }},
        {"restart count not zero", [](Pair& p) { p.restart.moveCount = 1; }},
        {"restart column of nine",
         [](Pair& p) {
             p.restart.tableau[1].push_back(p.restart.tableau[0].back());
             p.restart.tableau[0].pop_back();
         }},
        {"restart foundation holds a card",
         [](Pair& p) {
             p.restart.foundations[3].push_back(p.restart.tableau[0].back());
             p.restart.tableau[0].pop_back();
         }},
        {"restart hand slot empty",
         [](Pair& p) {
             p.restart.tableau[0].push_back(*p.restart.hand[2]);
             p.restart.hand[2].reset();
         }},
        {"different cards", [](Pair& p) { p.current.tableau[5][0].deck ^= 1; }},
        {"two deck-0 copies of a card",
         [](Pair& p) {
             auto flip = [](GameState& s) {
                 for (auto& column : s.tableau) {
                     for (auto& card : column) {
                         if (card.deck == 1 && card.suit == Suit::hearts && card.rank == Rank::seven) card.deck = 0;
                     }
                 }
                 for (auto& slot : s.hand) {
                     if (slot && slot->deck == 1 && slot->suit == Suit::hearts && slot->rank == Rank::seven)
                         slot->deck = 0;
                 }
             };
             flip(p.current);
             flip(p.restart);
         }},
        {"deck number 2",
         [](Pair& p) {
             p.current.tableau[2][3].deck = 2;
             p.restart.tableau[2][3].deck = 2;
         }},
        {"foundation skips a rank",
         [](Pair& p) {
             // Ace, two, four of one suit on the first foundation, wherever the deal put them.
             const Suit suit = p.current.foundations[0][0].suit;
             for (Rank wanted : {Rank::two, Rank::four}) {
                 auto wantedCard = [&](const PlayingCard& c) { return c.suit == suit && c.rank == wanted; };
                 auto slot = std::ranges::find_if(p.current.hand, [&](const HandSlot& s) { return s && wantedCard(*s); });
                 if (slot != p.current.hand.end()) {
                     p.current.foundations[0].push_back(**slot);
                     slot->reset();
                     continue;
                 }
                 for (auto& column : p.current.tableau) {
                     if (auto found = std::ranges::find_if(column, wantedCard); found != column.end()) {
                         p.current.foundations[0].push_back(*found);
                         column.erase(found);
                         break;
                     }
                 }
             }
         }},
    };
    EXPECT_EQ(conversionError(samplePair()), std::nullopt);
    for (const auto& [name, damage] : breaks) {
        Pair pair = samplePair();
        damage(pair);
        EXPECT_EQ(conversionError(pair), Error::invalidGame()) << name;
    }
}

TEST(GameDocument, CardTextsAreCheckedOnConversion)
{
    const Pair pair = samplePair();
    for (auto change : {+[](DocumentCard& c) { c.suit = "Hearts"; }, +[](DocumentCard& c) { c.rank = 14; },
                        +[](DocumentCard& c) { c.rank = 0; }}) {
        ZelvaineGameDocument document = ZelvaineGameDocument::fromStates(pair.current, pair.restart);
        change(document.restartPosition.tableau[4][4]);
        EXPECT_EQ(document.makeStates().error(), Error::invalidGame());
    }
}

TEST(GameDocument, VersionIsCheckedBeforeAnything)
{
    const Pair pair = samplePair();
    ZelvaineGameDocument document = ZelvaineGameDocument::fromStates(pair.current, pair.restart);
    document.formatVersion = 2;
    document.currentPosition.tableau[0][0].suit = "Hearts";
    EXPECT_EQ(document.makeStates().error(), Error::unsupportedVersion(2));
    EXPECT_EQ(Error::unsupportedVersion(2).description(), "This game uses unsupported Zelvaine file format version 2.");
    EXPECT_EQ(Error::fileTooLarge().description(), "This Zelvaine game file is too large to open.");
    EXPECT_EQ(Error::invalidGame().description(), "This file does not contain a valid Zelvaine game.");
    EXPECT_NE(Error::unsupportedVersion(2), Error::unsupportedVersion(3));
}

class DocumentFile : public ::testing::Test {
protected:
    std::filesystem::path write(const std::string& bytes)
    {
        const auto path = scratch.path() / "game.zelvaine";
        std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
        return path;
    }

    testing::ScratchFolder scratch;
};

TEST_F(DocumentFile, SizeLimitComesBeforeParsing)
{
    const Pair pair = samplePair();
    std::string bytes = ZelvaineGameDocument::fromStates(pair.current, pair.restart).encode();
    bytes.resize(1'000'000, ' '); // whitespace after the value is still JSON
    auto exact = ZelvaineGameDocument::read(write(bytes));
    ASSERT_TRUE(exact) << exact.error().detail;
    EXPECT_TRUE(exact->makeStates());

    bytes += ' ';
    auto over = ZelvaineGameDocument::read(write(bytes));
    ASSERT_FALSE(over);
    EXPECT_EQ(over.error().playerDescription(), "This Zelvaine game file is too large to open.");

    auto garbage = ZelvaineGameDocument::read(write(std::string(1'000'001, '\xFF')));
    ASSERT_FALSE(garbage);
    EXPECT_EQ(garbage.error().documentError, Error::fileTooLarge());
}

TEST_F(DocumentFile, UnreadableFilesGiveTheGenericNotice)
{
    auto missing = ZelvaineGameDocument::read(scratch.path() / "absent.zelvaine");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().playerDescription(), std::nullopt);

    const Pair pair = samplePair();
    const std::string good = ZelvaineGameDocument::fromStates(pair.current, pair.restart).encode();
    auto replaced = [&](const std::string& from, const std::string& to) {
        std::string out = good;
        out.replace(out.find(from), from.size(), to);
        return out;
    };
    const std::string hostile[] = {
        "",
        "{",
        "null",
        std::string(5000, '[') + std::string(5000, ']'),
        "{\"formatVersion\":1}",
        replaced("\"formatVersion\":1", "\"formatVersion\":1e400"),
        replaced("\"formatVersion\":1", "\"formatVersion\":99999999999999999999999"),
        replaced("\"formatVersion\":1", "\"formatVersion\":\"1\""),
        replaced("\"moveCount\":3", "\"moveCount\":3.5"),
        replaced("\"suit\":\"", "\"suit\":\"\xC3\x28"),
        replaced("\"hand\":[", "\"hand\":{\"x\":["),
        replaced("\"id\":\"", "\"id\":\"Z"),
    };
    for (const auto& bytes : hostile) {
        auto document = ZelvaineGameDocument::decode(bytes);
        ASSERT_FALSE(document) << bytes.substr(0, 100);
        EXPECT_EQ(document.error().playerDescription(), std::nullopt) << bytes.substr(0, 100);
        EXPECT_FALSE(document.error().detail.empty());
    }

    // Duplicate keys are read without harm; the game is judged as usual afterwards.
    auto duplicated =
        ZelvaineGameDocument::decode(replaced("\"formatVersion\":1", "\"formatVersion\":1,\"formatVersion\":7"));
    if (duplicated) {
        auto states = duplicated->makeStates();
        EXPECT_TRUE(states || states.error() == Error::unsupportedVersion(7));
    }
}

} // namespace
} // namespace zelvaine
