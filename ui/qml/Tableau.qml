pragma ComponentBehavior: Bound
import QtQuick
import Zelvaine

// The ten columns side by side.
Row {
    id: tableau

    required property GameBoard board
    required property CardDragController drag
    required property BoardGeometry geometry
    required property real availableHeight

    // The bottom of the longest column's cards; the messages find room below it.
    readonly property real cardsHeight: {
        let lowest = 0;
        for (let c = 0; c < columns.count; ++c) {
            const column = columns.itemAt(c);
            if (column) lowest = Math.max(lowest, column.cardsHeight);
        }
        return lowest;
    }

    spacing: 12

    Repeater {
        id: columns
        model: 10
        TableauColumn {
            required property int index
            board: tableau.board
            drag: tableau.drag
            geometry: tableau.geometry
            columnIndex: index
            cardWidth: tableau.geometry.cardWidth
            availableHeight: tableau.availableHeight
        }
    }
}
