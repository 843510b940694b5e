import QtQuick
import Zelvaine

// A hand slot or a foundation: its card, or the empty place; taps on either go to the board.
Item {
    id: place

    required property GameBoard board
    required property CardDragController drag
    // Place.Kind.Hand or Place.Kind.Foundation.
    required property int kind
    required property int index
    required property bool hasCard
    required property string face
    required property string name
    required property int pileSize

    readonly property bool isSelected: board.selectionKind === kind && board.selectionIndex === index
    readonly property bool isTarget: (kind === Place.Kind.Hand ? board.handTargets : board.foundationTargets)[index] === true
    readonly property string accessibleValue: hasCard ? card.accessibleValue : ""
    readonly property string accessibleHint: qsTr("Tap to select, double tap to play an unambiguous move, or drag")

    objectName: kind === Place.Kind.Hand ? (hasCard ? "hand-" + index : "hand-empty-" + index) : "foundation-" + index

    // A hand slot is one element, named by its card. A foundation reads as a column does: a list
    // named by its number that holds its top card, so that a screen reader tells what lies there.
    readonly property bool isFoundation: kind === Place.Kind.Foundation
    readonly property bool speaksForCard: !isFoundation || !hasCard
    Accessible.role: isFoundation ? Accessible.List : Accessible.Button
    Accessible.name: isFoundation ? qsTr("Foundation %1").arg(index + 1)
                                  : (hasCard ? name : qsTr("Empty hand slot %1").arg(index + 1))
    Accessible.description: isFoundation || hasCard ? accessibleHint : ""
    Accessible.selectable: hasCard && speaksForCard
    Accessible.selected: isSelected && speaksForCard
    Accessible.onPressAction: place.tap()
    Accessible.focusable: speaksForCard
    readonly property bool hasRing: board.focusKind === kind && board.focusIndex === index
    Accessible.focused: hasRing && speaksForCard
    // Where the ring is for a screen reader: the place, or a foundation's top card. A card that
    // arrives under the ring is a new element to announce.
    readonly property Item ringTarget: speaksForCard ? place : card
    function announceRing() {
        if (hasRing) AccessibleFocus.moveTo(ringTarget);
    }
    onHasRingChanged: announceRing()
    // Once the card's element exists, which the same change brings about.
    onFaceChanged: announceSoon.restart()
    Timer {
        id: announceSoon
        interval: 0
        onTriggered: place.announceRing()
    }
    Component.onCompleted: {
        drag.registerTarget(kind, index, place);
        announceRing();
    }

    function tap() {
        if (kind === Place.Kind.Hand) board.tapHand(index);
        else board.tapFoundation(index);
    }

    EmptyCardSlot {
        anchors.fill: parent
        visible: !place.hasCard
        highlighted: place.isTarget
        symbol: place.kind === Place.Kind.Foundation ? "A" : ""
    }
    CardView {
        id: card
        anchors.fill: parent
        // A hand slot speaks for its card: one element, not a button inside a button.
        Accessible.ignored: place.speaksForCard
        Accessible.description: place.accessibleHint
        Accessible.focusable: true
        Accessible.focused: place.hasRing
        Accessible.onPressAction: place.tap()
        visible: place.hasCard
        // A hand card that is being dragged leaves its slot looking empty.
        opacity: place.kind === Place.Kind.Hand && place.drag.sourceKind === Place.Kind.Hand && place.drag.sourceIndex === place.index ? 0 : 1
        face: place.face
        name: place.name
        isSelected: place.isSelected
        showsTopEdgeShadow: place.kind === Place.Kind.Foundation && place.pileSize > 1
    }
    DashedOutline {
        anchors.fill: parent
        visible: place.hasCard && place.isTarget
        lineWidth: 2.5
        radius: 0.11969818287523212 * width
        color: Qt.rgba(1, 0.8, 0, 0.9)
    }
    Rectangle {
        visible: place.board.focusKind === place.kind && place.board.focusIndex === place.index
        anchors.fill: parent
        anchors.margins: -4
        radius: 8
        color: "transparent"
        border.width: 2
        border.color: "#6ec6ff"
        Accessible.ignored: true
    }
    CardGestureArea {
        anchors.fill: parent
        drag: place.drag
        sourceKind: place.kind
        sourceIndex: place.index
        movable: place.hasCard
        onTapped: place.tap()
        onMenuRequested: {
            if (!place.hasCard) return;
            menu.active = true;
            (menu.item as SourceMoveMenu).popup();
        }
    }
    // From the keyboard: over the card, with its first command ready for Return.
    Connections {
        target: place.board
        function onMenuRequested(kind, index) {
            if (kind !== place.kind || index !== place.index) return;
            menu.active = true;
            (menu.item as SourceMoveMenu).popupForKeyboard(place, place.width / 2, place.height / 3);
        }
    }
    // Made on first use, as in the columns.
    // The menu, made by a Loader, reaches this file's ids; Qt 6.4 cannot load a component bound
    // to this file, and its linter asks for that binding.
    // qmllint disable unqualified
    Loader {
        id: menu
        active: false
        sourceComponent: SourceMoveMenu {
            board: place.board
            kind: place.kind
            index: place.index
        }
    }
    // qmllint enable unqualified
}
