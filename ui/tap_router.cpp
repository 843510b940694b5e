#include "ui/tap_router.hpp"

#include "engine/move_rules.hpp"

namespace zelvaine::taps {
namespace {

// A hand card or a foundation card: its own place is also the destination of a selection.
void onPlacedCard(GameStore& store, const MoveSource& source, const MoveDestination& place)
{
    if (store.selection() && *store.selection() != source) {
        store.handleTap(place, source);
        return;
    }
    if (store.registerTap(source)) {
        store.autoMove(source);
    } else {
        store.toggleSelection(source);
    }
}

} // namespace

void onTableauCard(GameStore& store, std::int64_t column, std::int64_t cardIndex)
{
    const MoveSource source = MoveSource::tableau(column, cardIndex);
    const bool movable = movableCardsView(store.state(), source).has_value();
    if (store.selection() && *store.selection() != source) {
        // A blocked card is no source: the tap then only names its column as the destination.
        store.handleTap(MoveDestination::tableau(column), movable ? std::optional(source) : std::nullopt);
        return;
    }
    if (store.registerTap(source)) {
        store.autoMove(source);
    } else if (movable) {
        store.toggleSelection(source);
    }
}

void onHandCard(GameStore& store, std::int64_t slot)
{
    onPlacedCard(store, MoveSource::hand(slot), MoveDestination::hand(slot));
}

void onFoundationCard(GameStore& store, std::int64_t index)
{
    onPlacedCard(store, MoveSource::foundation(index), MoveDestination::foundation(index));
}

void onEmptyPlace(GameStore& store, const MoveDestination& destination) { store.handleTap(destination, std::nullopt); }

void onTable(GameStore& store)
{
    store.setSelection(std::nullopt);
    store.clearMessage();
    store.clearLastTap();
}

} // namespace zelvaine::taps
