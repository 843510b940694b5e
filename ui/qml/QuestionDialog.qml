import QtQuick
import QtQuick.Controls

// Qt 6.4's linter does not know DialogButtonBox's roles: the lines that name them say so.

// A question over the board with two answers: the one that acts, which has the keyboard as the
// question appears so that a screen reader reads the question with it at once, and Cancel.
GameDialog {
    id: dialog

    property string message
    property string confirmText
    property string cancelText: qsTr("Cancel")
    // For tests and assistive tools to find the answers by.
    property string confirmName
    property string cancelName

    anchors.centerIn: parent

    Label {
        text: dialog.message
        wrapMode: Text.WordWrap
        width: Math.min(420, implicitWidth)
    }

    footer: DialogButtonBox {
        Button {
            objectName: dialog.cancelName
            text: dialog.cancelText
            DialogButtonBox.buttonRole: DialogButtonBox.RejectRole // qmllint disable type
            Accessible.onPressAction: clicked()
        }
        Button {
            id: confirmButton
            objectName: dialog.confirmName
            text: dialog.confirmText
            highlighted: true
            DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole // qmllint disable type
            Accessible.onPressAction: clicked()
        }
    }
    onOpened: confirmButton.forceActiveFocus()
}
