import QtQuick
import Zelvaine

// The dragged cards under the pointer, fanned 18 points apart, with their shadow. Only this
// follows the pointer; the board under it stays as it is.
Item {
    id: overlay

    required property CardDragController drag
    // Off at once, with no fade, when the win panel takes over the table.
    property bool shown: true

    readonly property real cardWidth: drag.cardWidth
    readonly property real cardHeight: cardWidth / 0.7
    readonly property point location: drag.dragPosition.location

    objectName: "dragOverlay"
    enabled: false
    Accessible.ignored: true
    visible: shown && opacity > 0 && drag.faces.length > 0
    // A new drag shows at once; an ended one settles away, unless it sprang home.
    states: State {
        name: "idle"
        when: !overlay.drag.active
        PropertyChanges { target: overlay; opacity: 0 }
    }
    transitions: Transition {
        to: "idle"
        enabled: overlay.drag.fadesOut
        NumberAnimation { property: "opacity"; duration: 120; easing.type: Easing.OutCubic }
    }

    Item {
        id: stack
        // On whole points, so that the cards are copied rather than filtered as they move.
        x: Math.round(overlay.location.x - overlay.cardWidth / 2)
        y: Math.round(overlay.location.y - overlay.cardHeight / 2)
        width: overlay.cardWidth
        height: overlay.cardHeight + 18 * Math.max(overlay.drag.faces.length - 1, 0)

        // A soft shadow below the stack, as if lifted off the felt.
        StackShadow {
            readonly property real spread: Math.max(16, 0.14 * overlay.cardWidth)
            x: -spread / 2
            y: Math.max(8, 0.065 * overlay.cardWidth) - spread / 2
            width: stack.width + spread
            height: stack.height + spread
            blur: spread
            cornerRadius: 0.12 * overlay.cardWidth
        }

        TableauCardCanvas {
            width: overlay.cardWidth
            height: stack.height
            faces: overlay.drag.faces
            cardWidth: overlay.cardWidth
            offset: 18
            shadows: false
        }
    }
}
