import QtQuick
import QtQuick.Controls
import Zelvaine

// Qt 6.4's linter does not know DialogButtonBox's roles: the lines that name them say so.

// The store's question, over the board: new game, restart, automatic finish or opening a file.
GameDialog {
    id: dialog

    required property GameBoard board

    objectName: "confirmation"
    anchors.centerIn: parent
    visible: board.confirmation !== Confirmation.Kind.None
    title: board.confirmationTitle

    Label {
        text: dialog.board.confirmationMessage
        wrapMode: Text.WordWrap
        width: Math.min(420, implicitWidth)
    }

    footer: DialogButtonBox {
        Button {
            objectName: "confirmationCancel"
            text: dialog.board.cancelText
            DialogButtonBox.buttonRole: DialogButtonBox.RejectRole // qmllint disable type
            Accessible.onPressAction: clicked()
        }
        Button {
            id: confirmButton
            objectName: "confirmationConfirm"
            text: dialog.board.confirmText
            highlighted: true
            DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole // qmllint disable type
            Accessible.onPressAction: clicked()
        }
    }
    // The answer Return gives has the keyboard as the question appears, so that a screen reader
    // reads the question with it at once rather than after a Tab.
    onOpened: confirmButton.forceActiveFocus()
    onAccepted: board.confirm()
    onRejected: board.dismissConfirmation()
}
