// The places' card lists under Qt's own model checker (its complaints fail the test, see
// gui_test_main): each kind of change of rows, then a whole game played through the board.

#include "store/game_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "tests/store/random_moves.hpp"
#include "tests/support/positions.hpp"
#include "ui/card_face.hpp"
#include "ui/card_list_model.hpp"
#include "ui/game_board.hpp"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>

namespace zelvaine {
namespace {

using Row = CardListModel::Row;

// Rows from short text: a letter per card (the same letter is the same card), "_" an empty slot,
// "*" after a letter a movable card.
std::vector<Row> rows(std::string_view text)
{
    static std::map<char, PlayingCard> cards;
    std::vector<Row> out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ' ' || c == '*') continue;
        if (c == '_') {
            out.push_back({std::nullopt, false, 0});
            continue;
        }
        if (!cards.contains(c)) cards.emplace(c, testing::card(std::string(1, "A23456789JQK"[(c - 'A') % 12]) + "S"));
        const bool movable = i + 1 < text.size() && text[i + 1] == '*';
        out.push_back({cards.at(c), movable, 1});
    }
    return out;
}

struct RowChange {
    const char* name;
    const char* before;
    const char* after;
    int removed;        // rows taken out
    int inserted;       // rows put in
    int changedInPlace; // rows whose data changed where they stand
};

class CardListModelChanges : public ::testing::TestWithParam<RowChange> {};

TEST_P(CardListModelChanges, TouchOnlyTheRowsThatChangeAndAgreeWithTheirRows)
{
    const RowChange& change = GetParam();
    CardListModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
    model.setRows(rows(change.before));

    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy count(&model, &CardListModel::countChanged);
    const int countBefore = model.rowCount();
    model.setRows(rows(change.after));

    auto rowsIn = [](const QSignalSpy& spy) {
        int total = 0;
        for (const auto& arguments : spy) total += arguments.at(2).toInt() - arguments.at(1).toInt() + 1;
        return total;
    };
    EXPECT_EQ(rowsIn(removed), change.removed);
    EXPECT_EQ(rowsIn(inserted), change.inserted);
    EXPECT_EQ(changed.size(), change.changedInPlace);
    EXPECT_EQ(count.size(), model.rowCount() != countBefore ? 1 : 0);

    const std::vector<Row> expected = rows(change.after);
    ASSERT_EQ(model.rows(), expected);
    ASSERT_EQ(model.faces().size(), model.rowCount());
    for (int r = 0; r < model.rowCount(); ++r) {
        const Row& row = expected[static_cast<std::size_t>(r)];
        const QModelIndex index = model.index(r);
        EXPECT_EQ(model.data(index, CardListModel::HasCardRole).toBool(), row.card.has_value());
        EXPECT_EQ(model.data(index, CardListModel::MovableRole).toBool(), row.movable);
        const QString face = row.card ? QString::fromStdString(facePictureName(*row.card)) : QString();
        EXPECT_EQ(model.data(index, CardListModel::FaceRole).toString(), face);
        EXPECT_EQ(model.faces().at(r), face);
    }
}

INSTANTIATE_TEST_SUITE_P(
    EveryKind, CardListModelChanges,
    ::testing::Values(RowChange{"ColumnDealt", "", "ABC", 0, 3, 0}, RowChange{"LastCardTaken", "ABC", "AB", 1, 0, 0},
                      RowChange{"StringPutOn", "AB", "ABCD", 0, 2, 0},
                      RowChange{"MiddleCardTakenRebuildsTheRest", "ABC", "AC", 2, 1, 0},
                      RowChange{"NothingKept", "AB", "BAC", 2, 3, 0}, RowChange{"Emptied", "ABC", "", 3, 0, 0},
                      RowChange{"CardBecomesMovable", "AB", "A*B", 0, 0, 1},
                      RowChange{"MovableAndLonger", "ABC", "A*BDE", 1, 2, 1},
                      RowChange{"HandSlotFilledWhereItStands", "_A__", "BA__", 0, 0, 1},
                      RowChange{"HandCardToAnotherSlot", "BA__", "_A_B", 0, 0, 2},
                      RowChange{"NoChange", "ABC", "ABC", 0, 0, 0}),
    [](const ::testing::TestParamInfo<RowChange>& change) { return std::string(change.param.name); }); // no change at all

// The board's twelve models follow a long random game, undo included, and always show the
// position the store holds.
TEST(CardListModelInPlay, BoardModelsMirrorTheStoreThroughAWholeGame)
{
    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    GameStore store(dealNewGame(), defaults, sound);
    GameBoard board(store);
    std::vector<CardListModel*> columns;
    for (int c = 0; c < static_cast<int>(tableauColumnCount); ++c) columns.push_back(board.columnCards(c));
    ASSERT_EQ(columns.size(), 10u);
    std::vector<std::unique_ptr<QAbstractItemModelTester>> testers;
    for (CardListModel* model : columns) {
        ASSERT_TRUE(model);
        testers.push_back(
            std::make_unique<QAbstractItemModelTester>(model, QAbstractItemModelTester::FailureReportingMode::Warning));
    }
    testers.push_back(
        std::make_unique<QAbstractItemModelTester>(board.hand(), QAbstractItemModelTester::FailureReportingMode::Warning));
    testers.push_back(std::make_unique<QAbstractItemModelTester>(board.foundations(),
                                                                 QAbstractItemModelTester::FailureReportingMode::Warning));

    auto ids = [](const CardListModel& model) {
        std::vector<std::optional<Uuid>> out;
        for (const Row& row : model.rows()) out.push_back(row.card ? std::optional(row.card->id) : std::nullopt);
        return out;
    };
    std::mt19937_64 random(20);
    for (int step = 0; step < 400; ++step) {
        if (step % 50 == 49) {
            store.undo();
        } else {
            testing::playRandomStep(store, random, [](std::uint64_t) {});
        }
        const GameState& state = store.state();
        for (std::size_t c = 0; c < columns.size(); ++c) {
            std::vector<std::optional<Uuid>> expected;
            for (const PlayingCard& card : state.tableau[c]) expected.push_back(card.id);
            ASSERT_EQ(ids(*columns[c]), expected) << "column " << c << " after step " << step;
        }
        std::vector<std::optional<Uuid>> hand;
        for (const HandSlot& slot : state.hand) hand.push_back(slot ? std::optional(slot->id) : std::nullopt);
        ASSERT_EQ(ids(*board.hand()), hand) << "after step " << step;
        std::vector<std::optional<Uuid>> tops;
        for (const Pile& pile : state.foundations)
            tops.push_back(pile.empty() ? std::nullopt : std::optional(pile.back().id));
        ASSERT_EQ(ids(*board.foundations()), tops) << "after step " << step;
    }
}

} // namespace
} // namespace zelvaine
