import QtQuick
import QtQuick.Controls

// One toolbar command: its icon, and its title unless the window is narrow.
ToolButton {
    id: button

    property string iconName
    property bool isCompact: false

    display: isCompact ? AbstractButton.IconOnly : AbstractButton.TextBesideIcon
    icon.source: iconName ? "qrc:/icons/mdi/" + iconName + ".svg" : ""
    icon.width: 18
    icon.height: 18
    icon.color: "transparent"
    palette.buttonText: "white"
    opacity: enabled ? 1 : 0.45
    // As the desktop's toolbars do, a click leaves the keyboard where it was: Space after a click
    // on Undo plays the ringed card rather than undoing again.
    focusPolicy: Qt.TabFocus
    Accessible.name: text
    // A command the preferences hide is not there for a screen reader either.
    Accessible.ignored: !visible
    // Qt's buttons ignore an assistive tool's press; it is a click.
    Accessible.onPressAction: if (enabled) clicked()
    // Return presses the button the Tab key lit, as Space does, rather than reaching the table.
    Keys.onReturnPressed: if (enabled) clicked()
    Keys.onEnterPressed: if (enabled) clicked()
    ToolTip.visible: isCompact && hovered
    ToolTip.text: text
}
