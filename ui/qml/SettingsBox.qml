import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// One grouped box of the settings: a headline with its symbol over a rounded panel.
ColumnLayout {
    id: box

    property string title
    property string icon
    default property alias content: rows.data

    spacing: 8
    Layout.fillWidth: true
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    RowLayout {
        spacing: 7
        Image {
            source: "qrc:/icons/mdi/" + box.icon + ".svg"
            sourceSize.width: 17
            sourceSize.height: 17
            Accessible.ignored: true
        }
        Label {
            text: box.title
            font.pixelSize: 15
            font.weight: Font.DemiBold
            color: "white"
        }
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: rows.implicitHeight + 20
        radius: 10
        color: Qt.rgba(1, 1, 1, 0.06)
        ColumnLayout {
            id: rows
            x: 12
            y: 10
            width: parent.width - 24
            spacing: 0
        }
    }
}
