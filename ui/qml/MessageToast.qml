import QtQuick
import Zelvaine

// The store's message on a plate for a few seconds; GameToast decides which and how long.
Rectangle {
    id: toast

    required property GameBoard board
    required property PreferencesModel preferences

    // The text on show, as the toast's rules decide; empty while the toast is away.
    readonly property string shown: policy.text
    // The text stays on the plate while the plate fades out, so that no empty plate is left.
    property string displayed
    // Hidden for an instant to be announced again: a screen reader speaks a notification as it
    // appears, and the same refusal twice, or a new text while the old one fades, appears only once.
    property bool reannouncing: false

    onShownChanged: if (shown.length > 0) displayed = shown

    // The widest the text may run before it wraps; the board narrows it to fit beside the toolbar.
    property real textWidthLimit: wideTextWidth
    readonly property real wideTextWidth: 580
    // The plate's height with the text wrapped at its widest and at `narrowTextWidth`, for the board
    // to choose a place before the toast takes one.
    property real narrowTextWidth: wideTextWidth
    readonly property real wideHeight: wideLayout.height + 26
    readonly property real narrowHeight: narrowLayout.height + 26
    // Over the toolbar's buttons a see-through plate would mix its text with theirs: it turns as
    // dark as it looks on the felt, and a click on it dismisses it instead of pressing what it hides.
    property bool coversControls: false

    GameToast {
        id: policy
        board: toast.board
        preferences: toast.preferences
        onArrived: {
            if (!toast.visible) return;
            toast.reannouncing = true;
            toast.reannouncing = false;
        }
    }

    objectName: "gameToast"
    opacity: shown.length > 0 ? 1 : 0
    visible: opacity > 0 && !reannouncing
    width: Math.min(label.implicitWidth, textWidthLimit) + 40
    height: label.implicitHeight + 26
    radius: 14
    color: coversControls ? Qt.rgba(0.02, 0.11, 0.07, 0.97) : Qt.rgba(0, 0, 0, 0.42)
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

    MouseArea {
        anchors.fill: parent
        enabled: toast.coversControls
        onClicked: toast.board.clearMessage()
    }

    Text {
        id: label
        Accessible.ignored: true
        anchors.centerIn: parent
        width: Math.min(implicitWidth, toast.textWidthLimit)
        wrapMode: Text.WordWrap
        horizontalAlignment: Text.AlignHCenter
        text: toast.displayed
        color: "white"
        font.pixelSize: 15
    }
    Text {
        id: wideLayout
        visible: false
        width: toast.wideTextWidth
        wrapMode: label.wrapMode
        text: label.text
        font: label.font
    }
    Text {
        id: narrowLayout
        visible: false
        width: toast.narrowTextWidth
        wrapMode: label.wrapMode
        text: label.text
        font: label.font
    }
}
