import QtQuick

// The panel behind the hand or the foundations: a faint tinted card table with its title.
Item {
    id: panel

    property string title
    property string icon
    property color accent: "#ffd54a"
    // Room on either side of the cards: 10, or 20 for the landscape hand panel (card width + 40).
    property real sidePadding: 10
    default property alias content: body.data

    implicitWidth: body.implicitWidth + 2 * sidePadding
    implicitHeight: heading.height + 5 + body.implicitHeight + 20

    Rectangle {
        anchors.fill: parent
        radius: 12
        color: Qt.rgba(panel.accent.r, panel.accent.g, panel.accent.b, 0.055)
    }
    Row {
        id: heading
        x: 10
        y: 8
        spacing: 4
        // The icon files are drawn in the title's yellow; the opacity matches the title's.
        Image {
            source: panel.icon ? "qrc:/icons/mdi/area-" + panel.icon + ".svg" : ""
            sourceSize.width: 10
            sourceSize.height: 10
            opacity: 0.82
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            text: panel.title
            font.pixelSize: 11
            font.weight: Font.DemiBold
            font.letterSpacing: 1
            color: Qt.rgba(1, 0.84, 0.29, 0.82)
        }
    }
    Item {
        id: body
        x: panel.sidePadding
        y: heading.y + heading.height + 5
        implicitWidth: childrenRect.width
        implicitHeight: childrenRect.height
    }
}
