import QtQuick
import QtQuick.Window

// One card, face up: the printed face on off-white paper with rounded corners, its outline or
// selection border, an optional dark band along the top edge and an optional drop shadow.
Item {
    id: card

    property string face
    property string name
    property bool isSelected: false
    property bool compact: false
    property bool showsSelectionBorder: true
    property bool showsTopEdgeShadow: false

    readonly property real faceAspect: 0.688544052016317
    readonly property real faceWidth: Math.min(width, height * faceAspect)
    readonly property real faceHeight: faceWidth / faceAspect
    readonly property real cornerRadius: 0.11969818287523212 * faceWidth
    readonly property string accessibleValue: isSelected ? qsTr("Selected") : qsTr("Not selected")

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.selectable: true
    Accessible.selected: isSelected

    Item {
        id: body
        width: card.faceWidth
        height: card.faceHeight
        anchors.centerIn: parent

        // A soft shadow that rises slightly above the card, as light from below the screen would cast.
        Repeater {
            model: card.compact ? 0 : 3
            Rectangle {
                required property int index
                x: -(index + 1) * 0.014 * card.faceWidth
                y: -0.02992454571880803 * card.faceWidth - (index + 1) * 0.014 * card.faceWidth
                width: body.width - 2 * x
                height: body.height + (index + 1) * 0.028 * card.faceWidth
                radius: card.cornerRadius + (index + 1) * 0.014 * card.faceWidth
                color: Qt.rgba(0, 0, 0, 0.07)
            }
        }
        Rectangle {
            anchors.fill: parent
            radius: card.cornerRadius
            color: Qt.rgba(1, 0.996, 0.98, 1)
        }
        Image {
            anchors.fill: parent
            source: card.face ? "qrc:/cards/" + card.face + ".png" : ""
            fillMode: Image.PreserveAspectCrop
            // Decoded at the size it is drawn at, so that drawing it is a copy rather than a
            // filtered scaling on every frame: the software renderer would otherwise smooth-scale
            // every card under a moving one, on a pool of threads, for no visible gain.
            sourceSize.width: Math.min(360, Math.ceil(card.faceWidth * Screen.devicePixelRatio))
            smooth: false
            asynchronous: false
        }
        Rectangle {
            visible: card.showsTopEdgeShadow
            width: parent.width
            height: Math.max(0.055 * card.faceWidth, 4)
            radius: card.cornerRadius
            gradient: Gradient {
                GradientStop { position: 0; color: Qt.rgba(0, 0, 0, 0.3) }
                GradientStop { position: 0.5; color: Qt.rgba(0, 0, 0, 0.08) }
                GradientStop { position: 1; color: "transparent" }
            }
        }
        Rectangle {
            readonly property bool strong: card.isSelected && card.showsSelectionBorder
            anchors.fill: parent
            radius: card.cornerRadius
            color: "transparent"
            border.width: strong ? 3 : 0.8
            border.color: strong ? "#ffcc00" : Qt.rgba(0, 0, 0, 0.28)
        }
    }
}
