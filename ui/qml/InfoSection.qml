import QtQml

// One section of an information screen: an optional header, its paragraphs and an optional link.
QtObject {
    property string header
    property list<string> paragraphs
    // The small print, drawn dimmer.
    property bool secondary: false
    property string linkText
    property url linkUrl
}
