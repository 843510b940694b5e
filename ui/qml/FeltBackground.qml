import QtQuick
import QtQuick.Shapes

// The table's surface: a dark green gradient from the top-left to the bottom-right corner,
// under a soft green glow in the middle.
Shape {
    id: felt
    ShapePath {
        strokeWidth: -1
        fillGradient: LinearGradient {
            x1: 0; y1: 0; x2: felt.width; y2: felt.height
            GradientStop { position: 0; color: Qt.rgba(0.035, 0.2, 0.13, 1) }
            GradientStop { position: 1; color: Qt.rgba(0.015, 0.11, 0.075, 1) }
        }
        startX: 0; startY: 0
        PathLine { x: felt.width; y: 0 }
        PathLine { x: felt.width; y: felt.height }
        PathLine { x: 0; y: felt.height }
        PathLine { x: 0; y: 0 }
    }
    ShapePath {
        strokeWidth: -1
        fillGradient: RadialGradient {
            centerX: felt.width / 2; centerY: felt.height / 2; centerRadius: 680
            focalX: centerX; focalY: centerY; focalRadius: 20
            GradientStop { position: 0; color: Qt.rgba(0, 0.5, 0, 0.17) }
            GradientStop { position: 1; color: "transparent" }
        }
        startX: 0; startY: 0
        PathLine { x: felt.width; y: 0 }
        PathLine { x: felt.width; y: felt.height }
        PathLine { x: 0; y: felt.height }
        PathLine { x: 0; y: 0 }
    }
}
