pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A read-only screen inside the settings window: a back control, a title and sections of text,
// each with an optional header and link.
Item {
    id: screen

    property string title
    property list<InfoSection> sections
    signal back()

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 12
            Button {
                objectName: "infoBackButton"
                text: qsTr("Settings")
                icon.source: "qrc:/icons/mdi/arrow-left.svg"
                flat: true
                palette.buttonText: "white"
                onClicked: screen.back()
                Accessible.onPressAction: clicked()
            }
            Label {
                text: screen.title
                font.pixelSize: 17
                font.weight: Font.DemiBold
                color: "white"
                horizontalAlignment: Text.AlignHCenter
                Layout.fillWidth: true
                Layout.rightMargin: 90
            }
        }
        Rectangle { Layout.fillWidth: true; height: 1; color: Qt.rgba(1, 1, 1, 0.12) }

        ScrollView {
            id: scroller
            Layout.fillWidth: true
            Layout.fillHeight: true
            contentWidth: availableWidth
            ColumnLayout {
                width: scroller.availableWidth
                spacing: 18
                Item { implicitHeight: 4 }
                Repeater {
                    model: screen.sections
                    ColumnLayout {
                        id: section
                        required property InfoSection modelData
                        readonly property bool secondary: modelData.secondary
                        Layout.fillWidth: true
                        Layout.leftMargin: 24
                        Layout.rightMargin: 24
                        spacing: 6
                        Label {
                            visible: section.modelData.header.length > 0
                            Accessible.ignored: !visible
                            text: section.modelData.header.toUpperCase()
                            font.pixelSize: 12
                            color: Qt.rgba(1, 1, 1, 0.55)
                        }
                        Rectangle {
                            Layout.fillWidth: true
                            implicitHeight: body.implicitHeight + 24
                            radius: 10
                            color: Qt.rgba(1, 1, 1, 0.06)
                            ColumnLayout {
                                id: body
                                x: 14
                                y: 12
                                width: parent.width - 28
                                spacing: 10
                                Repeater {
                                    model: section.modelData.paragraphs
                                    Label {
                                        required property string modelData
                                        text: modelData
                                        font.pixelSize: 14
                                        color: section.secondary ? Qt.rgba(1, 1, 1, 0.55) : "white"
                                        wrapMode: Text.Wrap
                                        Layout.fillWidth: true
                                    }
                                }
                                Label {
                                    visible: section.modelData.linkText.length > 0
                                    Accessible.ignored: !visible
                                    text: visible ? "<a href=\"" + section.modelData.linkUrl + "\">" + section.modelData.linkText + "</a>" : ""
                                    textFormat: Text.StyledText
                                    linkColor: "#64d2ff"
                                    font.pixelSize: 14
                                    onLinkActivated: url => Qt.openUrlExternally(url)
                                    Accessible.role: Accessible.Link
                                    Accessible.name: section.modelData.linkText
                                    MouseArea {
                                        anchors.fill: parent
                                        acceptedButtons: Qt.NoButton
                                        cursorShape: Qt.PointingHandCursor
                                    }
                                }
                            }
                        }
                    }
                }
                Item { implicitHeight: 12 }
            }
        }
    }
}
