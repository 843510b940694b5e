import QtQuick
import QtQuick.Controls
import Zelvaine

ApplicationWindow {
    id: window

    required property var board
    required property var preferences

    width: 1280
    height: 860
    minimumWidth: 720
    minimumHeight: 560
    visible: true
    title: "Zelvaine"
    color: "#08331f"

    GameView {
        anchors.fill: parent
        board: window.board
        preferences: window.preferences
    }
}
