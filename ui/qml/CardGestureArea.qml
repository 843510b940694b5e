import QtQuick
import Zelvaine

// The pointer on one card: a click is a tap, a right click asks for the card's menu, and a
// press that travels far enough becomes a drag of the card (or, on a blocked card, a nudge).
MouseArea {
    id: area

    required property CardDragController drag
    // A Place kind: a column's card, a hand slot or a foundation.
    required property int sourceKind
    required property int sourceIndex
    property int sourceCardIndex: 0
    property bool movable: true
    property real cardWidth: width

    signal tapped()
    signal menuRequested()
    signal blockedDragStarted()

    property point pressPoint
    property point lastPoint
    property bool dragging: false

    acceptedButtons: Qt.LeftButton | Qt.RightButton
    preventStealing: true

    function boardPoint(mouse) {
        return mapToItem(drag.boardItem, mouse.x, mouse.y);
    }

    onPressed: mouse => {
        dragging = false;
        if (mouse.button !== Qt.LeftButton) return;
        pressPoint = boardPoint(mouse);
        lastPoint = pressPoint;
    }
    onPositionChanged: mouse => {
        if (!(mouse.buttons & Qt.LeftButton)) return;
        const point = boardPoint(mouse);
        lastPoint = point;
        if (!dragging && !drag.isDragDistance(pressPoint, point)) return;
        dragging = true;
        if (movable)
            drag.handleDragChanged(sourceKind, sourceIndex, sourceCardIndex, point, pressPoint, cardWidth);
        else
            blockedDragStarted();
    }
    onReleased: mouse => {
        if (mouse.button === Qt.RightButton) {
            menuRequested();
            return;
        }
        if (dragging) {
            dragging = false;
            if (movable) drag.handleDragEnded(sourceKind, sourceIndex, sourceCardIndex, boardPoint(mouse));
            return;
        }
        if (containsMouse || (mouse.x >= 0 && mouse.y >= 0 && mouse.x <= width && mouse.y <= height)) tapped();
    }
    // A drag cut short (the window lost the pointer) ends where the pointer was last seen.
    onCanceled: {
        if (dragging && movable) drag.handleDragEnded(sourceKind, sourceIndex, sourceCardIndex, lastPoint);
        dragging = false;
    }
}
