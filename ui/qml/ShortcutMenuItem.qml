import QtQuick
import QtQuick.Controls
import Zelvaine

// The content names its parts by id, which Qt 6.4's linter reports as building a deferred property
// early; here that is harmless.

// A menu command with its key beside it, right-aligned and dimmed, as desktop menus show them;
// Qt Quick's own menu item leaves the key out.
MenuItem {
    id: control

    readonly property string keyText: control.action ? KeyText.nativeText(control.action.shortcut) : ""
    // The palette follows the item's state, so a disabled command is drawn in the disabled colour.
    readonly property color textColour: control.down || control.highlighted ? control.palette.highlightedText
                                                                            : control.palette.text

    // Qt's menu items ignore an assistive tool's press; it is a click, through the command's
    // action when there is one, which also closes the menu.
    Accessible.onPressAction: {
        if (!control.enabled) return;
        if (control.action) control.action.trigger(control);
        else control.clicked();
    }

    contentItem: Item { // qmllint disable deferred-property-id
        implicitWidth: title.implicitWidth + (keys.text.length > 0 ? 36 + keys.implicitWidth : 0)
        implicitHeight: Math.max(title.implicitHeight, keys.implicitHeight)
        Text {
            id: title
            objectName: "menuItemTitle"
            anchors.left: parent.left
            anchors.right: keys.left
            anchors.rightMargin: keys.text.length > 0 ? 24 : 0
            anchors.verticalCenter: parent.verticalCenter
            text: control.text
            font: control.font
            color: control.textColour
            elide: Text.ElideRight
        }
        Text {
            id: keys
            objectName: "menuItemKeys"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: control.keyText
            font: control.font
            color: control.textColour
            opacity: control.highlighted ? 0.85 : 0.6
        }
    }
}
