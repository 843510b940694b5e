import QtQuick
import Zelvaine

// One card, face up: the printed face on off-white paper with rounded corners, its outline or
// selection border, an optional dark band along the top edge and an optional drop shadow, all
// drawn as one finished picture.
Item {
    id: card

    property string face
    property string name
    property bool isSelected: false
    property bool compact: false
    property bool showsSelectionBorder: true
    property bool showsTopEdgeShadow: false

    readonly property string accessibleValue: isSelected ? qsTr("Selected") : qsTr("Not selected")

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.selectable: true
    Accessible.selected: isSelected

    TableauCardCanvas {
        // The card place that fits the space offered (0.7 as wide as it is high), centred.
        cardWidth: Math.min(card.width, card.height * 0.7)
        x: (card.width - cardWidth) / 2
        y: (card.height - cardWidth / 0.7) / 2
        width: cardWidth
        height: cardWidth / 0.7
        faces: card.face ? [card.face] : []
        shadows: !card.compact
        topBand: card.showsTopEdgeShadow
        selectionBorder: card.isSelected && card.showsSelectionBorder
    }
}
