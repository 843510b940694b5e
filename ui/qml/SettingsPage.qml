pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Zelvaine

// The settings themselves: header, the four boxes, and the footer with links and version.
Item {
    id: page

    required property PreferencesModel preferences
    property string versionText: "—"
    signal done()
    signal showPrivacy()
    signal showAcknowledgements()

    function count(value) { return Number(value).toLocaleString(Qt.locale(), "f", 0); }

    // "Done" is the window's default button; Escape is the window's own.
    Keys.onReturnPressed: page.done()
    Keys.onEnterPressed: page.done()
    focus: true

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 18
            Layout.bottomMargin: 18
            spacing: 14
            Image {
                source: "qrc:/icons/zelvaine.svg"
                sourceSize.width: 52
                sourceSize.height: 52
                Layout.preferredWidth: 52
                Layout.preferredHeight: 52
                fillMode: Image.PreserveAspectFit
                Accessible.ignored: true
            }
            ColumnLayout {
                spacing: 2
                Label {
                    text: qsTr("Settings")
                    font.pixelSize: 22
                    font.weight: Font.DemiBold
                    color: "white"
                }
                Label {
                    text: "Zelvaine"
                    color: Qt.rgba(1, 1, 1, 0.6)
                }
            }
            Item { Layout.fillWidth: true }
            Button {
                objectName: "settingsDoneButton"
                text: qsTr("Done")
                highlighted: true
                onClicked: page.done()
                Accessible.onPressAction: clicked()
            }
        }
        Rectangle { Layout.fillWidth: true; height: 1; color: Qt.rgba(1, 1, 1, 0.12) }

        ScrollView {
            id: scroller
            Layout.fillWidth: true
            Layout.fillHeight: true
            contentWidth: availableWidth
            ScrollBar.vertical.policy: ScrollBar.AlwaysOn

            ColumnLayout {
                x: 20
                width: scroller.availableWidth - 40
                spacing: 16
                Item { implicitHeight: 4 }

                SettingsBox {
                    title: qsTr("Toolbar")
                    icon: "dock-top"
                    SettingsToggleRow {
                        objectName: "showHint"
                        title: qsTr("Show Hint")
                        icon: "settings-hint"
                        checked: page.preferences.showsHint
                        onToggled: on => page.preferences.showsHint = on
                    }
                    Divider {}
                    SettingsToggleRow {
                        objectName: "showUndo"
                        title: qsTr("Show Undo & Redo")
                        icon: "settings-undo"
                        checked: page.preferences.showsUndo
                        onToggled: on => page.preferences.showsUndo = on
                    }
                }

                SettingsBox {
                    title: qsTr("Landscape Layout")
                    icon: "view-split-vertical"
                    RowLayout {
                        Layout.fillWidth: true
                        Layout.topMargin: 4
                        Layout.bottomMargin: 4
                        spacing: 20
                        ColumnLayout {
                            Layout.fillWidth: true
                            spacing: 4
                            // Read with the picker, as its name and description.
                            Label {
                                Accessible.ignored: true
                                text: qsTr("Hand Position")
                                font.pixelSize: 14
                                font.weight: Font.Medium
                                color: "white"
                            }
                            Label {
                                id: handPositionDetail
                                Accessible.ignored: true
                                text: qsTr("Places the hand on the selected side in horizontal layouts.")
                                font.pixelSize: 13
                                color: Qt.rgba(1, 1, 1, 0.6)
                                wrapMode: Text.Wrap
                                Layout.fillWidth: true
                            }
                        }
                        // A two-segment picker: one of the two is always chosen.
                        Row {
                            objectName: "handPositionPicker"
                            Accessible.role: Accessible.PageTabList
                            Accessible.name: qsTr("Hand Position")
                            Accessible.description: handPositionDetail.text
                            Repeater {
                                model: ListModel {
                                    ListElement { title: qsTr("Left"); rightSide: false }
                                    ListElement { title: qsTr("Right"); rightSide: true }
                                }
                                Button {
                                    required property string title
                                    required property bool rightSide
                                    objectName: rightSide ? "handRight" : "handLeft"
                                    width: 85
                                    text: title
                                    checkable: true
                                    checked: page.preferences.handOnRight === rightSide
                                    highlighted: checked
                                    Accessible.role: Accessible.PageTab
                                    onClicked: page.preferences.handOnRight = rightSide
                                    Accessible.onPressAction: clicked()
                                }
                            }
                        }
                    }
                }

                SettingsBox {
                    title: qsTr("Feedback")
                    icon: "message-text-outline"
                    SettingsToggleRow {
                        objectName: "sounds"
                        title: qsTr("Sounds")
                        icon: "settings-sounds"
                        checked: page.preferences.soundsEnabled
                        onToggled: on => page.preferences.soundsEnabled = on
                    }
                    Divider {}
                    SettingsToggleRow {
                        objectName: "moveMessages"
                        title: qsTr("Show invalid move messages")
                        detail: qsTr("Shows an explanation when a move is invalid. Requested hints remain visible.")
                        icon: "settings-messages"
                        checked: page.preferences.showsMoveMessages
                        onToggled: on => page.preferences.showsMoveMessages = on
                    }
                }

                SettingsBox {
                    objectName: "solverBox"
                    title: qsTr("Solver")
                    icon: "lightbulb-outline"
                    SettingsToggleRow {
                        objectName: "showsWinnability"
                        title: qsTr("Show whether the deal can be won")
                        detail: qsTr("The toolbar tells, after every move, whether the position can still be won.")
                        icon: "rules-lightbulb-outline"
                        checked: page.preferences.showsWinnability
                        onToggled: on => page.preferences.showsWinnability = on
                    }
                    Divider {}
                    SettingsToggleRow {
                        objectName: "winnableDealsOnly"
                        title: qsTr("Deal only winnable games")
                        detail: qsTr("New games are deals the solver has proven can be won.")
                        icon: "cards-playing-outline"
                        checked: page.preferences.winnableDealsOnly
                        onToggled: on => page.preferences.winnableDealsOnly = on
                    }
                }

                SettingsBox {
                    title: qsTr("Statistics")
                    icon: "chart-bar"
                    RowLayout {
                        Layout.fillWidth: true
                        spacing: 10
                        StatisticTile {
                            objectName: "gamesPlayed"
                            title: qsTr("Games played")
                            icon: "cards-spade"
                            value: page.count(page.preferences.gamesPlayed)
                        }
                        StatisticTile {
                            objectName: "gamesWon"
                            title: qsTr("Games won")
                            icon: "trophy"
                            value: page.count(page.preferences.gamesWon)
                        }
                        StatisticTile {
                            objectName: "gamesLost"
                            title: qsTr("Games lost")
                            icon: "flag"
                            value: page.count(page.preferences.gamesLost)
                        }
                        StatisticTile {
                            objectName: "bestGame"
                            title: qsTr("Best game")
                            icon: "star"
                            // Plain digits: a move count is not a quantity to group.
                            value: !page.preferences.hasHighScore ? "—"
                                   : qsTr("%n moves", "", page.preferences.highScore)
                        }
                    }
                }
                Item { implicitHeight: 4 }
            }
        }

        Rectangle { Layout.fillWidth: true; height: 1; color: Qt.rgba(1, 1, 1, 0.12) }

        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 14
            Layout.bottomMargin: 14
            spacing: 18
            TextLink {
                objectName: "privacyLink"
                text: qsTr("Privacy Policy")
                iconName: "hand-back-right"
                onActivated: page.showPrivacy()
            }
            TextLink {
                objectName: "acknowledgementsLink"
                text: qsTr("Acknowledgements")
                iconName: "heart"
                onActivated: page.showAcknowledgements()
            }
            Item { Layout.fillWidth: true }
            Label {
                objectName: "versionText"
                text: qsTr("Version") + "  " + page.versionText
                color: Qt.rgba(1, 1, 1, 0.6)
                elide: Text.ElideNone
                wrapMode: Text.NoWrap
            }
        }
    }

    component Divider: Rectangle {
        Layout.fillWidth: true
        Layout.leftMargin: 42
        height: 1
        color: Qt.rgba(1, 1, 1, 0.1)
    }
}
