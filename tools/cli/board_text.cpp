#include "tools/cli/board_text.hpp"

#include <algorithm>
#include <array>

namespace zelvaine::cli {
namespace {

std::string cardText(const PlayingCard& card)
{
    static constexpr std::array<const char*, 13> ranks{"A", "2", "3",  "4", "5", "6", "7",
                                                       "8", "9", "10", "J", "Q", "K"};
    static constexpr std::array<const char*, 4> suits{"♣", "♦", "♥", "♠"};
    return std::string(ranks[static_cast<std::size_t>(rawValue(card.rank) - 1)]) +
           suits[static_cast<std::size_t>(card.suit)];
}

// Pads to a fixed number of columns on screen, counting characters rather than UTF-8 bytes.
std::string padded(const std::string& text, std::size_t width)
{
    const auto shown = static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
    return text + std::string(width > shown ? width - shown : 0, ' ');
}

} // namespace

std::string boardText(const GameState& state)
{
    std::string out = "Hand:        ";
    for (const HandSlot& slot : state.hand) out += padded(slot ? cardText(*slot) : "··", 5);
    out += "\nFoundations: ";
    for (const Pile& pile : state.foundations) out += padded(pile.empty() ? "··" : cardText(pile.back()), 5);
    out += "\nMoves: " + std::to_string(state.moveCount) + "\n\n";

    std::size_t depth = 0;
    for (std::size_t c = 0; c < state.tableau.size(); ++c) {
        out += padded(std::to_string(c + 1), 5);
        depth = std::max(depth, state.tableau[c].size());
    }
    out += '\n';
    for (std::size_t row = 0; row < depth; ++row) {
        for (const Pile& column : state.tableau) {
            out += padded(row < column.size() ? cardText(column[row]) : "", 5);
        }
        while (!out.empty() && out.back() == ' ') out.pop_back();
        out += '\n';
    }
    return out;
}

} // namespace zelvaine::cli
