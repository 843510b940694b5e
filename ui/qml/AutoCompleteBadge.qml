import QtQuick
import Zelvaine

// Shown while the game finishes itself: the moves counting up, on a dark plate.
Rectangle {
    id: badge

    required property GameBoard board

    visible: board.autoCompleting
    width: row.implicitWidth + 36
    height: row.implicitHeight + 22
    radius: 14
    color: Qt.rgba(0, 0, 0, 0.72)
    Accessible.role: Accessible.StaticText
    // Out of a screen reader's reach while the game is not finishing itself.
    Accessible.ignored: !visible
    Accessible.name: qsTr("Auto-completing…") + " " + qsTr("%n moves", "", board.moveCount)

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 12
        Text {
            Accessible.ignored: true
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Auto-completing…")
            font.pixelSize: 12
            font.weight: Font.DemiBold
            color: Qt.rgba(1, 1, 1, 0.76)
        }
        Text {
            objectName: "autoCompleteMoveCount"
            Accessible.ignored: true
            text: qsTr("%n moves", "", badge.board.moveCount)
            font.pixelSize: 22
            font.bold: true
            color: "white"
        }
    }
}
