import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A link drawn as text with its symbol, opened by click, Return or Space.
AbstractButton {
    id: link

    property string iconName

    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    signal activated()
    onClicked: activated()
    Accessible.role: Accessible.Link
    Accessible.name: text
    Accessible.onPressAction: clicked()

    contentItem: RowLayout {
        spacing: 5
        Image {
            source: "qrc:/icons/mdi/" + link.iconName + ".svg"
            sourceSize.width: 14
            sourceSize.height: 14
            Accessible.ignored: true
        }
        Label {
            Accessible.ignored: true
            text: link.text
            color: "#64d2ff"
            font.underline: link.hovered || link.visualFocus
        }
    }
    HoverHandler { cursorShape: Qt.PointingHandCursor }
}
