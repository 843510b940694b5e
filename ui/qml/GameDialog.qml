import QtQuick
import QtQuick.Controls

// A question or notice over the board. The table behind it is dimmed well enough to read as
// out of reach while the dialog is up.
Dialog {
    modal: true
    Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.55)
    }
}
