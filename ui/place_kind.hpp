#pragma once

#include "engine/move.hpp"
#include "store/game_confirmation.hpp"
#include "ui/board_vocabulary.hpp"
#include "ui/keyboard_focus.hpp"

#include <optional>

// Between the board's vocabulary and the store's: the names QML uses for places, questions,
// messages and arrow keys, and the engine's own.
namespace zelvaine {

inline MoveSource placeSource(Place::Kind kind, int index, int cardIndex)
{
    switch (kind) {
    case Place::Kind::Hand: return MoveSource::hand(index);
    case Place::Kind::Foundation: return MoveSource::foundation(index);
    default: return MoveSource::tableau(index, cardIndex);
    }
}

inline MoveDestination placeDestination(Place::Kind kind, int index)
{
    switch (kind) {
    case Place::Kind::Hand: return MoveDestination::hand(index);
    case Place::Kind::Foundation: return MoveDestination::foundation(index);
    default: return MoveDestination::tableau(index);
    }
}

inline Place::Kind placeKind(MoveSource::Kind kind)
{
    switch (kind) {
    case MoveSource::Kind::tableau: return Place::Kind::Column;
    case MoveSource::Kind::hand: return Place::Kind::Hand;
    case MoveSource::Kind::foundation: return Place::Kind::Foundation;
    }
    return Place::Kind::None;
}

inline Place::Kind placeKind(KeyboardFocus::Row row)
{
    switch (row) {
    case KeyboardFocus::Row::tableau: return Place::Kind::Column;
    case KeyboardFocus::Row::hand: return Place::Kind::Hand;
    case KeyboardFocus::Row::foundations: return Place::Kind::Foundation;
    }
    return Place::Kind::None;
}

inline Confirmation::Kind confirmationKind(std::optional<GameConfirmation> confirmation)
{
    if (!confirmation) return Confirmation::Kind::None;
    switch (*confirmation) {
    case GameConfirmation::newGame: return Confirmation::Kind::NewGame;
    case GameConfirmation::restartGame: return Confirmation::Kind::RestartGame;
    case GameConfirmation::autoComplete: return Confirmation::Kind::AutoComplete;
    case GameConfirmation::openSharedGame: return Confirmation::Kind::OpenSharedGame;
    }
    return Confirmation::Kind::None;
}

inline Message::Kind messageKind(std::optional<GameMessageKind> kind)
{
    if (!kind) return Message::Kind::None;
    switch (*kind) {
    case GameMessageKind::hint: return Message::Kind::Hint;
    case GameMessageKind::moveFeedback: return Message::Kind::MoveFeedback;
    case GameMessageKind::notice: return Message::Kind::Notice;
    }
    return Message::Kind::None;
}

inline KeyboardFocus::Direction focusDirection(Focus::Direction direction)
{
    switch (direction) {
    case Focus::Direction::Left: return KeyboardFocus::Direction::left;
    case Focus::Direction::Right: return KeyboardFocus::Direction::right;
    case Focus::Direction::Up: return KeyboardFocus::Direction::up;
    case Focus::Direction::Down: return KeyboardFocus::Direction::down;
    }
    return KeyboardFocus::Direction::left;
}

} // namespace zelvaine
