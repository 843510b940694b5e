#include "store/in_memory_defaults_store.hpp"
#include "tests/support/positions.hpp"
#include "ui/blocked_nudge.hpp"
#include "ui/card_drag.hpp"
#include "ui/drag_motion.hpp"

#include <gtest/gtest.h>

namespace zelvaine {
namespace {

using testing::card;
using testing::cards;
using Candidate = DropDestinationResolver::Candidate;

// Columns 100 wide at x = 0, 112, 224, …; foundations and hand slots in rows above and below.
constexpr double w = 100;
constexpr double h = w / 0.7;

// Cards carry fresh ids, so piles compare by name.
std::vector<std::string> names(const Pile& pile)
{
    std::vector<std::string> out;
    for (const auto& c : pile) out.push_back(accessibleName(c));
    return out;
}

DropFrameCache boardFrames()
{
    DropFrameCache cache;
    for (int c = 0; c < 10; ++c) cache.report(MoveDestination::tableau(c), {c * 112.0, 300, w, 600});
    for (int f = 0; f < 8; ++f) cache.report(MoveDestination::foundation(f), {f * 112.0, 100, w, h});
    for (int s = 0; s < 4; ++s) cache.report(MoveDestination::hand(s), {s * 112.0, 1200, w, h});
    return cache;
}

TEST(DropDestinationResolver, RanksPointerThenAreaThenKindThenIndex)
{
    const auto column = MoveDestination::tableau;
    const auto foundation = MoveDestination::foundation;
    const auto hand = [](std::optional<std::int64_t> slot) { return MoveDestination::hand(slot); };

    EXPECT_EQ(DropDestinationResolver::resolve({}), std::nullopt);
    // The pointer's place beats a larger overlap next door.
    EXPECT_EQ(DropDestinationResolver::resolve({{column(1), 9000, false}, {column(2), 10, true}}), column(2));
    // Equal overlaps, pointer in neither: the lower column.
    EXPECT_EQ(DropDestinationResolver::resolve({{column(5), 500, false}, {column(4), 500, false}}), column(4));
    EXPECT_EQ(DropDestinationResolver::resolve({{column(4), 400, false}, {column(5), 500, false}}), column(5));
    // Equal areas across kinds: foundations, then hand slots, then columns.
    EXPECT_EQ(DropDestinationResolver::resolve({{column(0), 500, true}, {hand(2), 500, true}, {foundation(7), 500, true}}),
              foundation(7));
    EXPECT_EQ(DropDestinationResolver::resolve({{column(0), 500, true}, {hand(2), 500, true}}), hand(2));
    EXPECT_EQ(DropDestinationResolver::resolve({{foundation(3), 1, false}, {foundation(1), 1, false}}), foundation(1));
    // Hand slots: the higher slot first, the open "any slot" after every numbered one.
    EXPECT_EQ(DropDestinationResolver::resolve({{hand(1), 1, false}, {hand(3), 1, false}}), hand(3));
    EXPECT_EQ(DropDestinationResolver::resolve({{hand(std::nullopt), 1, false}, {hand(0), 1, false}}), hand(0));
}

TEST(DropCandidates, EnlargedFramesAndAcceptance)
{
    const DropFrameCache cache = boardFrames();
    const auto all = [](const MoveDestination&) { return true; };

    // A card whose top edge sits 19 points below column 3's frame still touches it; 21 points does not.
    const Rect justBelow{3 * 112.0, 900 + 19, w, h};
    const auto near = dropCandidates(justBelow, {3 * 112.0 + 50, 990}, cache, all);
    ASSERT_EQ(near.size(), 1u);
    EXPECT_EQ(near[0].destination, MoveDestination::tableau(3));
    EXPECT_FALSE(near[0].containsPointer);
    EXPECT_DOUBLE_EQ(near[0].overlapArea, w * 1);
    EXPECT_TRUE(dropCandidates({3 * 112.0, 900 + 21, w, h}, {0, 0}, cache, all).empty());

    // Straddling columns 1 and 2 equally with the pointer in the gap between them: both are
    // candidates, and the lower column wins.
    const Rect straddle{112.0 + 56, 400, w, h};
    const Point gap{112.0 + w + 5.5, 450};
    const auto both = dropCandidates(straddle, gap, cache, all);
    ASSERT_EQ(both.size(), 2u);
    EXPECT_EQ(both[0].overlapArea, both[1].overlapArea);
    EXPECT_EQ(DropDestinationResolver::resolve(both), MoveDestination::tableau(1));

    // Destinations that refuse the move are never candidates.
    const auto onlyColumns = [](const MoveDestination& d) { return d.isTableau(); };
    const Rect overFoundationAndColumn{0, 100 + h - 10, w, h};
    const auto filtered = dropCandidates(overFoundationAndColumn, {50, 200}, cache, onlyColumns);
    ASSERT_EQ(filtered.size(), 1u);
    EXPECT_EQ(filtered[0].destination, MoveDestination::tableau(0));
}

TEST(DraggedStackFrame, GrowsEighteenPointsPerExtraCard)
{
    const Rect one = draggedStackFrame({500, 500}, {30, 40}, w, 1);
    EXPECT_EQ(one, (Rect{470, 460, w, h}));
    EXPECT_DOUBLE_EQ(draggedStackFrame({500, 500}, {30, 40}, w, 10).height, h + 9 * 18);
}

TEST(SourceCardFrame, FansLikeTheColumnWithinItsLimits)
{
    GameState state = testing::emptyBoard();
    state.tableau[2] = cards("KS QH JS 10H 9S");
    state.tableau[3] = cards("KD QC JD 10C 9D 8C 7D 6C 5D 4C 3D 2C AD KH QS JH 10S 9H 8S 7H 6S 5H 4S 3H 2S AH KC QD");
    state.tableau[4] = cards("KC");
    DropFrameCache cache = boardFrames();

    // Five cards in 600 points: (600 − h) ÷ 4 = 114.3 is capped at 0.36 × w = 36.
    const auto third = sourceCardFrame(MoveSource::tableau(2, 3), w, cache, state);
    ASSERT_TRUE(third);
    EXPECT_EQ(*third, (Rect{224, 300 + 3 * 36, w, h}));
    // Twenty-eight cards would need less than 18 apart: the minimum holds.
    EXPECT_DOUBLE_EQ(sourceCardFrame(MoveSource::tableau(3, 27), w, cache, state)->y, 300 + 27 * 18);
    // One card: no fan at all; a narrower frame centres the card.
    cache.report(MoveDestination::tableau(4), {448, 300, 120, 600});
    EXPECT_EQ(*sourceCardFrame(MoveSource::tableau(4, 0), w, cache, state), (Rect{458, 300, w, h}));

    EXPECT_EQ(sourceCardFrame(MoveSource::tableau(2, 5), w, cache, state), std::nullopt);
    EXPECT_EQ(sourceCardFrame(MoveSource::tableau(10, 0), w, cache, state), std::nullopt);
    EXPECT_EQ(sourceCardFrame(MoveSource::tableau(-1, 0), w, cache, state), std::nullopt);
    EXPECT_EQ(sourceCardFrame(MoveSource::hand(1), w, cache, state), cache.frame(MoveDestination::hand(1)));
    EXPECT_EQ(sourceCardFrame(MoveSource::foundation(6), w, DropFrameCache{}, state), std::nullopt);
}

class CardDrag : public ::testing::Test {
protected:
    CardDrag() : store(position(), defaults, sound, [] { return 0.0; }) {}

    static GameState position()
    {
        GameState s = testing::emptyBoard();
        s.tableau[0] = cards("KS 9H 8S"); // 9H 8S moves; KS is blocked
        s.tableau[1] = cards("10C");
        s.tableau[2] = cards("QD 9C");
        s.hand[0] = card("AH");
        return s;
    }
    // The centre of column c's last card, where a pointer holding its top would drop it.
    static Point overColumn(int c) { return {c * 112.0 + 50, 300 + 40}; }

    InMemoryDefaultsStore defaults;
    SilentSoundCues sound;
    GameStore store;
    DropFrameCache cache = boardFrames();
    CardDragSession session;
};

TEST_F(CardDrag, AStringDroppedOnALegalColumnMoves)
{
    const MoveSource nine = MoveSource::tableau(0, 1);
    store.setSelection(MoveSource::tableau(2, 1));
    const Point start{50, 300 + 36 + 10};
    ASSERT_EQ(session.change(store, cache, nine, {60, 360}, start, w), CardDragSession::Change::started);
    // The drag cancels the pending selection and keeps the grip on the card.
    EXPECT_EQ(store.selection(), std::nullopt);
    EXPECT_EQ(names(session.activeDrag()->cards), names(cards("9H 8S")));
    EXPECT_EQ(session.activeDrag()->pointerOffsetFromTopLeft, (Point{50, 10}));
    EXPECT_EQ(session.activeDrag()->originPreviewCenter, (Point{50, 336 + h / 2}));
    EXPECT_EQ(session.location(), (Point{60, 350 + h / 2}));

    EXPECT_EQ(session.change(store, cache, nine, {200, 400}, start, w), CardDragSession::Change::moved);
    EXPECT_EQ(session.location(), (Point{200, 390 + h / 2}));

    const auto end = session.end(store, cache, nine, overColumn(1));
    EXPECT_EQ(end.kind, CardDragSession::End::Kind::committed);
    EXPECT_EQ(end.destination, MoveDestination::tableau(1));
    EXPECT_EQ(names(store.state().tableau[1]), names(cards("10C 9H 8S")));
    EXPECT_FALSE(session.activeDrag());
}

TEST_F(CardDrag, ADropOnNothingSpringsBackAndExplains)
{
    const MoveSource nine = MoveSource::tableau(0, 1);
    const GameState before = store.state();
    session.change(store, cache, nine, {60, 360}, {50, 346}, w);
    const auto end = session.end(store, cache, nine, {5000, 5000});
    EXPECT_EQ(end.kind, CardDragSession::End::Kind::refused);
    EXPECT_EQ(store.state(), before);
    EXPECT_EQ(store.message(), "That card cannot be dropped there.");
    EXPECT_EQ(store.messageKind(), GameMessageKind::moveFeedback);
    EXPECT_EQ(session.location(), session.activeDrag()->originPreviewCenter);
    EXPECT_EQ(end.returnTo, session.activeDrag()->originPreviewCenter);

    // Dropped on a column that refuses it: the same.
    session.change(store, cache, nine, {60, 360}, {50, 346}, w);
    EXPECT_EQ(session.end(store, cache, nine, overColumn(2)).kind, CardDragSession::End::Kind::refused);
    EXPECT_EQ(store.state(), before);
}

TEST_F(CardDrag, WhileReturningOnlyTheSameCardTakesThePreviewOver)
{
    const MoveSource nine = MoveSource::tableau(0, 1);
    session.change(store, cache, nine, {60, 360}, {50, 346}, w);
    const auto refused = session.end(store, cache, nine, {5000, 5000});

    EXPECT_EQ(session.change(store, cache, MoveSource::hand(0), {10, 1210}, {10, 1210}, w),
              CardDragSession::Change::ignored);
    EXPECT_EQ(session.end(store, cache, MoveSource::hand(0), {10, 1210}).kind, CardDragSession::End::Kind::none);
    EXPECT_EQ(session.activeDrag()->source, nine);
    EXPECT_EQ(session.change(store, cache, nine, {70, 370}, {50, 346}, w), CardDragSession::Change::moved);
    EXPECT_EQ(session.activeDrag()->id, refused.id);
    EXPECT_EQ(session.end(store, cache, nine, overColumn(1)).kind, CardDragSession::End::Kind::committed);

    // A new drag started at once survives the old drag's delayed clean-up.
    session.change(store, cache, MoveSource::hand(0), {10, 1210}, {10, 1210}, w);
    EXPECT_FALSE(session.cleanUp(refused.id));
    ASSERT_TRUE(session.activeDrag());
    EXPECT_TRUE(session.cleanUp(session.activeDrag()->id));
    EXPECT_FALSE(session.activeDrag());
}

TEST_F(CardDrag, BlockedCardsAndStrayEndsStartNothing)
{
    EXPECT_EQ(session.change(store, cache, MoveSource::tableau(0, 0), {60, 360}, {50, 310}, w),
              CardDragSession::Change::ignored);
    EXPECT_EQ(session.change(store, cache, MoveSource::hand(3), {60, 1260}, {50, 1250}, w),
              CardDragSession::Change::ignored);
    EXPECT_FALSE(session.activeDrag());
    EXPECT_EQ(session.end(store, cache, MoveSource::tableau(0, 1), overColumn(1)).kind, CardDragSession::End::Kind::none);
    EXPECT_EQ(store.message(), std::nullopt);

    // Without a known frame the pointer holds the card by its centre.
    session.change(store, DropFrameCache{}, MoveSource::hand(0), {15, 25}, {10, 20}, w);
    EXPECT_EQ(session.activeDrag()->pointerOffsetFromTopLeft, (Point{w / 2, h / 2}));
    EXPECT_EQ(session.activeDrag()->originPreviewCenter, (Point{10, 20}));
}

TEST(DragStart, APressBecomesADragAtSixPointsInAnyDirection)
{
    EXPECT_FALSE(isDragDistance({10, 10}, {15.9, 10}));
    EXPECT_TRUE(isDragDistance({10, 10}, {16, 10}));
    EXPECT_FALSE(isDragDistance({10, 10}, {13, 14.9})); // 5.98 along the diagonal
    EXPECT_TRUE(isDragDistance({10, 10}, {6.4, 5.2}));  // 6 up and to the left
}

TEST(BlockedNudge, AmplitudeIsBoundedAndTheShakeEndsAtRest)
{
    EXPECT_DOUBLE_EQ(nudgeAmplitude(20), 4);
    EXPECT_DOUBLE_EQ(nudgeAmplitude(100), 7);
    EXPECT_DOUBLE_EQ(nudgeAmplitude(300), 9);
    const auto steps = blockedNudgeSteps(100);
    EXPECT_DOUBLE_EQ(steps[1].offset, -7);
    EXPECT_DOUBLE_EQ(steps.back().offset, 0);
    double total = 0;
    for (const auto& step : steps) total += step.seconds;
    EXPECT_NEAR(total, 0.28, 1e-9);
}

TEST(DropReturn, SpringsPastItsRestOnceAndIsHomeWhenThePreviewGoes)
{
    EXPECT_EQ(dropReturnProgress(0), 0);
    double peak = 0;
    for (double t = 0; t <= dropReturnSeconds; t += 0.001) peak = std::max(peak, dropReturnProgress(t));
    EXPECT_GT(peak, 1.0);
    EXPECT_LT(peak, 1.1);
    EXPECT_NEAR(dropReturnProgress(dropReturnSeconds), 1.0, 0.02);
}

} // namespace
} // namespace zelvaine
