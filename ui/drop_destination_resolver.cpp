#include "ui/drop_destination_resolver.hpp"

#include <algorithm>
#include <limits>
#include <tuple>

namespace zelvaine {
namespace {

int kindRank(MoveDestination::Kind kind)
{
    switch (kind) {
    case MoveDestination::Kind::foundation: return 0;
    case MoveDestination::Kind::hand: return 1;
    case MoveDestination::Kind::tableau: return 2;
    }
    return 3;
}

// Within one kind: columns and foundations by index; hand slots from the highest down, and
// the open "any slot" destination after all of them.
std::int64_t indexRank(const MoveDestination& destination)
{
    if (!destination.isHand()) return destination.index.value_or(0);
    return destination.index ? -*destination.index : std::numeric_limits<std::int64_t>::max();
}

bool contains(const Rect& frame, Point point)
{
    return point.x >= frame.x && point.x <= frame.x + frame.width && point.y >= frame.y &&
           point.y <= frame.y + frame.height;
}

} // namespace

std::optional<Rect> DropFrameCache::frame(const MoveDestination& destination) const
{
    const auto found = frames_.find(destination);
    if (found == frames_.end()) return std::nullopt;
    return found->second;
}

std::optional<MoveDestination> DropDestinationResolver::resolve(std::vector<Candidate> candidates)
{
    if (candidates.empty()) return std::nullopt;
    const auto before = [](const Candidate& a, const Candidate& b) {
        // Tuples compare left to right: pointer containment, area, kind, index.
        return std::make_tuple(!a.containsPointer, -a.overlapArea, kindRank(a.destination.kind),
                               indexRank(a.destination)) < std::make_tuple(!b.containsPointer, -b.overlapArea,
                                                                           kindRank(b.destination.kind),
                                                                           indexRank(b.destination));
    };
    return std::min_element(candidates.begin(), candidates.end(), before)->destination;
}

Rect draggedStackFrame(Point pointer, Point pointerOffsetFromTopLeft, double cardWidth, std::size_t draggedCount)
{
    const double cardHeight = cardWidth / cardPlaceAspect;
    const double extra = draggedCount > 1 ? static_cast<double>(draggedCount - 1) * draggedStringOverlap : 0;
    return {pointer.x - pointerOffsetFromTopLeft.x, pointer.y - pointerOffsetFromTopLeft.y, cardWidth,
            cardHeight + extra};
}

std::vector<DropDestinationResolver::Candidate> dropCandidates(const Rect& stack, Point pointer,
                                                               const DropFrameCache& cache,
                                                               const std::function<bool(const MoveDestination&)>& accepts)
{
    std::vector<DropDestinationResolver::Candidate> candidates;
    for (const auto& [destination, frame] : cache.frames()) {
        const Rect enlarged{frame.x - dropFrameHorizontalSlack, frame.y - dropFrameVerticalSlack,
                            frame.width + 2 * dropFrameHorizontalSlack, frame.height + 2 * dropFrameVerticalSlack};
        const double left = std::max(stack.x, enlarged.x);
        const double right = std::min(stack.x + stack.width, enlarged.x + enlarged.width);
        const double top = std::max(stack.y, enlarged.y);
        const double bottom = std::min(stack.y + stack.height, enlarged.y + enlarged.height);
        if (right - left <= 0 || bottom - top <= 0) continue;
        if (!accepts(destination)) continue;
        candidates.push_back({destination, (right - left) * (bottom - top), contains(enlarged, pointer)});
    }
    return candidates;
}

} // namespace zelvaine
