import QtQuick

// The store's message for a few seconds: hints and notices always, refusals only when the
// player wants move messages. A newer message starts its own four seconds.
Rectangle {
    id: toast

    required property var board
    required property var preferences

    property string shown
    // The text stays on the plate while the plate fades out, so that no empty plate is left.
    property string displayed
    // Hidden for an instant to be announced again: a screen reader speaks a notification as it
    // appears, and the same refusal twice, or a new text while the old one fades, appears only once.
    property bool reannouncing: false

    onShownChanged: if (shown.length > 0) displayed = shown

    function announce() {
        if (!visible) return;
        reannouncing = true;
        reannouncing = false;
    }

    objectName: "gameToast"
    opacity: shown.length > 0 ? 1 : 0
    visible: opacity > 0 && !reannouncing
    width: Math.min(label.implicitWidth, 580) + 40
    height: label.implicitHeight + 26
    radius: 14
    color: Qt.rgba(0, 0, 0, 0.42)
    // A notification: a screen reader speaks it as it appears, wherever the player's focus is.
    Accessible.role: Accessible.Notification
    // Nameless while no message is on show: a fading or hidden plate says nothing.
    Accessible.name: shown.length > 0 ? qsTr("Game message: %1").arg(displayed) : ""

    // It rises into place as it fades in, and sinks as it fades out.
    Behavior on opacity { NumberAnimation { duration: 320; easing.type: Easing.OutCubic } }
    transform: Translate {
        y: toast.shown.length > 0 ? 0 : 18
        Behavior on y { NumberAnimation { duration: 320; easing.type: Easing.OutCubic } }
    }

    Text {
        id: label
        Accessible.ignored: true
        anchors.centerIn: parent
        width: Math.min(implicitWidth, 580)
        wrapMode: Text.WordWrap
        horizontalAlignment: Text.AlignHCenter
        text: toast.displayed
        color: "white"
        font.pixelSize: 15
    }

    Timer {
        id: expiry
        interval: 4000
        onTriggered: {
            if (toast.board.message === toast.shown) {
                toast.shown = "";
                toast.board.clearMessage();
            }
        }
    }
    Connections {
        target: toast.board
        function onMessageChanged() {
            expiry.stop();
            const message = toast.board.message;
            if (toast.board.messageKind === 1 && !toast.preferences.showsMoveMessages) {
                toast.shown = "";
                if (message.length > 0) {
                    Qt.callLater(() => {
                        if (!toast.preferences.showsMoveMessages && toast.board.messageKind === 1
                                && toast.board.message === message)
                            toast.board.clearMessage();
                    });
                }
                return;
            }
            toast.shown = message;
            if (message.length > 0) {
                expiry.start();
                // Once, however many of the store's properties the message changed.
                Qt.callLater(toast.announce);
            }
        }
    }
}
