#pragma once

#include "engine/move.hpp"

namespace zelvaine {

// How QML names a place: 0 a column (with a card index), 1 a hand slot, 2 a foundation.
inline MoveSource placeSource(int kind, int index, int cardIndex)
{
    switch (kind) {
    case 1: return MoveSource::hand(index);
    case 2: return MoveSource::foundation(index);
    default: return MoveSource::tableau(index, cardIndex);
    }
}

inline MoveDestination placeDestination(int kind, int index)
{
    switch (kind) {
    case 1: return MoveDestination::hand(index);
    case 2: return MoveDestination::foundation(index);
    default: return MoveDestination::tableau(index);
    }
}

inline int placeKind(MoveSource::Kind kind)
{
    switch (kind) {
    case MoveSource::Kind::tableau: return 0;
    case MoveSource::Kind::hand: return 1;
    case MoveSource::Kind::foundation: return 2;
    }
    return -1;
}

} // namespace zelvaine
