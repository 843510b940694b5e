import QtQuick
import Zelvaine

// The store's question, over the board: new game, restart, automatic finish or opening a file.
QuestionDialog {
    required property GameBoard board

    objectName: "confirmation"
    visible: board.confirmation !== Confirmation.Kind.None
    title: board.confirmationTitle
    message: board.confirmationMessage
    confirmText: board.confirmText
    cancelText: board.cancelText
    confirmName: "confirmationConfirm"
    cancelName: "confirmationCancel"
    onAccepted: board.confirm()
    onRejected: board.dismissConfirmation()
}
