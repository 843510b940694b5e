pragma ComponentBehavior: Bound
import QtQuick

// The eight foundations in a row, each showing its top card.
AreaPanel {
    id: area

    required property var board
    required property var drag
    required property real cardWidth

    title: qsTr("FOUNDATIONS")
    icon: "layers-triple"
    accent: "#ffd54a"

    Row {
        spacing: 12
        Repeater {
            model: area.board.foundations
            delegate: PlaceSlot {
                board: area.board
                drag: area.drag
                kind: 2
                width: area.cardWidth
                height: area.cardWidth / 0.7
            }
        }
    }
}
