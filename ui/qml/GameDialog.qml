import QtQuick
import QtQuick.Controls

// A question or notice over the board. The table behind it is dimmed well enough to read as
// out of reach while the dialog is up. Return takes the default answer and Escape cancels, as
// in every desktop dialog; the dialog holds the keyboard while it shows, so no key reaches the
// board behind it.
Dialog {
    id: dialog

    // Whether Return accepts (the default button is the accepting one) or only closes.
    property bool returnAccepts: true

    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.55)
    }

    // Whatever holds the keyboard inside the dialog (a button takes only Space), Return and
    // Enter answer it while it shows.
    Shortcut {
        sequences: ["Return", "Enter"]
        enabled: dialog.visible
        onActivated: dialog.returnAccepts ? dialog.accept() : dialog.reject()
    }
}
