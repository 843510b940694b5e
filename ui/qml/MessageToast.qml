import QtQuick

// The store's message as a short-lived bubble: hints and notices always, refusals only when
// the player wants move messages.
Rectangle {
    id: toast

    required property var board
    required property var preferences

    readonly property bool wanted: board.message.length > 0
                                   && (board.messageKind !== 1 || preferences.showsMoveMessages)

    objectName: "gameToast"
    visible: wanted
    width: Math.min(label.implicitWidth + 40, 640)
    height: label.implicitHeight + 20
    radius: height / 2
    color: Qt.rgba(0, 0, 0, 0.72)
    border.color: Qt.rgba(1, 1, 1, 0.18)
    Accessible.role: Accessible.StaticText
    Accessible.name: board.message

    Text {
        id: label
        anchors.centerIn: parent
        width: Math.min(implicitWidth, 600)
        wrapMode: Text.WordWrap
        horizontalAlignment: Text.AlignHCenter
        text: toast.board.message
        color: "white"
        font.pixelSize: 15
    }

    Timer {
        id: expiry
        interval: 4000
        onTriggered: toast.board.clearMessage()
    }
    Connections {
        target: toast.board
        function onMessageChanged() {
            expiry.stop();
            if (toast.board.message.length === 0) return;
            if (toast.board.messageKind === 1 && !toast.preferences.showsMoveMessages) {
                Qt.callLater(toast.board.clearMessage);
                return;
            }
            expiry.start();
        }
    }
}
