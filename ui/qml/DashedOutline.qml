import QtQuick
import QtQuick.Shapes

// A rounded rectangle's outline in dashes of 6 on and 5 off, drawn inside its edge.
Shape {
    id: outline

    property real lineWidth: 1
    property color color: "white"
    property real radius: 8

    readonly property real inset: lineWidth / 2
    readonly property real r: Math.min(radius, width / 2, height / 2)

    ShapePath {
        strokeWidth: outline.lineWidth
        strokeColor: outline.color
        fillColor: "transparent"
        strokeStyle: ShapePath.DashLine
        // Dash lengths are counted in line widths.
        dashPattern: [6 / outline.lineWidth, 5 / outline.lineWidth]
        capStyle: ShapePath.FlatCap
        joinStyle: ShapePath.MiterJoin
        startX: outline.inset + outline.r
        startY: outline.inset
        PathLine { x: outline.width - outline.inset - outline.r; y: outline.inset }
        PathArc { x: outline.width - outline.inset; y: outline.inset + outline.r; radiusX: outline.r; radiusY: outline.r }
        PathLine { x: outline.width - outline.inset; y: outline.height - outline.inset - outline.r }
        PathArc { x: outline.width - outline.inset - outline.r; y: outline.height - outline.inset; radiusX: outline.r; radiusY: outline.r }
        PathLine { x: outline.inset + outline.r; y: outline.height - outline.inset }
        PathArc { x: outline.inset; y: outline.height - outline.inset - outline.r; radiusX: outline.r; radiusY: outline.r }
        PathLine { x: outline.inset; y: outline.inset + outline.r }
        PathArc { x: outline.inset + outline.r; y: outline.inset; radiusX: outline.r; radiusY: outline.r }
    }
}
