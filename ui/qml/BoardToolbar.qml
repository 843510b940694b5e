import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// The title, the move count and the game's commands above the table.
RowLayout {
    id: toolbar

    required property var board
    required property var preferences

    spacing: 10

    Column {
        Layout.fillWidth: true
        Text {
            text: "Zelvaine"
            font.pixelSize: 22
            font.weight: Font.Bold
            color: "white"
        }
        Text {
            text: qsTr("Two decks · build every suit from ace to king")
            font.pixelSize: 12
            color: Qt.rgba(1, 1, 1, 0.6)
        }
    }
    Text {
        objectName: "moveCount"
        text: qsTr("Moves: %1").arg(toolbar.board.moveCount)
        font.pixelSize: 14
        color: "white"
        Accessible.name: text
    }
    Button {
        text: qsTr("Undo")
        visible: toolbar.preferences.showsUndo
        enabled: toolbar.board.canUndo
        onClicked: toolbar.board.undo()
    }
    Button {
        text: qsTr("Redo")
        visible: toolbar.preferences.showsUndo
        enabled: toolbar.board.canRedo
        onClicked: toolbar.board.redo()
    }
    Button {
        text: qsTr("Hint")
        visible: toolbar.preferences.showsHint
        onClicked: toolbar.board.showHint()
    }
    Button {
        text: qsTr("New Game")
        onClicked: toolbar.board.newGame()
    }
}
