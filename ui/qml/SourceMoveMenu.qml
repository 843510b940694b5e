pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Zelvaine

// The moves of one source by name. Foundation cards only go back to a column.
// The id is not `menu`: inside a MenuItem that name is the item's own `menu` property.
Menu {
    id: sourceMenu

    required property GameBoard board
    property int kind: Place.Kind.Column
    property int index: 0
    property int cardIndex: 0

    // The keyboard goes back where it was when the menu closes, so that the arrows move the
    // board's focus again.
    property Item returnFocus: null
    onAboutToShow: returnFocus = (parent as Item)?.Window.activeFocusItem ?? null
    onClosed: {
        if (returnFocus) returnFocus.forceActiveFocus();
        returnFocus = null;
    }

    // Opened by the keyboard over `place`: its first command that can be chosen is ready for
    // Return, and the arrows walk the rest.
    function popupForKeyboard(place: Item, x: real, y: real) {
        popup(place, x, y);
        for (let i = 0; i < count; ++i) {
            const entry = itemAt(i);
            if (entry && entry.visible && entry.enabled) {
                currentIndex = i;
                return;
            }
        }
    }

    MenuItem {
        objectName: "menuMoveToFoundation"
        text: qsTr("Move to Foundation")
        visible: sourceMenu.kind !== Place.Kind.Foundation
        height: visible ? implicitHeight : 0
        enabled: sourceMenu.kind !== Place.Kind.Foundation
                 && sourceMenu.board.canMoveToAnyFoundation(sourceMenu.kind, sourceMenu.index, sourceMenu.cardIndex)
        onTriggered: sourceMenu.board.moveToFoundation(sourceMenu.kind, sourceMenu.index, sourceMenu.cardIndex)
    }
    MenuItem {
        objectName: "menuMoveToHand"
        text: qsTr("Move to Hand")
        visible: sourceMenu.kind !== Place.Kind.Foundation
        height: visible ? implicitHeight : 0
        enabled: sourceMenu.kind !== Place.Kind.Foundation
                 && sourceMenu.board.canMoveToHand(sourceMenu.kind, sourceMenu.index, sourceMenu.cardIndex)
        onTriggered: sourceMenu.board.moveToHand(sourceMenu.kind, sourceMenu.index, sourceMenu.cardIndex)
    }
    Menu {
        objectName: "menuMoveToColumn"
        title: qsTr("Move to Column")
        Repeater {
            model: 10
            MenuItem {
                required property int index
                objectName: "menuColumn-" + index
                text: qsTr("Column %1").arg(index + 1)
                // Columns that cannot take the cards stay listed; choosing one says why not.
                onTriggered: sourceMenu.board.moveToColumn(sourceMenu.kind, sourceMenu.index,
                                                           sourceMenu.cardIndex, index)
            }
        }
    }
}
