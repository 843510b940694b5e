#include "tests/support/positions.hpp"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string>

namespace zelvaine::testing {

PlayingCard card(std::string_view text, std::int64_t deck)
{
    if (text.size() < 2) throw std::invalid_argument("card text too short: " + std::string(text));
    const char suitLetter = text.back();
    const std::string_view rankText = text.substr(0, text.size() - 1);
    int rank = 0;
    if (rankText == "A") rank = 1;
    else if (rankText == "J") rank = 11;
    else if (rankText == "Q") rank = 12;
    else if (rankText == "K") rank = 13;
    else std::from_chars(rankText.data(), rankText.data() + rankText.size(), rank);
    const auto parsedRank = rankFromRaw(rank);
    const std::string_view suitLetters = "CDHS";
    const auto suitIndex = suitLetters.find(suitLetter);
    if (!parsedRank || suitIndex == std::string_view::npos) {
        throw std::invalid_argument("bad card text: " + std::string(text));
    }
    return PlayingCard{Uuid::random(), allSuits[suitIndex], *parsedRank, deck};
}

Pile cards(std::string_view texts)
{
    Pile pile;
    while (!texts.empty()) {
        const auto space = texts.find(' ');
        const auto word = texts.substr(0, space);
        if (!word.empty()) pile.push_back(card(word));
        if (space == std::string_view::npos) break;
        texts.remove_prefix(space + 1);
    }
    return pile;
}

GameState emptyBoard()
{
    GameState state;
    state.tableau.resize(tableauColumnCount);
    state.foundations.resize(foundationCount);
    state.hand.resize(handSlotCount);
    return state;
}

GameState knownDeal()
{
    std::vector<PlayingCard> rest = makeTwoDeckSet();
    auto take = [&](Suit suit, Rank rank) {
        auto found = std::find_if(rest.begin(), rest.end(),
                                  [&](const PlayingCard& c) { return c.suit == suit && c.rank == rank; });
        PlayingCard c = *found;
        rest.erase(found);
        return c;
    };
    GameState s;
    s.tableau.resize(10);
    s.foundations.resize(8);
    s.hand = {take(Suit::diamonds, Rank::ace), take(Suit::spades, Rank::king), take(Suit::spades, Rank::king),
              take(Suit::clubs, Rank::king)};
    std::vector<std::vector<PlayingCard>> ends(10);
    ends[0] = {take(Suit::clubs, Rank::nine), take(Suit::hearts, Rank::eight)};
    ends[3] = {take(Suit::diamonds, Rank::ten)};
    ends[4] = {take(Suit::spades, Rank::nine)};
    const std::size_t others[] = {1, 2, 5, 6, 7, 8, 9};
    const Suit queens[] = {Suit::clubs,  Suit::clubs,  Suit::diamonds, Suit::diamonds,
                           Suit::hearts, Suit::hearts, Suit::spades};
    for (std::size_t i = 0; i < 7; ++i) ends[others[i]] = {take(queens[i], Rank::queen)};
    std::size_t next = 0;
    for (std::size_t c = 0; c < 10; ++c) {
        while (s.tableau[c].size() + ends[c].size() < 10) s.tableau[c].push_back(rest[next++]);
        s.tableau[c].insert(s.tableau[c].end(), ends[c].begin(), ends[c].end());
    }
    return s;
}

Pile foundationUpTo(std::string_view top)
{
    const PlayingCard last = card(top);
    Pile pile;
    for (int rank = 1; rank <= rawValue(last.rank); ++rank) {
        pile.push_back(PlayingCard{Uuid::random(), last.suit, static_cast<Rank>(rank), 0});
    }
    return pile;
}

GameState kingsLeft()
{
    GameState s = emptyBoard();
    const char* tops[] = {"QC", "QC", "QD", "QD", "QH", "QH", "QS", "QS"};
    for (std::size_t f = 0; f < 8; ++f) {
        s.foundations[f] = foundationUpTo(tops[f]);
        s.tableau[f] = {card(std::string("K") + tops[f][1])};
        // Each suit's second run comes from the second deck, as in a real game.
        for (auto& c : s.foundations[f]) c.deck = static_cast<std::int64_t>(f % 2);
        s.tableau[f][0].deck = static_cast<std::int64_t>(f % 2);
    }
    return s;
}

} // namespace zelvaine::testing
