#pragma once

#include "engine/game_state.hpp"
#include "engine/move.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zelvaine::solver {

// A card as the rules see it: suit and rank only. The two copies of a card are the same code,
// which is what lets the search treat them as interchangeable.
using CardCode = std::uint8_t;
inline constexpr CardCode noCard = 0xFF;

constexpr CardCode cardCode(Suit suit, Rank rank)
{
    return static_cast<CardCode>(static_cast<int>(suit) * 13 + rawValue(rank) - 1);
}
constexpr int suitOf(CardCode code) { return code / 13; }
constexpr int rankOf(CardCode code) { return code % 13 + 1; }
constexpr bool isRedCode(CardCode code) { return suitOf(code) == 1 || suitOf(code) == 2; }
constexpr bool buildsDown(CardCode lower, CardCode upper)
{
    return rankOf(lower) + 1 == rankOf(upper) && isRedCode(lower) != isRedCode(upper);
}

// One move in the solver's own terms; it maps one to one onto a MoveSource and MoveDestination
// of the real position it was generated for.
struct Step {
    enum class Place : std::uint8_t { tableau, hand, foundation };
    // Six bytes in all: the searches keep one step for every position they have seen.
    Place from : 4 = Place::tableau;
    Place to : 4 = Place::tableau;
    std::uint8_t fromIndex = 0;
    std::uint8_t start = 0; // first card of a column string
    std::uint8_t toIndex = 0;
    std::uint8_t count = 1;    // cards moved, so that the move can be undone
    std::uint8_t priority = 0; // search order only

    MoveSource source() const;
    MoveDestination destination() const;
};
static_assert(sizeof(Step) == 6);

// Whether sending `code` home can never cost a win, given for each suit the height of the lower
// of its two foundations (0 while either is unstarted). The proof is beside the definition.
bool safeHome(CardCode code, const std::array<int, 4>& lowestPair);

// Whether a cheap search sends `code` home at once: when each suit of the other colour has
// both foundations within three ranks below it. Unlike safeHome, this can lose a win.
bool nearlySafeHome(CardCode code, const std::array<int, 4>& lowestPair);

// Every legal move, for a complete search; `unforced` too, without ever listing a safe move home
// alone. The cheaper sets may miss wins: `quick` leaves out moves back from the foundations and
// moving part of a string onto another column's card, and sends nearly safe cards home at once
// (nearlySafeHome); `keepRuns` also keeps a card that lies on the card it builds down from out
// of the hand, unless the card beneath could then go home. The quick set finds most wins in a far
// smaller space, and the keepRuns part of it finds some that the quick search wanders past.
enum class MoveSet : std::uint8_t { all, unforced, quick, keepRuns };

// What the evaluation weighs of the cards the foundations wait for: the next card of every
// foundation (an ace for one not started, and the farther copy for the second of two that wait
// for the same card), or only the nearer copy of the next card of each foundation under way.
// Searches led by each get stuck on different deals.
enum class Lookahead : std::uint8_t { everyFoundation, startedFoundations };

// A position the search can change in place and undo. It keeps the real column, slot and
// foundation indices, so the moves it produces replay on the real position; only its key
// forgets what the rules cannot see.
class SolverPosition {
public:
    // None, with the reason in `problem`, when the position is not one the search can read:
    // not ten columns, eight foundations and four slots, more than 104 cards, or a foundation
    // that is not built from an ace upward in one suit.
    static std::optional<SolverPosition> from(const GameState& state, std::string* problem = nullptr);

    // Equal for positions that differ only by the order of the columns, of the hand slots or of
    // two foundations, or by which copy of a card lies where.
    std::uint64_t key() const;
    // The key of the position `step` leads to, without making it: most moves a search tries
    // lead to positions it has seen, and this spares them the moving of cards.
    std::uint64_t keyAfter(const Step& step) const;
    bool isWon() const;

    // Every move the rules allow that leads to a different position, minus moves that only
    // lead to a symmetric twin of another listed move, roughly best first. When a card is safe
    // to send home (safeHome, or nearlySafeHome for the cheaper sets), that move alone.
    void generateMoves(std::vector<Step>& out, MoveSet set = MoveSet::all) const;

    // A rough measure of progress: cards home, free places, and how deep the cards the
    // foundations need next are buried.
    int evaluate(Lookahead lookahead = Lookahead::everyFoundation) const;

    void apply(const Step& step);
    void undo(const Step& step);

    const std::array<std::vector<CardCode>, tableauColumnCount>& columns() const { return columns_; }

private:
    void push(std::size_t column, CardCode code);
    CardCode pop(std::size_t column);
    void setFoundation(std::size_t index, int height, int suit);
    // Brings a column's scrambled hash and their sum up to date after the column changed.
    void refresh(std::size_t column);
    void refreshTouched(const Step& step);
    int blockersOf(std::size_t column) const;
    // The heights of each suit's two foundations, started ones first, 0 for one not started.
    std::array<std::array<int, 2>, 4> suitHeights() const;

    std::array<std::vector<CardCode>, tableauColumnCount> columns_;
    std::array<CardCode, handSlotCount> hand_{noCard, noCard, noCard, noCard};
    std::array<std::uint8_t, foundationCount> height_{};
    std::array<std::uint8_t, foundationCount> suit_{};

    // Incremental hash parts: one per column, and additive sums for the hand and foundations
    // so that their order cannot matter. The sum of the scrambled column hashes is kept too,
    // so that a key costs two scrambles rather than twelve.
    std::array<std::uint64_t, tableauColumnCount> columnHash_{};
    std::array<std::uint64_t, tableauColumnCount> columnMixed_{};
    std::uint64_t columnsSum_ = 0;
    std::uint64_t handSum_ = 0;
    std::uint64_t foundationSum_ = 0;

    // Where the copies of each card lie in the columns, and each column's count of runs lying on
    // a lower card, kept up to date so that evaluate() need not look at every card.
    struct Spot {
        std::uint8_t column = noCard;
        std::uint8_t index = 0;
    };
    std::array<std::array<Spot, 2>, 52> spots_{};
    // For each card of a column, what the column down to it adds up to: the lowest rank, whether
    // the card lies on a lower one, and the count of runs that do. Cards come and go only at the
    // end, so each push costs one entry and a pop none.
    struct Prefix {
        std::uint8_t lowest = 14;
        std::uint8_t blockers = 0;
        bool blocks = false;
    };
    std::array<std::array<Prefix, cardCount>, tableauColumnCount> prefix_{};
};

} // namespace zelvaine::solver
