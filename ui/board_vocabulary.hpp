#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

// The words the board and its QML share. QML compares these by name (Place.Hand,
// Confirmation.None), so no place, question or message crosses the boundary as a bare number.
// Each None stands for "nothing": no selection, no question open, no message on show.

namespace zelvaine {

namespace Place {
Q_NAMESPACE
QML_ELEMENT
enum class Kind { None = -1, Column, Hand, Foundation };
Q_ENUM_NS(Kind)
} // namespace Place

// The question asked before the game is replaced, reset or finished for the player.
namespace Confirmation {
Q_NAMESPACE
QML_ELEMENT
enum class Kind { None = -1, NewGame, RestartGame, AutoComplete, OpenSharedGame };
Q_ENUM_NS(Kind)
} // namespace Confirmation

// What the message on show is: the toast shows refusals only to a player who wants them.
namespace Message {
Q_NAMESPACE
QML_ELEMENT
enum class Kind { None = -1, Hint, MoveFeedback, Notice };
Q_ENUM_NS(Kind)
} // namespace Message

// An arrow key, to the place drawn next in that direction.
namespace Focus {
Q_NAMESPACE
QML_ELEMENT
enum class Direction { Left, Right, Up, Down };
Q_ENUM_NS(Direction)
} // namespace Focus

} // namespace zelvaine
