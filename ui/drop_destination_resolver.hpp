#pragma once

#include "engine/move.hpp"
#include "ui/board_layout.hpp"

#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

namespace zelvaine {

struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

// The last frame each destination reported, in board coordinates. Read only when a drag ends,
// so reporting a frame never redraws anything.
class DropFrameCache {
public:
    using Frames = std::unordered_map<MoveDestination, Rect>;

    void report(const MoveDestination& destination, const Rect& frame) { frames_[destination] = frame; }
    std::optional<Rect> frame(const MoveDestination& destination) const;
    const Frames& frames() const { return frames_; }

private:
    Frames frames_;
};

// Picks the one destination a dropped stack lands on.
struct DropDestinationResolver {
    struct Candidate {
        MoveDestination destination;
        double overlapArea = 0;
        bool containsPointer = false;
    };

    // The pointer's own place first, then the largest overlap, then foundations before hand
    // slots before columns, lower indices first (hand slots: higher first, "any slot" last).
    static std::optional<MoveDestination> resolve(std::vector<Candidate> candidates);
};

// Frames grow a little so that a card dropped just short of a place still reaches it.
inline constexpr double dropFrameHorizontalSlack = 5;
inline constexpr double dropFrameVerticalSlack = 20;
// Dragged cards fan downward this far apart.
inline constexpr double draggedStringOverlap = 18;

// The dragged stack's rectangle when the pointer is at `pointer`.
Rect draggedStackFrame(Point pointer, Point pointerOffsetFromTopLeft, double cardWidth, std::size_t draggedCount);

// Every cached destination that accepts the move and that the stack touches.
std::vector<DropDestinationResolver::Candidate>
dropCandidates(const Rect& stack, Point pointer, const DropFrameCache& cache,
               const std::function<bool(const MoveDestination&)>& accepts);

} // namespace zelvaine
