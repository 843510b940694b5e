#include "solver/line_shortening.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <unordered_map>

namespace zelvaine::solver {

namespace {

constexpr std::size_t pairLimit = 2000;

std::vector<Step> shortenPass(const SolverPosition& start, const std::vector<Step>& line, bool pairs)
{
    // The last place on the line of every position it passes.
    std::unordered_map<std::uint64_t, std::size_t> latest;
    SolverPosition position = start;
    latest[position.key()] = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        position.apply(line[i]);
        latest[position.key()] = i + 1;
    }

    std::vector<Step> shorter;
    std::vector<Step> moves;
    std::vector<Step> replies;
    position = start;
    for (std::size_t at = latest[position.key()]; at < line.size();) {
        // Every move, safe ones home too: the line may skip past one.
        position.generateMoves(moves, MoveSet::unforced);
        std::array<Step, 2> best{};
        std::size_t taken = 0;
        std::size_t reach = at;
        for (const Step& step : moves) {
            const auto found = latest.find(position.keyAfter(step));
            if (found != latest.end() && found->second > reach) {
                reach = found->second;
                best[0] = step;
                taken = 1;
            }
        }
        // Two moves are worth it when they skip at least two places more than one.
        const std::size_t single = reach;
        for (std::size_t i = 0; pairs && i < moves.size(); ++i) {
            const Step first = moves[i];
            position.apply(first);
            position.generateMoves(replies, MoveSet::unforced);
            for (const Step& second : replies) {
                const auto found = latest.find(position.keyAfter(second));
                if (found != latest.end() && found->second > std::max(reach, single + 1)) {
                    reach = found->second;
                    best = {first, second};
                    taken = 2;
                }
            }
            position.undo(first);
        }
        if (taken == 0) return line; // only two positions sharing a key could do this
        for (std::size_t i = 0; i < taken; ++i) {
            shorter.push_back(best[i]);
            position.apply(best[i]);
        }
        at = reach;
    }
    return position.isWon() ? shorter : line;
}

} // namespace

std::vector<Step> shortenLine(const SolverPosition& start, const std::vector<Step>& line)
{
    // Pairs of moves cost a score of keys for every move, and a line the single moves could not
    // shorten seldom has them to offer: only a line that wandered is looked at again, when it
    // has become short enough.
    const std::vector<Step> once = shortenPass(start, line, false);
    if (once.size() == line.size() || once.size() > pairLimit) return once;
    return shortenPass(start, once, true);
}

} // namespace zelvaine::solver
