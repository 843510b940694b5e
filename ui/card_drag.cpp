#include "ui/card_drag.hpp"

#include "engine/localizer.hpp"
#include "engine/move_rules.hpp"

#include <algorithm>

namespace zelvaine {

std::optional<Rect> sourceCardFrame(const MoveSource& source, double cardWidth, const DropFrameCache& cache,
                                    const GameState& state)
{
    switch (source.kind) {
    case MoveSource::Kind::hand: return cache.frame(MoveDestination::hand(source.index));
    case MoveSource::Kind::foundation: return cache.frame(MoveDestination::foundation(source.index));
    case MoveSource::Kind::tableau: break;
    }
    const auto column = cache.frame(MoveDestination::tableau(source.column()));
    if (!column) return std::nullopt;
    if (source.column() < 0 || source.column() >= static_cast<std::int64_t>(state.tableau.size())) return std::nullopt;
    const auto count = static_cast<std::int64_t>(state.tableau[static_cast<std::size_t>(source.column())].size());
    if (source.cardIndex < 0 || source.cardIndex >= count) return std::nullopt;
    const double cardHeight = cardWidth / cardPlaceAspect;
    const double offset =
        count <= 1
            ? 0
            : std::max(minimumCardOffset,
                       std::min((column->height - cardHeight) / static_cast<double>(count - 1), 0.36 * cardWidth));
    return Rect{column->x + column->width / 2 - cardWidth / 2,
                column->y + static_cast<double>(source.cardIndex) * offset, cardWidth, cardHeight};
}

Point CardDragSession::centreFor(Point pointer) const
{
    const double cardHeight = drag_->cardWidth / cardPlaceAspect;
    return {pointer.x - drag_->pointerOffsetFromTopLeft.x + drag_->cardWidth / 2,
            pointer.y - drag_->pointerOffsetFromTopLeft.y + cardHeight / 2};
}

CardDragSession::Change CardDragSession::change(GameStore& store, const DropFrameCache& cache, const MoveSource& source,
                                                Point location, Point startLocation, double cardWidth)
{
    if (drag_) {
        if (drag_->source != source) return Change::ignored;
        location_ = centreFor(location);
        return Change::moved;
    }
    auto cards = movableCards(store.state(), source);
    if (!cards || cards->empty()) return Change::ignored;

    ActiveCardDrag drag{Uuid::random(), source, std::move(*cards), startLocation, {}, cardWidth};
    const double cardHeight = cardWidth / cardPlaceAspect;
    if (const auto frame = sourceCardFrame(source, cardWidth, cache, store.state())) {
        drag.pointerOffsetFromTopLeft = {startLocation.x - frame->x, startLocation.y - frame->y};
        drag.originPreviewCenter = {frame->x + frame->width / 2, frame->y + frame->height / 2};
    } else {
        drag.pointerOffsetFromTopLeft = {cardWidth / 2, cardHeight / 2};
    }
    // A drag replaces a pending selection and a pending double tap.
    store.setSelection(std::nullopt);
    store.clearLastTap();
    drag_ = std::move(drag);
    location_ = centreFor(location);
    return Change::started;
}

CardDragSession::End CardDragSession::end(GameStore& store, const DropFrameCache& cache, const MoveSource& source,
                                          Point location)
{
    // Another card's gesture ending while a preview springs back leaves that preview alone.
    if (!drag_ || drag_->source != source) return {};
    const Rect stack =
        draggedStackFrame(location, drag_->pointerOffsetFromTopLeft, drag_->cardWidth, drag_->cards.size());
    const auto destination = DropDestinationResolver::resolve(
        dropCandidates(stack, location, cache, [&](const MoveDestination& d) { return store.canMove(source, d); }));
    if (destination) {
        const End committed{End::Kind::committed, *destination, drag_->id, location_};
        drag_.reset();
        store.move(source, *destination);
        return committed;
    }
    store.refuseKeepingSelection(localized(QT_TRANSLATE_NOOP("Zelvaine", "That card cannot be dropped there.")));
    location_ = drag_->originPreviewCenter;
    return {End::Kind::refused, {}, drag_->id, location_};
}

bool CardDragSession::cleanUp(const Uuid& id)
{
    if (!drag_ || drag_->id != id) return false;
    drag_.reset();
    return true;
}

} // namespace zelvaine
