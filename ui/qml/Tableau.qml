import QtQuick

// The ten columns side by side.
Row {
    id: tableau

    required property var board
    required property var drag
    required property var geometry
    required property real availableHeight

    spacing: 12

    Repeater {
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
