pragma ComponentBehavior: Bound
import QtQuick
import Zelvaine

// The four hand slots, in a row under the tableau or stacked in the side panel.
AreaPanel {
    id: area

    required property GameBoard board
    required property CardDragController drag
    required property real cardWidth
    property bool vertical: false

    title: qsTr("HAND")
    icon: "hand-back-right"
    accent: "#7fc8ff"
    sidePadding: vertical ? 20 : 10

    Grid {
        columns: area.vertical ? 1 : 4
        spacing: 12
        Repeater {
            model: area.board.hand
            delegate: PlaceSlot {
                board: area.board
                drag: area.drag
                kind: Place.Kind.Hand
                width: area.cardWidth
                height: area.cardWidth / 0.7
            }
        }
    }
}
