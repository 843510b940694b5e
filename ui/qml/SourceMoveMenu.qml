import QtQuick
import QtQuick.Controls

// The moves of one source by name. Foundation cards only go back to a column.
Menu {
    id: menu

    required property var board
    property int kind: 0
    property int index: 0
    property int cardIndex: 0

    MenuItem {
        objectName: "menuMoveToFoundation"
        text: qsTr("Move to Foundation")
        visible: menu.kind !== 2
        height: visible ? implicitHeight : 0
        enabled: menu.kind !== 2 && menu.board.canMoveToAnyFoundation(menu.kind, menu.index, menu.cardIndex)
        onTriggered: menu.board.moveToFoundation(menu.kind, menu.index, menu.cardIndex)
    }
    MenuItem {
        objectName: "menuMoveToHand"
        text: qsTr("Move to Hand")
        visible: menu.kind !== 2
        height: visible ? implicitHeight : 0
        enabled: menu.kind !== 2 && menu.board.canMoveToHand(menu.kind, menu.index, menu.cardIndex)
        onTriggered: menu.board.moveToHand(menu.kind, menu.index, menu.cardIndex)
    }
    Menu {
        title: qsTr("Move to Column")
        Repeater {
            model: 10
            MenuItem {
                required property int index
                objectName: "menuColumn-" + index
                text: qsTr("Column %1").arg(index + 1)
                onTriggered: menu.board.moveToColumn(menu.kind, menu.index, menu.cardIndex, index)
            }
        }
    }
}
