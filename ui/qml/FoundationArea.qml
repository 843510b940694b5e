pragma ComponentBehavior: Bound
import QtQuick
import Zelvaine

// The eight foundations in a row, each showing its top card.
AreaPanel {
    id: area

    required property GameBoard board
    required property CardDragController drag
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
                kind: Place.Kind.Foundation
                width: area.cardWidth
                height: area.cardWidth / 0.7
            }
        }
    }
}
