#include "solver/solver_position.hpp"

#include <algorithm>

namespace zelvaine::solver {
namespace {

constexpr std::size_t maxColumnLength = cardCount;

constexpr std::uint64_t splitMix(std::uint64_t& state)
{
    std::uint64_t z = (state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

// A bijective scramble, so that sums of column hashes keep no linear trace of the card values.
constexpr std::uint64_t mix(std::uint64_t value)
{
    std::uint64_t state = value;
    return splitMix(state);
}

struct ZobristTables {
    std::array<std::array<std::uint64_t, 52>, maxColumnLength> column{};
    std::array<std::uint64_t, 52> hand{};
    std::array<std::array<std::uint64_t, 14>, 4> foundation{};

    ZobristTables()
    {
        std::uint64_t seed = 0x5A17E1BEu; // fixed: keys must repeat from run to run
        for (auto& row : column) {
            for (auto& value : row) value = splitMix(seed);
        }
        for (auto& value : hand) value = splitMix(seed);
        for (auto& suit : foundation) {
            for (auto& value : suit) value = splitMix(seed);
        }
    }
};

const ZobristTables& zobrist()
{
    static const ZobristTables tables;
    return tables;
}

CardCode codeOf(const PlayingCard& card) { return cardCode(card.suit, card.rank); }

} // namespace

MoveSource Step::source() const
{
    switch (from) {
    case Place::tableau: return MoveSource::tableau(fromIndex, start);
    case Place::hand: return MoveSource::hand(fromIndex);
    case Place::foundation: return MoveSource::foundation(fromIndex);
    }
    return {};
}

MoveDestination Step::destination() const
{
    switch (to) {
    case Place::tableau: return MoveDestination::tableau(toIndex);
    case Place::hand: return MoveDestination::hand(toIndex);
    case Place::foundation: return MoveDestination::foundation(toIndex);
    }
    return {};
}

std::optional<SolverPosition> SolverPosition::from(const GameState& state, std::string* problem)
{
    auto refuse = [&](std::string why) -> std::optional<SolverPosition> {
        if (problem) *problem = std::move(why);
        return std::nullopt;
    };
    if (state.tableau.size() != tableauColumnCount || state.foundations.size() != foundationCount ||
        state.hand.size() != handSlotCount) {
        return refuse("the position needs 10 columns, 8 foundations and 4 hand slots");
    }
    std::size_t total = 0;
    for (const auto& column : state.tableau) total += column.size();
    for (const auto& pile : state.foundations) total += pile.size();
    for (const auto& slot : state.hand) total += slot ? 1 : 0;
    if (total > cardCount) return refuse("the position holds more than 104 cards");

    SolverPosition position;
    for (std::size_t c = 0; c < tableauColumnCount; ++c) {
        for (const auto& card : state.tableau[c]) position.push(c, codeOf(card));
    }
    for (std::size_t s = 0; s < handSlotCount; ++s) {
        if (state.hand[s]) {
            position.hand_[s] = codeOf(*state.hand[s]);
            position.handSum_ += zobrist().hand[position.hand_[s]];
        }
    }
    for (std::size_t f = 0; f < foundationCount; ++f) {
        const auto& pile = state.foundations[f];
        for (std::size_t i = 0; i < pile.size(); ++i) {
            if (pile[i].suit != pile[0].suit || rawValue(pile[i].rank) != static_cast<int>(i) + 1) {
                return refuse("foundation " + std::to_string(f) + " is not built from an ace upward in one suit");
            }
        }
        if (!pile.empty()) position.setFoundation(f, static_cast<int>(pile.size()), static_cast<int>(pile[0].suit));
    }
    return position;
}

std::uint64_t SolverPosition::key() const
{
    std::uint64_t columns = 0;
    for (const std::uint64_t hash : columnHash_) columns += mix(hash);
    return columns + mix(handSum_ ^ 0x68616E64u) + mix(foundationSum_ ^ 0x666F756Eu);
}

bool SolverPosition::isWon() const
{
    return std::ranges::all_of(height_, [](std::uint8_t h) { return h == 13; }) &&
           std::ranges::all_of(hand_, [](CardCode c) { return c == noCard; }) &&
           std::ranges::all_of(columns_, [](const auto& column) { return column.empty(); });
}

void SolverPosition::push(std::size_t column, CardCode code)
{
    auto& cards = columns_[column];
    columnHash_[column] ^= zobrist().column[cards.size()][code];
    cards.push_back(code);
}

CardCode SolverPosition::pop(std::size_t column)
{
    auto& cards = columns_[column];
    const CardCode code = cards.back();
    cards.pop_back();
    columnHash_[column] ^= zobrist().column[cards.size()][code];
    return code;
}

void SolverPosition::setFoundation(std::size_t index, int height, int suit)
{
    if (height_[index] > 0) foundationSum_ -= zobrist().foundation[suit_[index]][height_[index]];
    height_[index] = static_cast<std::uint8_t>(height);
    suit_[index] = static_cast<std::uint8_t>(suit);
    if (height > 0) foundationSum_ += zobrist().foundation[suit][height];
}

namespace {

// Ordering only: every generated move is still tried, so these never cost a win.
enum Priority : int {
    toFoundation = 100,
    handToColumn = 80,
    emptiesColumn = 70,
    revealsCard = 60,
    kingToEmptyColumn = 50,
    columnToHand = 30,
    splitString = 20,
    fromFoundation = 10,
};

} // namespace

void SolverPosition::generateMoves(std::vector<Step>& out) const
{
    using Place = Step::Place;
    out.clear();
    auto add = [&](Place from, std::size_t fromIndex, std::size_t start, Place to, std::size_t toIndex,
                   int priority) {
        Step step;
        step.from = from;
        step.fromIndex = static_cast<std::uint8_t>(fromIndex);
        step.start = static_cast<std::uint8_t>(start);
        step.to = to;
        step.toIndex = static_cast<std::uint8_t>(toIndex);
        step.count = static_cast<std::uint8_t>(from == Place::tableau ? columns_[fromIndex].size() - start : 1);
        step.priority = static_cast<std::uint8_t>(priority);
        out.push_back(step);
    };

    const auto firstEmptyColumn = std::ranges::find_if(columns_, [](const auto& c) { return c.empty(); });
    const int emptyColumn =
        firstEmptyColumn == columns_.end() ? -1 : static_cast<int>(firstEmptyColumn - columns_.begin());
    const auto freeSlot = std::ranges::find(hand_, noCard);
    const int handSlot = freeSlot == hand_.end() ? -1 : static_cast<int>(freeSlot - hand_.begin());

    // Two foundations of one suit and height are the same place; ace goes to any empty one.
    auto foundationFor = [&](CardCode code) -> int {
        for (std::size_t f = 0; f < foundationCount; ++f) {
            if (height_[f] == 0 ? rankOf(code) == 1 : suit_[f] == suitOf(code) && height_[f] + 1 == rankOf(code)) {
                return static_cast<int>(f);
            }
        }
        return -1;
    };
    // Columns (a single one of the empty ones: they are interchangeable) that take `head`.
    auto toColumns = [&](Place from, std::size_t fromIndex, std::size_t start, CardCode head, int priority,
                         int emptyPriority) {
        for (std::size_t d = 0; d < tableauColumnCount; ++d) {
            if (from == Place::tableau && d == fromIndex) continue;
            const auto& target = columns_[d];
            if (target.empty()) {
                if (static_cast<int>(d) == emptyColumn && rankOf(head) == 13) {
                    add(from, fromIndex, start, Place::tableau,
                         d, emptyPriority);
                }
            } else if (buildsDown(head, target.back())) {
                add(from, fromIndex, start, Place::tableau,
                     d, priority);
            }
        }
    };

    // An ace that can go home goes home, alone. That never costs a win: nothing can be placed on
    // an ace in a column, the place it leaves is only more room (a string that ended with it still
    // moves without it), and every ace still out keeps an empty foundation of its own.
    for (std::size_t s = 0; s < handSlotCount; ++s) {
        if (hand_[s] != noCard && rankOf(hand_[s]) == 1 && foundationFor(hand_[s]) >= 0) {
            add(Place::hand, s, 0, Place::foundation, foundationFor(hand_[s]), toFoundation);
            return;
        }
    }
    for (std::size_t c = 0; c < tableauColumnCount; ++c) {
        if (!columns_[c].empty() && rankOf(columns_[c].back()) == 1 && foundationFor(columns_[c].back()) >= 0) {
            add(Place::tableau, c, columns_[c].size() - 1, Place::foundation, foundationFor(columns_[c].back()),
                toFoundation);
            return;
        }
    }

    for (std::size_t s = 0; s < handSlotCount; ++s) {
        const CardCode code = hand_[s];
        if (code == noCard) continue;
        if (const int f = foundationFor(code); f >= 0) {
            add(Place::hand, s, 0, Place::foundation, f, toFoundation);
        }
        toColumns(Place::hand, s, 0, code, handToColumn, handToColumn);
    }

    for (std::size_t c = 0; c < tableauColumnCount; ++c) {
        const auto& column = columns_[c];
        if (column.empty()) continue;
        const std::size_t last = column.size() - 1;
        std::size_t top = last;
        while (top > 0 && buildsDown(column[top], column[top - 1])) --top;
        for (std::size_t start = top; start <= last; ++start) {
            const CardCode head = column[start];
            const bool whole = start == top;
            const int priority = start == 0 ? emptiesColumn : whole ? revealsCard : splitString;
            // A king string from the top of its column to an empty one changes nothing.
            const int emptyPriority = start == 0 ? -1 : whole ? kingToEmptyColumn : splitString;
            if (emptyPriority >= 0) {
                toColumns(Place::tableau, c, start, head, priority, emptyPriority);
            } else {
                for (std::size_t d = 0; d < tableauColumnCount; ++d) {
                    if (d != c && !columns_[d].empty() && buildsDown(head, columns_[d].back())) {
                        add(Place::tableau, c, start,
                             Place::tableau, d, priority);
                    }
                }
            }
        }
        const CardCode lowest = column[last];
        if (const int f = foundationFor(lowest); f >= 0) {
            add(Place::tableau, c, last, Place::foundation,
                 f, toFoundation);
        }
        if (handSlot >= 0) {
            add(Place::tableau, c, last, Place::hand,
                 handSlot, columnToHand);
        }
    }

    for (std::size_t f = 0; f < foundationCount; ++f) {
        if (height_[f] == 0) continue;
        bool twin = false;
        for (std::size_t g = 0; g < f; ++g) twin = twin || (height_[g] == height_[f] && suit_[g] == suit_[f]);
        if (twin) continue;
        const CardCode code = cardCode(static_cast<Suit>(suit_[f]), static_cast<Rank>(height_[f]));
        toColumns(Place::foundation, f, 0, code, fromFoundation, fromFoundation);
        if (handSlot >= 0) {
            add(Place::foundation, f, 0, Place::hand, handSlot, fromFoundation);
        }
    }

    std::ranges::stable_sort(out, [](const Step& a, const Step& b) { return a.priority > b.priority; });
}

int SolverPosition::evaluate() const
{
    // The ranks each suit's foundations wait for; an empty foundation waits for any ace.
    std::array<std::array<bool, 14>, 4> needed{};
    int score = 0;
    for (std::size_t f = 0; f < foundationCount; ++f) {
        score += 20 * height_[f];
        if (height_[f] == 0) {
            for (auto& suit : needed) suit[1] = true;
        } else if (height_[f] < 13) {
            needed[suit_[f]][height_[f] + 1] = true;
        }
    }
    for (const CardCode code : hand_) score += code == noCard ? 4 : 0;
    for (const auto& column : columns_) {
        if (column.empty()) {
            score += 8;
            continue;
        }
        for (std::size_t p = 0; p < column.size(); ++p) {
            if (p > 0 && !buildsDown(column[p], column[p - 1])) score -= 2;
            if (needed[suitOf(column[p])][rankOf(column[p])]) score -= 2 * static_cast<int>(column.size() - 1 - p);
        }
    }
    return score;
}

void SolverPosition::apply(const Step& step)
{
    using Place = Step::Place;
    // A column string is moved card by card through a small buffer so both hashes follow.
    std::array<CardCode, cardCount> moving{};
    std::size_t count = 0;
    switch (step.from) {
    case Place::tableau: {
        auto& column = columns_[step.fromIndex];
        count = column.size() - step.start;
        for (std::size_t i = count; i > 0; --i) moving[i - 1] = pop(step.fromIndex);
        break;
    }
    case Place::hand:
        moving[count++] = hand_[step.fromIndex];
        handSum_ -= zobrist().hand[hand_[step.fromIndex]];
        hand_[step.fromIndex] = noCard;
        break;
    case Place::foundation: {
        const std::size_t f = step.fromIndex;
        moving[count++] = cardCode(static_cast<Suit>(suit_[f]), static_cast<Rank>(height_[f]));
        setFoundation(f, height_[f] - 1, suit_[f]);
        break;
    }
    }
    switch (step.to) {
    case Place::tableau:
        for (std::size_t i = 0; i < count; ++i) push(step.toIndex, moving[i]);
        break;
    case Place::hand:
        hand_[step.toIndex] = moving[0];
        handSum_ += zobrist().hand[moving[0]];
        break;
    case Place::foundation: setFoundation(step.toIndex, height_[step.toIndex] + 1, suitOf(moving[0])); break;
    }
}

void SolverPosition::undo(const Step& step)
{
    using Place = Step::Place;
    std::array<CardCode, cardCount> moving{};
    const std::size_t count = step.count;
    switch (step.to) {
    case Place::tableau:
        for (std::size_t i = count; i > 0; --i) moving[i - 1] = pop(step.toIndex);
        break;
    case Place::hand:
        moving[0] = hand_[step.toIndex];
        handSum_ -= zobrist().hand[moving[0]];
        hand_[step.toIndex] = noCard;
        break;
    case Place::foundation: {
        const std::size_t f = step.toIndex;
        moving[0] = cardCode(static_cast<Suit>(suit_[f]), static_cast<Rank>(height_[f]));
        setFoundation(f, height_[f] - 1, suit_[f]);
        break;
    }
    }
    switch (step.from) {
    case Place::tableau:
        for (std::size_t i = 0; i < count; ++i) push(step.fromIndex, moving[i]);
        break;
    case Place::hand:
        hand_[step.fromIndex] = moving[0];
        handSum_ += zobrist().hand[moving[0]];
        break;
    case Place::foundation:
        setFoundation(step.fromIndex, height_[step.fromIndex] + 1, suitOf(moving[0]));
        break;
    }
}

} // namespace zelvaine::solver
