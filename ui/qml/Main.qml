import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Zelvaine

ApplicationWindow {
    id: window

    required property var board
    required property var preferences
    // The update checker, when the build has one; its menu item stays disabled without it.
    property var updater: null
    property string versionText: "—"

    readonly property bool confirmationPending: board.confirmation !== -1

    // Menus, dialogs and sheets follow the dark table.
    palette.window: "#1f2623"
    palette.base: "#151b18"
    palette.alternateBase: "#1f2623"
    palette.text: "#eeeee8"
    palette.windowText: "#eeeee8"
    palette.buttonText: "#eeeee8"
    palette.button: "#2b3530"
    palette.highlight: "#d9b441"
    palette.highlightedText: "#101010"
    palette.light: "#3a4640"
    palette.mid: "#2b3530"
    palette.dark: "#0f1412"
    // Set after the colours above, which would otherwise stand for the disabled state too and
    // make an unavailable command look available.
    palette.disabled.text: "#7d8480"
    palette.disabled.windowText: "#7d8480"
    palette.disabled.buttonText: "#7d8480"

    width: 1280
    height: 860
    minimumWidth: gameView.minimumWidth
    minimumHeight: gameView.minimumHeight + (menuBar.visible ? menuBar.height : 0)
    visible: true
    title: "Zelvaine"
    color: "#08331f"

    menuBar: MenuBar {
        id: menuBar
        objectName: "menuBar"
        // Dark like the table, so the window reads as one surface.
        palette.buttonText: "#eeeee8"
        palette.windowText: "#eeeee8"
        background: Rectangle {
            implicitHeight: 26
            color: "#141a17"
            Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: Qt.rgba(1, 1, 1, 0.08) }
        }

        Menu {
            title: "Zelvaine"
            MenuItem {
                objectName: "aboutItem"
                text: qsTr("About Zelvaine")
                onTriggered: about.open()
            }
            MenuItem {
                objectName: "checkForUpdatesItem"
                text: qsTr("Check for Updates…")
                enabled: window.updater !== null && window.updater.canCheckForUpdates
                onTriggered: window.updater.checkForUpdates()
            }
            MenuSeparator {}
            MenuItem {
                objectName: "preferencesItem"
                action: Action {
                    text: qsTr("Preferences…")
                    shortcut: "Ctrl+,"
                    enabled: !window.confirmationPending
                    onTriggered: window.preferences.showSettings = true
                }
            }
            MenuSeparator {}
            MenuItem {
                objectName: "quitItem"
                action: Action {
                    text: qsTr("Quit Zelvaine")
                    shortcut: StandardKey.Quit
                    onTriggered: Qt.quit()
                }
            }
        }
        Menu {
            title: qsTr("File")
            MenuItem {
                objectName: "openGameMenuItem"
                action: Action {
                    text: qsTr("Open Game…")
                    shortcut: "Ctrl+O"
                    enabled: !window.confirmationPending
                    onTriggered: window.board.isImportingGame = true
                }
            }
            MenuItem {
                objectName: "newGameMenuItem"
                action: Action {
                    text: qsTr("New Game")
                    shortcut: "Ctrl+N"
                    enabled: !window.confirmationPending
                    onTriggered: window.board.requestNewGame()
                }
            }
            MenuItem {
                objectName: "restartGameMenuItem"
                action: Action {
                    text: qsTr("Restart Game")
                    shortcut: "Ctrl+R"
                    enabled: window.board.hasProgress && !window.confirmationPending
                    onTriggered: window.board.requestRestart()
                }
            }
        }
        Menu {
            title: qsTr("Edit")
            MenuItem {
                objectName: "undoMenuItem"
                action: Action {
                    text: qsTr("Undo")
                    shortcut: "Ctrl+Z"
                    enabled: window.board.canUndo && !window.confirmationPending
                    onTriggered: window.board.undo()
                }
            }
            MenuItem {
                objectName: "redoMenuItem"
                action: Action {
                    text: qsTr("Redo")
                    shortcut: "Ctrl+Shift+Z"
                    enabled: window.board.canRedo && !window.confirmationPending
                    onTriggered: window.board.redo()
                }
            }
        }
        Menu {
            title: qsTr("Help")
            MenuItem {
                objectName: "hintMenuItem"
                action: hintAction
            }
        }
    }

    Action {
        id: hintAction
        text: qsTr("Hint")
        shortcut: "Ctrl+Shift+/"
        enabled: !window.confirmationPending && !window.board.won
        onTriggered: window.board.showHint()
    }
    // Shift and the slash make a question mark on most keyboards.
    Shortcut {
        sequence: "Ctrl+?"
        enabled: hintAction.enabled
        onActivated: hintAction.trigger()
    }

    GameView {
        id: gameView
        anchors.fill: parent
        board: window.board
        preferences: window.preferences
        versionText: window.versionText
        updateHost: window.updater !== null ? window.updater.feedHost : ""
    }

    GameDialog {
        id: about
        objectName: "aboutDialog"
        anchors.centerIn: parent
        standardButtons: Dialog.Ok
        title: qsTr("About Zelvaine")
        ColumnLayout {
            spacing: 10
            Image {
                source: "qrc:/icons/zelvaine.svg"
                sourceSize: Qt.size(64, 64)
                Layout.alignment: Qt.AlignHCenter
                Accessible.ignored: true
            }
            Label {
                text: "Zelvaine"
                font.pixelSize: 22
                font.bold: true
                Layout.alignment: Qt.AlignHCenter
            }
            Label {
                text: qsTr("Version %1").arg(window.versionText)
                Layout.alignment: Qt.AlignHCenter
            }
            Label {
                text: qsTr("A two-deck patience game.")
                Layout.alignment: Qt.AlignHCenter
            }
        }
    }

    // The result of a check the player started (or of a scheduled one that found a release).
    Connections {
        target: window.updater
        ignoreUnknownSignals: true
        function onResultReady() { updateResult.open(); }
    }
    GameDialog {
        id: updateResult
        objectName: "updateResultDialog"
        // Return closes, like the highlighted OK; downloading is a choice made with the pointer.
        returnAccepts: false
        // The checker's states: 2 up to date, 3 a newer release, 4 the check failed.
        readonly property int state: window.updater !== null ? window.updater.state : 0
        anchors.centerIn: parent
        width: Math.min(460, window.width - 40)
        title: state === 3 ? qsTr("A new version of Zelvaine is available")
             : state === 2 ? qsTr("You’re up to date")
             : qsTr("Zelvaine could not check for updates")
        Label {
            width: parent.width
            wrapMode: Text.Wrap
            text: updateResult.state === 3
                  ? qsTr("Zelvaine %1 is available; you have %2.").arg(window.updater.latestVersion).arg(window.versionText)
                  : updateResult.state === 2 ? qsTr("Zelvaine %1 is the newest version.").arg(window.versionText)
                  : window.updater !== null ? window.updater.failureReason : ""
        }
        footer: DialogButtonBox {
            Button {
                visible: updateResult.state === 3
                text: qsTr("Download")
                DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole
                onClicked: Qt.openUrlExternally(window.updater.downloadUrl)
            }
            Button {
                visible: updateResult.state === 3 && window.updater.releaseNotesUrl.toString() !== ""
                text: qsTr("Release Notes")
                DialogButtonBox.buttonRole: DialogButtonBox.HelpRole
                onClicked: Qt.openUrlExternally(window.updater.releaseNotesUrl)
            }
            Button {
                text: updateResult.state === 3 ? qsTr("Later") : qsTr("OK")
                DialogButtonBox.buttonRole: DialogButtonBox.RejectRole
            }
        }
    }
}
