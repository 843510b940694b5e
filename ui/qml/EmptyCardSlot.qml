import QtQuick

// A place that can hold a card but is empty: a dark rounded fill with a dashed border, bright
// when the selected cards may go there.
Item {
    id: slot

    property string symbol
    property bool highlighted: false

    readonly property real slotWidth: Math.min(width, height * 0.7)
    readonly property real slotHeight: slotWidth / 0.7

    Rectangle {
        id: fill
        width: slot.slotWidth
        height: slot.slotHeight
        anchors.centerIn: parent
        radius: 8
        color: Qt.rgba(0, 0, 0, 0.16)
    }
    DashedOutline {
        x: fill.x
        y: fill.y
        width: fill.width
        height: fill.height
        lineWidth: slot.highlighted ? 2.5 : 1
        color: slot.highlighted ? Qt.rgba(1, 0.8, 0, 0.9) : Qt.rgba(1, 1, 1, 0.28)
    }
    Text {
        anchors.centerIn: fill
        visible: slot.symbol.length > 0
        text: slot.symbol
        font.pixelSize: 30
        font.weight: Font.Light
        color: Qt.rgba(1, 1, 1, 0.16)
    }
}
