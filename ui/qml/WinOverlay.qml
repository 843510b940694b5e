import QtQuick
import QtQuick.Controls
import Zelvaine

// Shown while the position is won: the table dimmed, and the praise for this finish.
Item {
    id: overlay

    required property GameBoard board

    objectName: "winOverlay"
    visible: board.won

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0, 0, 0, 0.64)
    }
    // The dimmed table takes no taps while the panel is up, and the toolbar under it does not
    // light up as the pointer passes.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
    }
    Rectangle {
        anchors.centerIn: parent
        width: Math.min(column.implicitWidth, 620) + 80
        height: column.implicitHeight + 80
        radius: 24
        color: Qt.rgba(0.12, 0.14, 0.13, 0.86)
        // Announced as it appears: the praise is the news.
        Accessible.role: Accessible.Notification
        // Nameless while nothing is won, when the panel is hidden.
        Accessible.name: overlay.board.won
                         ? qsTr("Zelvaine Complete: %1 %2").arg(overlay.board.winMessage).arg(overlay.board.winSummary) : ""
        border.color: Qt.rgba(1, 1, 1, 0.12)

        Column {
            id: column
            anchors.centerIn: parent
            width: Math.min(implicitWidth, 620)
            spacing: 16
            Image {
                anchors.horizontalCenter: parent.horizontalCenter
                source: "qrc:/icons/mdi/crown.svg"
                sourceSize.width: 64
                sourceSize.height: 64
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Zelvaine Complete")
                font.pixelSize: 32
                font.bold: true
                color: "white"
            }
            Text {
                objectName: "winMessage"
                width: Math.min(implicitWidth, 620)
                anchors.horizontalCenter: parent.horizontalCenter
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
                text: overlay.board.winMessage
                font.pixelSize: 20
                font.weight: Font.DemiBold
                color: "#f5c542"
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: overlay.board.winSummary
                font.pixelSize: 15
                color: Qt.rgba(1, 1, 1, 0.8)
            }
            Button {
                id: playAgain
                objectName: "playAgain"
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Play Again")
                topPadding: 10
                bottomPadding: 10
                leftPadding: 28
                rightPadding: 28
                font.pixelSize: 16
                font.weight: Font.DemiBold
                onClicked: overlay.board.newGame()
                Accessible.onPressAction: clicked()
                Accessible.ignored: !overlay.visible
                // Prominent: the one thing to do next.
                contentItem: Text {
                    text: playAgain.text
                    font: playAgain.font
                    color: "black"
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
                background: Rectangle {
                    radius: 10
                    color: playAgain.down ? "#d9a92e" : playAgain.hovered ? "#ffd45c" : "#f5c542"
                    border.width: playAgain.visualFocus ? 2 : 0
                    border.color: "white"
                }
            }
        }
    }
}
