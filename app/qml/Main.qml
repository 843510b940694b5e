import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Zelvaine
import ZelvaineShell

// Qt 6.4's linter knows neither StandardKey nor DialogButtonBox's roles: the lines that name them
// say so.

ApplicationWindow {
    id: window

    required property GameBoard board
    required property PreferencesModel preferences
    required property SolverCommands solver
    // The update checker, when the build has one; its menu item stays disabled without it.
    property Updater updater: null
    property string versionText: "—"

    readonly property bool confirmationPending: board.confirmation !== Confirmation.Kind.None

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

    // The game sets the size the window opens at; this is for a window made without it.
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
        // A screen reader opens a menu with the title's Press, as a click does.
        delegate: MenuBarItem {
            id: menuTitle
            Accessible.onPressAction: menuTitle.triggered()
            // The title without the "&" that marks its Alt key.
            Accessible.name: menuTitle.text.replace(/&(.)/g, "$1")
            // The bar lights the title under the pointer and forgets to put it out when a menu
            // closed by Escape leaves the pointer there and the pointer then goes elsewhere.
            onHoveredChanged: if (!hovered && !(menu && menu.visible)) highlighted = false
            // A menu opened from the keyboard (Alt and its letter, F10, or the arrows from the
            // menu beside it) lights its first command, as the desktop's other menus do, so that
            // a screen reader says where the keys are. One opened by the pointer lights nothing.
            HoverHandler {
                id: pointerOver
            }
            Connections {
                target: menuTitle.menu
                function onOpened() {
                    // The title's own hover follows the style's hover effects, which some
                    // desktops turn off; the pointer's place does not, but it comes a moment
                    // after the hover that opens a menu when the pointer moves over from another.
                    if (pointerOver.hovered || menuTitle.hovered) return;
                    const menu = menuTitle.menu;
                    for (let i = 0; i < menu.count; ++i) {
                        const item = menu.itemAt(i) as MenuItem;
                        if (item && item.enabled) {
                            menu.currentIndex = i;
                            item.forceActiveFocus(Qt.TabFocusReason);
                            return;
                        }
                    }
                }
                // Qt's bar stays in its menu-open mode when Escape or a command closes a menu
                // under a pointer resting on its title, and the next title the pointer crosses
                // opens its menu by itself. The bar leaves that mode when its open title is
                // triggered again; a click on the title does that itself, so only a close without
                // one needs it.
                function onAboutToShow() {
                    menuTitle.triggeredWhileOpen = false;
                }
                function onClosed() {
                    if (pointerOver.hovered) afterTheClose.start();
                }
            }
            property bool triggeredWhileOpen: false
            onTriggered: triggeredWhileOpen = true
            // Looks once the click that may have closed the menu has reached the title.
            Timer {
                id: afterTheClose
                interval: 0
                onTriggered: menuTitle.leaveMenuMode()
            }
            function leaveMenuMode() {
                if (!pointerOver.hovered || menuTitle.pressed || menuTitle.triggeredWhileOpen || !menuTitle.highlighted
                        || menuTitle.menu.visible)
                    return;
                // Triggering the title gives it the keyboard; the board had it and keeps it.
                const keeper = menuTitle.Window.activeFocusItem;
                menuTitle.triggered();
                menuTitle.highlighted = false;
                if (keeper) keeper.forceActiveFocus();
            }
        }
        background: Rectangle {
            implicitHeight: 26
            color: "#141a17"
            Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: Qt.rgba(1, 1, 1, 0.08) }
        }

        FittedMenu {
            title: "&Zelvaine"
            ShortcutMenuItem {
                objectName: "aboutItem"
                text: qsTr("About Zelvaine")
                onTriggered: about.open()
            }
            ShortcutMenuItem {
                objectName: "checkForUpdatesItem"
                text: qsTr("Check for Updates…")
                enabled: window.updater !== null && window.updater.canCheckForUpdates
                onTriggered: window.updater.checkForUpdates()
            }
            MenuSeparator {}
            ShortcutMenuItem {
                objectName: "preferencesItem"
                action: Action {
                    text: qsTr("Preferences…")
                    shortcut: "Ctrl+,"
                    enabled: !window.confirmationPending
                    onTriggered: window.preferences.showSettings = true
                }
            }
            MenuSeparator {}
            ShortcutMenuItem {
                objectName: "quitItem"
                action: Action {
                    text: qsTr("Quit Zelvaine")
                    shortcut: StandardKey.Quit // qmllint disable unqualified
                    onTriggered: Qt.quit()
                }
            }
        }
        FittedMenu {
            title: qsTr("&File")
            ShortcutMenuItem {
                objectName: "openGameMenuItem"
                action: Action {
                    text: qsTr("Open Game…")
                    shortcut: "Ctrl+O"
                    enabled: !window.confirmationPending
                    onTriggered: window.board.isImportingGame = true
                }
            }
            ShortcutMenuItem {
                objectName: "newGameMenuItem"
                action: Action {
                    text: qsTr("New Game")
                    shortcut: "Ctrl+N"
                    enabled: !window.confirmationPending
                    onTriggered: window.board.requestNewGame()
                }
            }
            ShortcutMenuItem {
                objectName: "restartGameMenuItem"
                action: Action {
                    text: qsTr("Restart Game")
                    shortcut: "Ctrl+R"
                    enabled: window.board.hasProgress && !window.confirmationPending
                    onTriggered: window.board.requestRestart()
                }
            }
        }
        FittedMenu {
            title: qsTr("&Edit")
            ShortcutMenuItem {
                objectName: "undoMenuItem"
                action: Action {
                    text: qsTr("Undo")
                    shortcut: "Ctrl+Z"
                    enabled: window.board.canUndo && !window.confirmationPending
                    onTriggered: window.board.undo()
                }
            }
            ShortcutMenuItem {
                objectName: "redoMenuItem"
                action: Action {
                    text: qsTr("Redo")
                    shortcut: "Ctrl+Shift+Z"
                    enabled: window.board.canRedo && !window.confirmationPending
                    onTriggered: window.board.redo()
                }
            }
        }
        // The solver's questions; each item turns into a way to stop while its answer is sought.
        FittedMenu {
            id: solverMenu
            title: qsTr("&Solver")
            ShortcutMenuItem {
                objectName: "canBeWonMenuItem"
                action: Action {
                    readonly property bool working: window.solver.running === SolverCommands.Command.CheckWinnability
                    text: working ? qsTr("Stop Checking") : qsTr("Can This Deal Be Won?")
                    shortcut: "Ctrl+Shift+C"
                    enabled: working || (window.solver.running === SolverCommands.Command.None && !window.confirmationPending && !window.board.won)
                    onTriggered: working ? window.solver.cancel() : window.solver.checkWinnability()
                }
            }
            ShortcutMenuItem {
                objectName: "undoToWinnableMenuItem"
                action: Action {
                    readonly property bool working: window.solver.running === SolverCommands.Command.UndoToWinnable
                    text: working ? qsTr("Stop Searching") : qsTr("Undo to Last Winnable Position")
                    shortcut: "Ctrl+Shift+L"
                    enabled: working || (window.solver.running === SolverCommands.Command.None && !window.confirmationPending && window.board.canUndo && !window.board.won)
                    onTriggered: working ? window.solver.cancel() : window.solver.undoToLastWinnablePosition()
                }
            }
            ShortcutMenuItem {
                objectName: "winningMoveMenuItem"
                action: Action {
                    readonly property bool working: window.solver.running === SolverCommands.Command.WinningMove
                    text: working ? qsTr("Stop Looking for a Move") : qsTr("Show a Winning Move")
                    shortcut: "Ctrl+Shift+W"
                    enabled: working || (window.solver.running === SolverCommands.Command.None && !window.confirmationPending && !window.board.won)
                    onTriggered: working ? window.solver.cancel() : window.solver.showWinningMove()
                }
            }
        }
        FittedMenu {
            title: qsTr("&Help")
            ShortcutMenuItem {
                objectName: "hintMenuItem"
                action: hintAction
            }
        }
    }

    // F10 takes the keyboard to the menu bar, as in the desktop's other programs: the first menu
    // opens, and the arrows go on from there.
    Shortcut {
        sequence: "F10"
        onActivated: (menuBar.itemAt(0) as MenuBarItem).triggered()
    }

    Action {
        id: hintAction
        text: qsTr("Hint")
        shortcut: "Ctrl+Shift+/"
        enabled: !window.confirmationPending && !window.board.won
        onTriggered: window.board.showHint()
    }

    GameView {
        id: gameView
        anchors.fill: parent
        board: window.board
        preferences: window.preferences
        solver: window.solver
        versionText: window.versionText
        updateHost: window.updater !== null ? window.updater.feedHost : ""
    }

    GameDialog {
        id: about
        objectName: "aboutDialog"
        anchors.centerIn: parent
        width: Math.min(380, window.width - 40)
        padding: 28
        topPadding: 24
        title: qsTr("About Zelvaine")
        // Its own button rather than the standard one, which ignores an assistive tool's press.
        footer: DialogButtonBox {
            Button {
                id: aboutOk
                text: qsTr("OK")
                DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole // qmllint disable type
                Accessible.onPressAction: clicked()
            }
        }
        onOpened: aboutOk.forceActiveFocus()
        ColumnLayout {
            width: parent.width
            spacing: 8
            Image {
                source: "qrc:/icons/zelvaine.svg"
                sourceSize.width: 72
                sourceSize.height: 72
                Layout.alignment: Qt.AlignHCenter
                Layout.bottomMargin: 6
                Accessible.ignored: true
            }
            Label {
                text: "Zelvaine"
                font.pixelSize: 24
                font.bold: true
                Layout.alignment: Qt.AlignHCenter
            }
            Label {
                text: qsTr("Version %1").arg(window.versionText)
                opacity: 0.7
                Layout.alignment: Qt.AlignHCenter
            }
            Label {
                text: qsTr("A two-deck patience game.")
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                Layout.fillWidth: true
                Layout.topMargin: 8
            }
        }
    }

    // While a check the player started runs: its progress, and a way to stop waiting.
    GameDialog {
        id: updateProgress
        objectName: "updateProgressDialog"
        returnAccepts: false
        visible: window.updater !== null && window.updater.state === Updater.State.Checking
        anchors.centerIn: parent
        width: Math.min(420, window.width - 40)
        padding: 24
        title: qsTr("Checking for Updates…")
        ColumnLayout {
            width: parent.width
            spacing: 14
            Label {
                text: qsTr("Asking %1 for the newest version of Zelvaine.").arg(window.updater !== null ? window.updater.feedHost : "")
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            ProgressBar {
                indeterminate: true
                Layout.fillWidth: true
            }
        }
        footer: DialogButtonBox {
            Button {
                objectName: "updateCancelButton"
                text: qsTr("Cancel")
                DialogButtonBox.buttonRole: DialogButtonBox.RejectRole // qmllint disable type
                Accessible.onPressAction: clicked()
            }
        }
        onRejected: if (window.updater !== null) window.updater.cancelCheck()
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
        readonly property int state: window.updater !== null ? window.updater.state : Updater.State.Idle
        anchors.centerIn: parent
        width: Math.min(480, window.width - 40)
        padding: 24
        title: state === Updater.State.UpdateAvailable ? qsTr("A new version of Zelvaine is available")
             : state === Updater.State.UpToDate ? qsTr("You’re up to date")
             : qsTr("Zelvaine could not check for updates")
        Label {
            width: parent.width
            wrapMode: Text.Wrap
            lineHeight: 1.15
            text: updateResult.state === Updater.State.UpdateAvailable
                  ? qsTr("Zelvaine %1 is available; you have %2.").arg(window.updater.latestVersion).arg(window.versionText)
                  : updateResult.state === Updater.State.UpToDate ? qsTr("Zelvaine %1 is the newest version.").arg(window.versionText)
                  : window.updater !== null ? window.updater.failureReason : ""
        }
        footer: DialogButtonBox {
            Button {
                visible: updateResult.state === Updater.State.UpdateAvailable
                text: qsTr("Download")
                DialogButtonBox.buttonRole: DialogButtonBox.AcceptRole // qmllint disable type
                Accessible.onPressAction: clicked()
                onClicked: Qt.openUrlExternally(window.updater.downloadUrl)
            }
            Button {
                visible: updateResult.state === Updater.State.UpdateAvailable && String(window.updater.releaseNotesUrl) !== ""
                text: qsTr("Release Notes")
                DialogButtonBox.buttonRole: DialogButtonBox.HelpRole // qmllint disable type
                Accessible.onPressAction: clicked()
                onClicked: Qt.openUrlExternally(window.updater.releaseNotesUrl)
            }
            Button {
                text: updateResult.state === Updater.State.UpdateAvailable ? qsTr("Later") : qsTr("OK")
                DialogButtonBox.buttonRole: DialogButtonBox.RejectRole // qmllint disable type
                Accessible.onPressAction: clicked()
            }
        }
    }
}
