import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtQuick.Window
import Zelvaine

// "How to Play": the rules in four sections and the controls, in a sheet over the game.
Window {
    id: sheet

    required property GameBoard board
    // The game window this one stands over, when it is a Qt Quick window.
    readonly property Window gameWindow: transientParent as Window

    objectName: "rulesWindow"
    title: qsTr("How to Play")
    width: 780
    height: 700
    minimumWidth: 420
    minimumHeight: 360
    modality: Qt.WindowModal
    flags: Qt.Dialog
    color: "#1b211e"
    visible: board.showRules
    onClosing: board.showRules = false
    // Centred over the game window, whatever the window manager does with dialogs.
    function centreOverParent() {
        if (!transientParent) return;
        x = transientParent.x + (transientParent.width - width) / 2;
        y = transientParent.y + Math.max(0, (transientParent.height - height) / 3);
    }
    onVisibleChanged: if (visible) centreOverParent()

    ListModel {
        id: sections
        ListElement { title: qsTr("Set up & goal"); icon: "rules-crown"; text: qsTr("Two complete decks are dealt face-up into ten columns of ten cards. Four cards begin in your hand. Win by moving every suit from ace through king onto the eight foundations.") }
        ListElement { title: qsTr("Build the columns"); icon: "rules-card-multiple"; text: qsTr("Place a card on the lowest card of another column only when it is one rank lower and the opposite color. A correctly descending, alternating-color string moves as one. Only a king—or a string beginning with a king—may fill an empty column.") }
        ListElement { title: qsTr("Build the foundations"); icon: "rules-layers-triple"; text: qsTr("Begin each foundation with an ace, then build upward in the same suit: 2, 3, and so on through king. Only the lowest exposed card of a column, or one card from your hand, may move to a foundation. The top foundation card may move back to a legal column or a free hand space.") }
        ListElement { title: qsTr("Use your hand"); icon: "rules-hand-back-right"; text: qsTr("Your hand holds at most four cards. Move the lowest card of any column or the top card of a foundation into a free hand space. A hand card may move to a legal column or foundation.") }
    }
    ListModel {
        id: controls
        ListElement { icon: "rules-gesture-tap"; text: qsTr("Tap a movable card, then tap its destination.") }
        ListElement { icon: "rules-gesture-swipe"; text: qsTr("Or drag a card or valid string directly.") }
        ListElement { icon: "rules-fast-forward"; text: qsTr("Double-tap a movable card or string to play its only legal destination. Foundations are preferred.") }
        ListElement { icon: "rules-lightbulb-outline"; text: qsTr("Use Hint to highlight one available move.") }
        ListElement { icon: "rules-restart"; text: qsTr("Restart returns every card to the beginning of the current deal without reshuffling.") }
    }

    Shortcut {
        // qmllint disable unqualified
        // Qt 6.4's linter does not know QtQuick's StandardKey.
        sequences: [StandardKey.Cancel, "Return", "Enter"]
        // qmllint enable unqualified
        onActivated: sheet.board.showRules = false
    }

    // A window of its own inherits nothing from the game window: take its dark colours, so that
    // "Done" and the scroll bar match the rest of the game.
    Binding {
        target: sheetContent
        property: "palette"
        value: sheet.gameWindow ? sheet.gameWindow.contentItem.palette : null
        when: sheet.gameWindow !== null && sheet.gameWindow.contentItem !== null
    }
    ColumnLayout {
        id: sheetContent
        anchors.fill: parent
        spacing: 0

        // The title bar of the sheet with its confirming "Done".
        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 14
            Layout.leftMargin: 24
            Label {
                text: sheet.title
                font.pixelSize: 17
                font.weight: Font.DemiBold
                color: "white"
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignHCenter
                Layout.leftMargin: doneButton.width
            }
            Button {
                id: doneButton
                objectName: "rulesDoneButton"
                text: qsTr("Done")
                highlighted: true
                onClicked: sheet.board.showRules = false
                Accessible.onPressAction: clicked()
            }
        }
        Rectangle { Layout.fillWidth: true; height: 1; color: Qt.rgba(1, 1, 1, 0.12) }

        ScrollView {
            id: scroller
            Layout.fillWidth: true
            Layout.fillHeight: true
            ScrollBar.vertical.policy: ScrollBar.AlwaysOn
            contentWidth: availableWidth

            Item {
                width: scroller.availableWidth
                implicitHeight: content.implicitHeight + 56

                // At most 700 wide, centred in whatever width the sheet has.
                ColumnLayout {
                    id: content
                    objectName: "rulesColumn"
                    x: (parent.width - width) / 2
                    y: 28
                    width: Math.min(700, parent.width - 56)
                    spacing: 22

                    Repeater {
                        model: sections
                        RowLayout {
                            id: section
                            required property string title
                            required property string icon
                            required property string text
                            Layout.fillWidth: true
                            spacing: 16
                            Image {
                                Layout.alignment: Qt.AlignTop
                                Layout.preferredWidth: 32
                                source: "qrc:/icons/mdi/" + section.icon + ".svg"
                                sourceSize.width: 26
                                sourceSize.height: 26
                                fillMode: Image.Pad
                                Accessible.ignored: true
                            }
                            ColumnLayout {
                                Layout.fillWidth: true
                                spacing: 6
                                Label {
                                    text: section.title
                                    font.pixelSize: 20
                                    font.bold: true
                                    color: "white"
                                    Layout.fillWidth: true
                                    wrapMode: Text.Wrap
                                }
                                Label {
                                    text: section.text
                                    font.pixelSize: 15
                                    color: Qt.rgba(1, 1, 1, 0.76)
                                    Layout.fillWidth: true
                                    wrapMode: Text.Wrap
                                }
                            }
                        }
                    }

                    ColumnLayout {
                        Layout.fillWidth: true
                        spacing: 10
                        opacity: 0.88
                        Label {
                            text: qsTr("Controls")
                            font.pixelSize: 20
                            font.bold: true
                            color: "white"
                        }
                        Repeater {
                            model: controls
                            RowLayout {
                                id: control
                                required property string icon
                                required property string text
                                Layout.fillWidth: true
                                spacing: 10
                                Image {
                                    Layout.alignment: Qt.AlignTop
                                    source: "qrc:/icons/mdi/" + control.icon + ".svg"
                                    sourceSize.width: 18
                                    sourceSize.height: 18
                                    Accessible.ignored: true
                                }
                                Label {
                                    text: control.text
                                    font.pixelSize: 15
                                    color: "white"
                                    Layout.fillWidth: true
                                    wrapMode: Text.Wrap
                                }
                            }
                        }
                    }
                }
            }
        }
    }
}
