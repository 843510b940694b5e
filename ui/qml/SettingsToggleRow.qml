import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A setting that is on or off: its symbol, its title (and an optional explanation) and a switch
// whose accessible name is the title.
RowLayout {
    id: row

    property string title
    property string detail
    property string icon
    // The preference's value; the switch follows it.
    property bool checked
    property bool divided: false
    signal toggled(bool on)

    spacing: 12
    Layout.fillWidth: true
    Layout.topMargin: detail ? 4 : 7
    Layout.bottomMargin: detail ? 4 : 7

    Image {
        Layout.preferredWidth: 30
        Layout.alignment: Qt.AlignVCenter
        source: "qrc:/icons/mdi/" + row.icon + ".svg"
        sourceSize.width: 21
        sourceSize.height: 21
        fillMode: Image.Pad
        Accessible.ignored: true
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 3
        // The switch speaks for the row: its title is its name and the explanation its
        // description, so that a screen reader reads each with its switch, not as loose text.
        Label {
            Accessible.ignored: true
            text: row.title
            font.pixelSize: 14
            font.weight: Font.Medium
            color: "white"
        }
        Label {
            visible: row.detail !== ""
            Accessible.ignored: true
            text: row.detail
            font.pixelSize: 13
            color: Qt.rgba(1, 1, 1, 0.6)
            Layout.fillWidth: true
            wrapMode: Text.Wrap
        }
    }
    Item { Layout.fillWidth: true }
    Switch {
        id: toggle
        objectName: row.objectName + "Switch"
        Layout.alignment: Qt.AlignVCenter
        Accessible.name: row.title
        Accessible.description: row.detail
        checked: row.checked
        // A click and an assistive tool's Toggle both change the switch; only a change that did
        // not come from the preference goes back to it.
        onCheckedChanged: if (checked !== row.checked) row.toggled(checked)
        // A rounded track with a sliding knob: on or off reads at a glance on the dark sheet.
        indicator: Rectangle {
            implicitWidth: 42
            implicitHeight: 24
            x: toggle.leftPadding
            y: (toggle.height - height) / 2
            radius: height / 2
            color: toggle.checked ? toggle.palette.highlight : Qt.rgba(1, 1, 1, 0.18)
            border.width: toggle.visualFocus ? 2 : 0
            border.color: "white"
            Behavior on color { ColorAnimation { duration: 120 } }
            Rectangle {
                width: 20
                height: 20
                radius: 10
                y: 2
                x: toggle.checked ? parent.width - width - 2 : 2
                color: toggle.down ? "#dcdcd6" : "white"
                Behavior on x { NumberAnimation { duration: 120; easing.type: Easing.OutCubic } }
            }
        }
    }
}
