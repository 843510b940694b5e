import QtQuick
import Zelvaine

// One column of the tableau: its cards fanned to fit the height offered, the selection outline,
// and the taps on its cards and on the table below them.
Item {
    id: column

    required property GameBoard board
    required property CardDragController drag
    required property BoardGeometry geometry
    required property int columnIndex
    required property real cardWidth
    required property real availableHeight

    readonly property CardListModel cards: board.columnCards(columnIndex)
    readonly property int count: cards.count
    readonly property real cardHeight: cardWidth / 0.7
    readonly property real offset: geometry.columnOffset(count, cardWidth, availableHeight)
    readonly property bool isTarget: board.columnTargets[columnIndex] === true
    // Cards from here down are in the drag overlay; -1 while none of this column's are.
    readonly property int draggedStart: drag.sourceKind === Place.Kind.Column && drag.sourceIndex === columnIndex
                                        ? drag.sourceCardIndex : -1
    readonly property int selectedStart: board.selectionKind === Place.Kind.Column && board.selectionIndex === columnIndex
                                         ? board.selectionCardIndex : -1

    // How far down the cards reach; the column itself also answers taps below them.
    readonly property real cardsHeight: cardHeight + offset * Math.max(count - 1, 0)

    width: cardWidth
    height: Math.max(availableHeight, cardsHeight)
    objectName: "column-" + columnIndex

    Component.onCompleted: drag.registerTarget(Place.Kind.Column, columnIndex, column)

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Column %1, %2 cards").arg(columnIndex + 1).arg(count)
    // An empty column has no card to hold the keyboard's ring: the column itself has it.
    readonly property bool hasRing: board.focusKind === Place.Kind.Column && board.focusIndex === columnIndex && count === 0
    Accessible.focusable: count === 0
    Accessible.focused: hasRing
    onHasRingChanged: if (hasRing) AccessibleFocus.moveTo(column)
    // Pressed as a whole, the column is a destination, as a tap on the table below its cards.
    Accessible.onPressAction: column.board.tapColumn(column.columnIndex)

    // The table under and below the cards names the column as a destination.
    MouseArea {
        anchors.fill: parent
        onClicked: column.board.tapColumn(column.columnIndex)
    }

    EmptyCardSlot {
        visible: column.count === 0
        width: column.cardWidth
        height: column.cardHeight
        highlighted: column.isTarget
    }

    // The cards, drawn in one pass; a card under the pointer or shaking is the canvas's to show.
    TableauCardCanvas {
        id: canvas
        objectName: "cards-" + column.columnIndex
        width: column.cardWidth
        height: column.cardsHeight
        faces: column.cards.faces
        cardWidth: column.cardWidth
        offset: column.offset
        hiddenFrom: column.draggedStart
    }

    // Each card's place for the pointer and for assistive technology: its visible strip (the
    // last card all of itself), named and described, drawing nothing.
    // Components made by a Loader or a Repeater here reach this file's ids; Qt 6.4 cannot load
    // components bound to this file, and its linter asks for that binding.
    // qmllint disable unqualified
    Repeater {
        model: column.cards
        delegate: Item {
            id: cardPlace
            required property int index
            required property bool movable
            required property string name
            readonly property bool isSelected: column.selectedStart >= 0 && index >= column.selectedStart
            readonly property string accessibleValue: isSelected ? qsTr("Selected") : qsTr("Not selected")

            readonly property bool isLast: index === column.count - 1
            readonly property string accessibleHint: movable
                ? qsTr("Tap to select, double tap to play an unambiguous move, or drag this card and its valid string")
                : qsTr("This card is blocked")

            objectName: "tableau-" + column.columnIndex + "-" + index
            y: index * column.offset
            width: column.cardWidth
            height: isLast ? column.cardHeight : column.offset
            Accessible.role: Accessible.Button
            Accessible.name: name
            Accessible.description: accessibleHint
            Accessible.selectable: true
            Accessible.selected: isSelected
            // The keyboard's ring is the screen reader's focus too; a card rebuilt under the ring
            // (after a move) is a new element to announce.
            readonly property bool hasRing: column.board.focusKind === Place.Kind.Column && column.board.focusIndex === column.columnIndex
                                            && column.board.focusCardIndex === index
            Accessible.focusable: true
            Accessible.focused: hasRing
            onHasRingChanged: if (hasRing) AccessibleFocus.moveTo(cardPlace)
            Component.onCompleted: if (hasRing) AccessibleFocus.moveTo(cardPlace)
            // An assistive tool's press is the player's tap.
            Accessible.onPressAction: column.board.tapTableauCard(column.columnIndex, cardPlace.index)

            CardGestureArea {
                anchors.fill: parent
                drag: column.drag
                sourceKind: Place.Kind.Column
                sourceIndex: column.columnIndex
                sourceCardIndex: cardPlace.index
                movable: cardPlace.movable
                cardWidth: column.cardWidth
                onTapped: column.board.tapTableauCard(column.columnIndex, cardPlace.index)
                onBlockedDragStarted: canvas.nudge(cardPlace.index)
                onMenuRequested: {
                    if (!cardPlace.movable) return;
                    column.openMenu(cardPlace.index, false);
                }
            }
        }
    }
    // qmllint enable unqualified

    // The legal destination mark over the lowest card.
    DashedOutline {
        visible: column.isTarget && column.count > 0
        y: (column.count - 1) * column.offset
        width: column.cardWidth
        height: column.cardHeight
        z: 1000
        lineWidth: 2.5
        radius: 0.11969818287523212 * column.cardWidth
        color: Qt.rgba(1, 0.8, 0, 0.9)
    }

    Rectangle {
        visible: column.selectedStart >= 0 && column.selectedStart < column.count
        y: column.selectedStart * column.offset
        width: column.cardWidth
        height: column.cardHeight + column.offset * (column.count - column.selectedStart - 1)
        z: 1001
        radius: column.geometry.selectionRadius(column.cardWidth)
        color: "transparent"
        border.width: 3
        border.color: "#ffcc00"
        Accessible.ignored: true
    }

    // The keyboard's focus ring, around the focused card's visible strip.
    Rectangle {
        readonly property bool shown: column.board.focusKind === Place.Kind.Column && column.board.focusIndex === column.columnIndex
        readonly property bool last: column.board.focusCardIndex >= column.count - 1
        visible: shown
        x: -4
        y: (column.count === 0 ? 0 : column.board.focusCardIndex * column.offset) - 4
        width: column.cardWidth + 8
        height: (last ? column.cardHeight : column.offset) + 8
        z: 1002
        radius: 8
        color: "transparent"
        border.width: 2
        border.color: "#6ec6ff"
        Accessible.ignored: true
    }

    // A card's menu of moves: at the pointer, or for the keyboard over the card's strip with its
    // first command ready for Return.
    function openMenu(cardIndex, atCard) {
        menu.active = true;
        const moves = menu.item as SourceMoveMenu;
        moves.cardIndex = cardIndex;
        if (atCard) moves.popupForKeyboard(column, column.cardWidth / 2, (cardIndex + 0.5) * column.offset);
        else moves.popup();
    }
    Connections {
        target: column.board
        function onMenuRequested(kind, index, cardIndex) {
            if (kind === Place.Kind.Column && index === column.columnIndex) column.openMenu(cardIndex, true);
        }
    }

    // Made on first use: a menu for every place would slow the start for nothing.
    // qmllint disable unqualified
    Loader {
        id: menu
        active: false
        sourceComponent: SourceMoveMenu {
            board: column.board
            kind: Place.Kind.Column
            index: column.columnIndex
        }
    }
    // qmllint enable unqualified
}
