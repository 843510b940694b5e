#pragma once

#include "engine/card.hpp"
#include "engine/move.hpp"
#include "engine/uuid.hpp"
#include "store/game_store.hpp"
#include "ui/drop_destination_resolver.hpp"

#include <cmath>
#include <optional>
#include <vector>

namespace zelvaine {

// One drag in progress: what moves, and where the pointer holds it.
struct ActiveCardDrag {
    Uuid id;
    MoveSource source;
    std::vector<PlayingCard> cards;
    Point originPreviewCenter;
    Point pointerOffsetFromTopLeft;
    double cardWidth = 0;
};

// A press becomes a drag once the pointer has travelled this far, in points: a click with an
// unsteady hand stays a click.
inline constexpr double dragStartDistance = 6;
inline bool isDragDistance(Point start, Point location)
{
    return std::hypot(location.x - start.x, location.y - start.y) >= dragStartDistance;
}

// Where the dragged card sat when the drag began, from the cached frame of its place.
std::optional<Rect> sourceCardFrame(const MoveSource& source, double cardWidth, const DropFrameCache& cache,
                                    const GameState& state);

// The board's drag state: which drag runs, where its top card's centre is, and what ending it
// does to the store. Timing (the settle, the spring back, the clean-up) is the view's.
class CardDragSession {
public:
    enum class Change { ignored, started, moved };
    struct End {
        enum class Kind { none, committed, refused } kind = Kind::none;
        MoveDestination destination;
        // For a refused drop: the drag to clean up later, and where its preview returns.
        Uuid id;
        Point returnTo;
    };

    Change change(GameStore& store, const DropFrameCache& cache, const MoveSource& source, Point location,
                  Point startLocation, double cardWidth);
    // A committed drop ends the drag at once (the view lets its preview settle); a refused one
    // keeps it while the preview springs back.
    End end(GameStore& store, const DropFrameCache& cache, const MoveSource& source, Point location);
    // The delayed clean-up after a refused drop: it leaves a newer drag alone.
    bool cleanUp(const Uuid& id);
    void clear() { drag_.reset(); }
    // A drag that no pointer makes: the automatic finish's flying card.
    void show(ActiveCardDrag drag)
    {
        location_ = drag.originPreviewCenter;
        drag_ = std::move(drag);
    }

    const std::optional<ActiveCardDrag>& activeDrag() const { return drag_; }
    // The centre of the top dragged card.
    Point location() const { return location_; }

private:
    Point centreFor(Point pointer) const;

    std::optional<ActiveCardDrag> drag_;
    Point location_;
};

} // namespace zelvaine
