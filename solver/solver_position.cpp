#include "solver/solver_position.hpp"

#include <algorithm>
#include <bit>

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

    constexpr ZobristTables()
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

// Built by the compiler, so that reading it costs no check for a first use.
constexpr ZobristTables zobristTables{};
constexpr const ZobristTables& zobrist() { return zobristTables; }

CardCode codeOf(const PlayingCard& card) { return cardCode(card.suit, card.rank); }

std::uint64_t combine(std::uint64_t columns, std::uint64_t hand, std::uint64_t foundations)
{
    return columns + mix(hand ^ 0x68616E64u) + mix(foundations ^ 0x666F756Eu);
}

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
        position.refresh(c);
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

std::uint64_t SolverPosition::key() const { return combine(columnsSum_, handSum_, foundationSum_); }

std::uint64_t SolverPosition::keyAfter(const Step& step) const
{
    using Place = Step::Place;
    const auto& tables = zobrist();
    std::uint64_t columns = columnsSum_;
    std::uint64_t hand = handSum_;
    std::uint64_t foundations = foundationSum_;
    const CardCode* moving = nullptr;
    CardCode single = noCard;
    std::size_t count = 1;
    switch (step.from) {
    case Place::tableau: {
        const auto& column = columns_[step.fromIndex];
        std::uint64_t hash = columnHash_[step.fromIndex];
        for (std::size_t i = step.start; i < column.size(); ++i) hash ^= tables.column[i][column[i]];
        columns += mix(hash) - columnMixed_[step.fromIndex];
        moving = column.data() + step.start;
        count = column.size() - step.start;
        break;
    }
    case Place::hand:
        single = hand_[step.fromIndex];
        hand -= tables.hand[single];
        break;
    case Place::foundation: {
        const int height = height_[step.fromIndex];
        const int suit = suit_[step.fromIndex];
        single = cardCode(static_cast<Suit>(suit), static_cast<Rank>(height));
        foundations -= tables.foundation[suit][height];
        if (height > 1) foundations += tables.foundation[suit][height - 1];
        break;
    }
    }
    if (moving == nullptr) moving = &single;
    switch (step.to) {
    case Place::tableau: {
        const std::size_t size = columns_[step.toIndex].size();
        std::uint64_t hash = columnHash_[step.toIndex];
        for (std::size_t i = 0; i < count; ++i) hash ^= tables.column[size + i][moving[i]];
        columns += mix(hash) - columnMixed_[step.toIndex];
        break;
    }
    case Place::hand: hand += tables.hand[moving[0]]; break;
    case Place::foundation: {
        const int height = height_[step.toIndex];
        if (height > 0) foundations -= tables.foundation[suit_[step.toIndex]][height];
        foundations += tables.foundation[suitOf(moving[0])][height + 1];
        break;
    }
    }
    return combine(columns, hand, foundations);
}

void SolverPosition::refresh(std::size_t column)
{
    columnsSum_ -= columnMixed_[column];
    columnMixed_[column] = mix(columnHash_[column]);
    columnsSum_ += columnMixed_[column];
}

int SolverPosition::blockersOf(std::size_t column) const
{
    const std::size_t size = columns_[column].size();
    return size == 0 ? 0 : prefix_[column][size - 1].blockers;
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
    // A run lying on a card of lower rank needs at least one move away first.
    const int rank = rankOf(code);
    Prefix entry{static_cast<std::uint8_t>(rank), 0, false};
    if (!cards.empty()) {
        const Prefix& above = prefix_[column][cards.size() - 1];
        entry.blocks = rank > above.lowest;
        entry.lowest = std::min(above.lowest, entry.lowest);
        entry.blockers = static_cast<std::uint8_t>(above.blockers +
                                                   (entry.blocks && !(above.blocks && buildsDown(code, cards.back()))));
    }
    prefix_[column][cards.size()] = entry;
    // A third copy (a position no deal reaches) only blurs the evaluation.
    auto& copies = spots_[code];
    copies[copies[0].column == noCard ? 0 : 1] = {static_cast<std::uint8_t>(column),
                                                  static_cast<std::uint8_t>(cards.size())};
    cards.push_back(code);
}

CardCode SolverPosition::pop(std::size_t column)
{
    auto& cards = columns_[column];
    const CardCode code = cards.back();
    cards.pop_back();
    columnHash_[column] ^= zobrist().column[cards.size()][code];
    for (Spot& spot : spots_[code]) {
        if (spot.column == column && spot.index == cards.size()) {
            spot.column = noCard;
            break;
        }
    }
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

std::array<std::array<int, 2>, 4> SolverPosition::suitHeights() const
{
    std::array<std::array<int, 2>, 4> heights{};
    std::array<std::size_t, 4> started{};
    for (std::size_t f = 0; f < foundationCount; ++f) {
        const std::size_t suit = suit_[f];
        if (height_[f] > 0 && started[suit] < 2) heights[suit][started[suit]++] = height_[f];
    }
    return heights;
}

// Sending card c (suit s, rank r) home loses no win, and lengthens no shortest win, when both
// foundations of s and of each suit of the other colour are at r - 1 or higher, and both of the
// other suit of c's colour at r - 2 or higher. By induction on r:
// - Only a card of rank r - 1 and the other colour can ever lie on c; all four are home. A
//   shortest win never takes a card of such a set (the other colour up to r - 1, s up to r - 1,
//   the other suit of c's colour up to r - 2) off a foundation: the first one taken off would
//   itself meet this rule at its lower rank, so putting it straight back would be a shorter win.
// - So in a shortest win from the position with c out, nothing is ever put on c. Replay it with
//   c home instead: a string that ends with c moves without it; c moved alone to a column or the
//   hand is taken from the foundation to the same place (its top, since nothing of s below c's
//   rank leaves), after which the two lines meet; c sent home is skipped. When the win puts c's
//   twin on the foundation c took, the other foundation of s is then at r - 1 and takes it.
// The replay is never longer, so applying such moves whenever they exist keeps a complete search
// complete (induct on the length of the shortest win, then on the cards left out).
bool safeHome(CardCode code, const std::array<int, 4>& lowestPair)
{
    const int rank = rankOf(code);
    const int suit = suitOf(code);
    for (int other = 0; other < 4; ++other) {
        const bool sameColour = isRedCode(cardCode(static_cast<Suit>(other), Rank::ace)) == isRedCode(code);
        const int needed = !sameColour || other == suit ? rank - 1 : rank - 2;
        if (lowestPair[static_cast<std::size_t>(other)] < needed) return false;
    }
    return true;
}

// Not a proof: a cheap search may lose a win by it, and only cheap searches use it. Low cards
// of a colour rarely have work left on the table once the other colour's foundations are
// close behind.
bool nearlySafeHome(CardCode code, const std::array<int, 4>& lowestPair)
{
    constexpr int lead = 3;
    for (int other = 0; other < 4; ++other) {
        const bool sameColour = isRedCode(cardCode(static_cast<Suit>(other), Rank::ace)) == isRedCode(code);
        if (!sameColour && lowestPair[static_cast<std::size_t>(other)] < rankOf(code) - lead) return false;
    }
    return true;
}

void SolverPosition::generateMoves(std::vector<Step>& out, MoveSet set) const
{
    using Place = Step::Place;
    out.clear();
    auto add = [&](Place from, std::size_t fromIndex, std::size_t start, Place to, std::size_t toIndex, int priority) {
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

    // Lookups built once a call, so that each candidate card costs a load rather than a loop:
    // the columns whose lowest card takes it, and the foundation it can go to. Two foundations
    // of one suit and height are the same place, and an ace goes to any empty one; the lowest
    // index stands for them.
    int emptyColumn = -1;
    std::array<std::uint16_t, 52> takers{};
    for (std::size_t d = tableauColumnCount; d-- > 0;) {
        const auto& target = columns_[d];
        if (target.empty()) {
            emptyColumn = static_cast<int>(d);
            continue;
        }
        const CardCode lowest = target.back();
        if (rankOf(lowest) == 1) continue;
        const int firstOther = isRedCode(lowest) ? 0 : 1; // black suits are 0 and 3, red ones 1 and 2
        for (const int suit : {firstOther, 3 - firstOther}) {
            takers[cardCode(static_cast<Suit>(suit), static_cast<Rank>(rankOf(lowest) - 1))] |=
                static_cast<std::uint16_t>(1u << d);
        }
    }
    std::array<std::int8_t, 52> home;
    home.fill(-1);
    for (std::size_t f = foundationCount; f-- > 0;) {
        const int height = height_[f];
        if (height == 0) {
            for (int suit = 0; suit < 4; ++suit)
                home[cardCode(static_cast<Suit>(suit), Rank::ace)] = static_cast<std::int8_t>(f);
        } else if (height < 13) {
            home[cardCode(static_cast<Suit>(suit_[f]), static_cast<Rank>(height + 1))] = static_cast<std::int8_t>(f);
        }
    }
    // The lower of each suit's two foundations, 0 while one of them is not started.
    std::array<int, 4> lowestPair{};
    const auto pairs = suitHeights();
    for (std::size_t suit = 0; suit < 4; ++suit) lowestPair[suit] = std::min(pairs[suit][0], pairs[suit][1]);
    const auto freeSlot = std::ranges::find(hand_, noCard);
    const int handSlot = freeSlot == hand_.end() ? -1 : static_cast<int>(freeSlot - hand_.begin());

    // Columns (a single one of the empty ones: they are interchangeable) that take `head`.
    auto toColumns = [&](Place from, std::size_t fromIndex, std::size_t start, CardCode head, int priority,
                         int emptyPriority) {
        unsigned targets = takers[head];
        if (emptyColumn >= 0 && emptyPriority >= 0 && rankOf(head) == 13) targets |= 1u << emptyColumn;
        if (from == Place::tableau) targets &= ~(1u << fromIndex);
        for (; targets != 0; targets &= targets - 1) {
            const auto d = static_cast<std::size_t>(std::countr_zero(targets));
            add(from, fromIndex, start, Place::tableau, d, columns_[d].empty() ? emptyPriority : priority);
        }
    };

    // A card that is safe to send home goes home, alone (see safeHome for why that loses no win).
    const bool complete = set == MoveSet::all || set == MoveSet::unforced;
    auto safe = [&](CardCode code) {
        if (set == MoveSet::unforced || home[code] < 0) return false;
        return safeHome(code, lowestPair) || (!complete && nearlySafeHome(code, lowestPair));
    };
    for (std::size_t s = 0; s < handSlotCount; ++s) {
        if (hand_[s] != noCard && safe(hand_[s])) {
            add(Place::hand, s, 0, Place::foundation, static_cast<std::size_t>(home[hand_[s]]), toFoundation);
            return;
        }
    }
    for (std::size_t c = 0; c < tableauColumnCount; ++c) {
        if (!columns_[c].empty() && safe(columns_[c].back())) {
            add(Place::tableau, c, columns_[c].size() - 1, Place::foundation,
                static_cast<std::size_t>(home[columns_[c].back()]), toFoundation);
            return;
        }
    }

    for (std::size_t s = 0; s < handSlotCount; ++s) {
        const CardCode code = hand_[s];
        if (code == noCard) continue;
        if (home[code] >= 0)
            add(Place::hand, s, 0, Place::foundation, static_cast<std::size_t>(home[code]), toFoundation);
        toColumns(Place::hand, s, 0, code, handToColumn, handToColumn);
    }

    for (std::size_t c = 0; c < tableauColumnCount; ++c) {
        const auto& column = columns_[c];
        if (column.empty()) continue;
        const std::size_t last = column.size() - 1;
        std::size_t top = last;
        while (top > 0 && buildsDown(column[top], column[top - 1])) --top;
        for (std::size_t start = top; start <= last; ++start) {
            const bool whole = start == top;
            const int priority = start == 0 ? emptiesColumn : whole ? revealsCard : splitString;
            // A king string from the top of its column to an empty one changes nothing.
            const int emptyPriority = start == 0 ? -1 : whole ? kingToEmptyColumn : splitString;
            // A split moves part of a string from one card onto its equal in colour and rank
            // elsewhere. Splits multiply the arrangements of the same cards, and what one opens up
            // can mostly be reached through the hand too; the quick set keeps only the split that
            // gives a king an empty column. On hard deals this finds wins several times sooner.
            if ((set == MoveSet::quick || set == MoveSet::keepRuns) && !whole) {
                if (emptyColumn >= 0 && emptyPriority >= 0 && rankOf(column[start]) == 13) {
                    add(Place::tableau, c, start, Place::tableau, static_cast<std::size_t>(emptyColumn), emptyPriority);
                }
                continue;
            }
            toColumns(Place::tableau, c, start, column[start], priority, emptyPriority);
        }
        const CardCode lowest = column[last];
        if (home[lowest] >= 0) {
            add(Place::tableau, c, last, Place::foundation, static_cast<std::size_t>(home[lowest]), toFoundation);
        }
        const bool keptInRun =
            set == MoveSet::keepRuns && last > 0 && buildsDown(lowest, column[last - 1]) && home[column[last - 1]] < 0;
        if (handSlot >= 0 && !keptInRun) {
            add(Place::tableau, c, last, Place::hand, static_cast<std::size_t>(handSlot), columnToHand);
        }
    }

    for (std::size_t f = 0; f < foundationCount; ++f) {
        if (height_[f] == 0 || !complete) continue;
        bool twin = false;
        for (std::size_t g = 0; g < f; ++g) twin = twin || (height_[g] == height_[f] && suit_[g] == suit_[f]);
        if (twin) continue;
        const CardCode code = cardCode(static_cast<Suit>(suit_[f]), static_cast<Rank>(height_[f]));
        toColumns(Place::foundation, f, 0, code, fromFoundation, fromFoundation);
        if (handSlot >= 0) {
            add(Place::foundation, f, 0, Place::hand, static_cast<std::size_t>(handSlot), fromFoundation);
        }
    }

    // Insertion sort: stable, and for a score of moves cheaper than a merge sort's buffer.
    for (std::size_t i = 1; i < out.size(); ++i) {
        const Step step = out[i];
        std::size_t j = i;
        for (; j > 0 && out[j - 1].priority < step.priority; --j) out[j] = out[j - 1];
        out[j] = step;
    }
}

int SolverPosition::evaluate(Lookahead lookahead) const
{
    // A lower bound of sorts: every card out needs a move home, and every run lying on a card
    // of lower rank needs at least one move away first. The cards the foundations wait for had
    // better be near the surface, and free places are what makes moves possible.
    constexpr int perCardOut = 10;
    constexpr int perBlockingRun = 6;
    constexpr int perNeededDepth = 2;
    constexpr int perEmptyColumn = 8;
    constexpr int perFreeSlot = 3;
    int out = 0;
    int blockers = 0;
    int score = 0;
    for (std::size_t c = 0; c < tableauColumnCount; ++c) {
        const std::size_t size = columns_[c].size();
        if (size == 0) score += perEmptyColumn;
        out += static_cast<int>(size);
        blockers += blockersOf(c);
    }
    for (const CardCode code : hand_) {
        if (code == noCard) {
            score += perFreeSlot;
        } else {
            ++out;
        }
    }
    // How many cards cover the nearer and the farther copy of a card.
    constexpr int nowhere = 0xFF;
    auto covering = [&](CardCode code) {
        std::array<int, 2> depths{nowhere, nowhere};
        auto place = [&](int cards) {
            if (cards < depths[0]) {
                depths[1] = depths[0];
                depths[0] = cards;
            } else if (cards < depths[1]) {
                depths[1] = cards;
            }
        };
        for (const Spot& spot : spots_[code]) {
            if (spot.column != noCard) place(static_cast<int>(columns_[spot.column].size()) - 1 - spot.index);
        }
        for (const CardCode held : hand_) {
            if (held == code) place(0);
        }
        return depths;
    };
    const auto pairs = suitHeights();
    for (int suit = 0; suit < 4; ++suit) {
        const std::array<int, 2>& heights = pairs[static_cast<std::size_t>(suit)];
        const int started = (heights[0] > 0) + (heights[1] > 0);
        // A suit ends on two foundations, so an unstarted one waits for an ace; when both wait
        // for the same card, the second waits for its farther copy.
        const int waiting = lookahead == Lookahead::everyFoundation ? 2 : started;
        for (int k = 0; k < waiting; ++k) {
            const int height = heights[static_cast<std::size_t>(k)];
            if (height == 13) continue;
            const auto depths = covering(cardCode(static_cast<Suit>(suit), static_cast<Rank>(height + 1)));
            const bool twin = lookahead == Lookahead::everyFoundation && k == 1 && heights[0] == height;
            const int cards = depths[twin ? 1 : 0];
            if (cards != nowhere) score -= perNeededDepth * cards;
        }
    }
    return score - perCardOut * out - perBlockingRun * blockers;
}

void SolverPosition::apply(const Step& step)
{
    using Place = Step::Place;
    // A column string is moved card by card through a small buffer so both hashes follow.
    std::array<CardCode, cardCount> moving;
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
    refreshTouched(step);
}

void SolverPosition::undo(const Step& step)
{
    using Place = Step::Place;
    std::array<CardCode, cardCount> moving;
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
    case Place::foundation: setFoundation(step.fromIndex, height_[step.fromIndex] + 1, suitOf(moving[0])); break;
    }
    refreshTouched(step);
}

void SolverPosition::refreshTouched(const Step& step)
{
    if (step.from == Step::Place::tableau) refresh(step.fromIndex);
    if (step.to == Step::Place::tableau) refresh(step.toIndex);
}

} // namespace zelvaine::solver
