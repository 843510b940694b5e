import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// One figure of the statistics: a captioned value on a rounded tile.
Rectangle {
    id: tile

    property string title
    property string icon
    property string value

    Layout.fillWidth: true
    Layout.preferredWidth: 1
    implicitHeight: column.implicitHeight + 24
    radius: 8
    color: Qt.rgba(1, 1, 1, 0.08)
    Accessible.role: Accessible.StaticText
    Accessible.name: title + ": " + value

    ColumnLayout {
        id: column
        x: 12
        y: 12
        width: parent.width - 24
        spacing: 8
        RowLayout {
            spacing: 4
            Image {
                source: "qrc:/icons/mdi/" + tile.icon + ".svg"
                sourceSize.width: 12
                sourceSize.height: 12
                opacity: 0.6
                Accessible.ignored: true
            }
            Label {
                Accessible.ignored: true
                text: tile.title
                font.pixelSize: 12
                color: Qt.rgba(1, 1, 1, 0.6)
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }
        Label {
            objectName: tile.objectName + "Value"
            // The tile reads as one: its title and value.
            Accessible.ignored: true
            text: tile.value
            font.pixelSize: 22
            font.weight: Font.DemiBold
            color: "white"
            Layout.fillWidth: true
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 16
        }
    }
}
