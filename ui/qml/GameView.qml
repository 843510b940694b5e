import QtQuick
import QtQuick.Dialogs
import QtQuick.Layouts
import Zelvaine

// The board: the toolbar, the foundations, the ten columns and the hand, arranged for a tall
// or a wide window, on the felt.
Item {
    id: view

    required property GameBoard board
    required property PreferencesModel preferences
    // The solver's live verdict for the toolbar, where the window has a solver.
    property SolverCommands solver: null
    // For the settings window: "1.0 (1)", and the update server the privacy policy names.
    property string versionText: "—"
    property string updateHost: ""

    // The window keeps at least the size at which the whole board fits.
    readonly property real minimumWidth: boardGeometry.minimumWindowWidth
    readonly property real minimumHeight: boardGeometry.minimumWindowHeight

    objectName: "gameBoard"
    focus: true
    // While the confetti falls, the board under it is drawn into one picture, and each frame moves
    // the pieces over that picture instead of drawing every card, text and panel under them. Qt's
    // software renderer repaints a picture like this whole on every frame; that still costs less
    // than repainting the board under each of the pieces (about 3 against 5 ms a frame, measured).
    // So the confetti stands beside the board, above it, rather than inside it.
    layer.enabled: confetti.visible

    // Keyboard play: arrows move the focus ring, Return or Space taps, Escape lets go, the menu
    // key or Shift+F10 opens the focused card's menu.
    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_Left: view.moveFocus(Focus.Direction.Left); break;
        case Qt.Key_Right: view.moveFocus(Focus.Direction.Right); break;
        case Qt.Key_Up: view.moveFocus(Focus.Direction.Up); break;
        case Qt.Key_Down: view.moveFocus(Focus.Direction.Down); break;
        case Qt.Key_Return:
        case Qt.Key_Enter:
        case Qt.Key_Space: view.board.activateFocus(); break;
        case Qt.Key_Escape: view.board.tapTable(); view.board.hideFocus(); break;
        // The focused card's menu of moves, as a right click gives it.
        case Qt.Key_Menu: view.board.requestMenuAtFocus(); break;
        case Qt.Key_F10:
            if (!(event.modifiers & Qt.ShiftModifier)) return;
            view.board.requestMenuAtFocus();
            break;
        default: return;
        }
        event.accepted = true;
    }

    function moveFocus(direction) {
        // An arrow that reaches the table from a toolbar button the Tab key left the keyboard
        // on takes the keyboard along, so that one place is lit and Space plays the ring's card.
        view.forceActiveFocus(Qt.OtherFocusReason);
        view.board.moveFocus(direction, boardGeometry.portrait, view.preferences.handOnRight);
    }

    // And the Tab key taking the keyboard to the toolbar puts the ring out. A lit button that
    // turns off (Undo with nothing left to undo) drops the keyboard to the window around the
    // table, where no key reaches the table; the table takes it back.
    readonly property Item keyboardAt: Window.activeFocusItem
    onKeyboardAtChanged: {
        if ((keyboardAt as ToolbarButton) !== null) view.board.hideFocus();
        else if (keyboardDropped()) takeTheKeyboardBack.start();
    }
    function keyboardDropped(): bool {
        for (let around = view.parent; around !== null; around = around.parent) {
            if (around === view.keyboardAt) return true;
        }
        return false;
    }
    // Once the change that dropped it is over: the keyboard's place must not move inside it.
    Timer {
        id: takeTheKeyboardBack
        interval: 0
        onTriggered: if (view.keyboardDropped()) view.forceActiveFocus(Qt.OtherFocusReason)
    }

    CardDragController {
        id: cardDrag
        board: view.board
        boardItem: view
    }

    BoardGeometry {
        id: boardGeometry
        width: view.width
        height: view.height
    }

    FeltBackground {
        anchors.fill: parent
    }

    // A tap on the bare table forgets the selection, the message and a pending double tap.
    MouseArea {
        anchors.fill: parent
        onClicked: {
            view.board.tapTable();
            view.board.hideFocus();
        }
    }

    ColumnLayout {
        id: frame
        anchors.fill: parent
        anchors.leftMargin: boardGeometry.sideMargin
        anchors.rightMargin: boardGeometry.sideMargin
        anchors.topMargin: boardGeometry.topMargin
        anchors.bottomMargin: boardGeometry.bottomMargin
        spacing: boardGeometry.stackSpacing

        BoardToolbar {
            id: toolbar
            objectName: "boardToolbar"
            board: view.board
            preferences: view.preferences
            solver: view.solver
            isCompact: boardGeometry.portrait
            Layout.fillWidth: true
        }

        Item {
            id: arrangement
            Layout.fillWidth: true
            Layout.fillHeight: true

            // Only the arrangement in use exists, so every place has one item.
            Loader {
                id: arrangementLoader
                anchors.fill: parent
                sourceComponent: boardGeometry.portrait ? portraitArrangement : landscapeArrangement
            }
        }
    }

    // The arrangements reach the board's ids from components that a Loader switches between; Qt 6.4
    // cannot switch components bound to this file, and its linter asks for that binding.
    // qmllint disable unqualified
    // Portrait: foundations, tableau, hand, one above the other.
    Component {
        id: portraitArrangement
        Item {
            readonly property Item tableau: portraitTableau
            readonly property Item below: portraitHand
            Column {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 32
                FoundationArea {
                    drag: cardDrag
                    anchors.horizontalCenter: parent.horizontalCenter
                    board: view.board
                    cardWidth: boardGeometry.cardWidth
                }
                Tableau {
                    id: portraitTableau
                    drag: cardDrag
                    board: view.board
                    geometry: boardGeometry
                    availableHeight: arrangement.height - boardGeometry.cardHeight * 2 - 64 - 2 * 46
                }
                HandArea {
                    id: portraitHand
                    drag: cardDrag
                    anchors.horizontalCenter: parent.horizontalCenter
                    board: view.board
                    cardWidth: boardGeometry.cardWidth
                }
            }
        }
    }

    // Landscape: the hand panel beside the foundations and the tableau.
    Component {
        id: landscapeArrangement
        Item {
            readonly property Item tableau: landscapeTableau
            readonly property Item below: null
            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: boardGeometry.sectionSpacing
                layoutDirection: view.preferences.handOnRight ? Qt.RightToLeft : Qt.LeftToRight
                HandArea {
                    drag: cardDrag
                    board: view.board
                    cardWidth: boardGeometry.cardWidth
                    vertical: true
                }
                Column {
                    spacing: 36
                    // Centred in the frame of the ten columns.
                    FoundationArea {
                        anchors.horizontalCenter: parent.horizontalCenter
                        drag: cardDrag
                        board: view.board
                        cardWidth: boardGeometry.cardWidth
                    }
                    Tableau {
                        id: landscapeTableau
                        drag: cardDrag
                        board: view.board
                        geometry: boardGeometry
                        availableHeight: arrangement.height - boardGeometry.cardHeight - 36 - 46
                    }
                }
            }
        }
    }
    // qmllint enable unqualified

    // Where the toast and the automatic-finish badge hide no card: in the free band between the
    // lowest card of the tableau and what lies below it (the hand row, or the window's edge), or,
    // when that band is too narrow, over the toolbar.
    readonly property real freeBandTop: {
        const loaded = arrangementLoader.item;
        if (!loaded) return height;
        // Read for their change signals: mapToItem alone does not follow the layout.
        void [arrangement.y, arrangement.height, loaded.tableau.y, loaded.tableau.cardsHeight];
        return loaded.tableau.mapToItem(view, 0, loaded.tableau.cardsHeight).y;
    }
    readonly property real freeBandBottom: {
        const loaded = arrangementLoader.item;
        if (!loaded || !loaded.below) return height;
        void [arrangement.y, arrangement.height, loaded.below.y];
        return loaded.below.mapToItem(view, 0, 0).y;
    }
    function fitsBelowTable(itemHeight) {
        return freeBandBottom - freeBandTop >= itemHeight + 2 * messageMargin;
    }
    function messageY(itemHeight) {
        if (fitsBelowTable(itemHeight))
            return freeBandBottom - messageMargin - itemHeight;
        return toolbar.mapToItem(view, 0, 0).y + (toolbar.height - itemHeight) / 2;
    }
    // Over the toolbar a message stands in the stretch between the title and the buttons when it
    // fits there, so that Undo and the rest stay in sight; otherwise in the middle.
    function messageX(itemWidth, itemHeight) {
        if (!fitsBelowTable(itemHeight)) {
            const stretch = toolbar.freeStretch;
            void [toolbar.x, toolbar.width, stretch.x, stretch.width];
            if (stretch.width >= itemWidth + messageMargin)
                return stretch.mapToItem(view, 0, 0).x + (stretch.width - itemWidth) / 2;
        }
        return (width - itemWidth) / 2;
    }
    readonly property real messageMargin: 24

    // A message that fits in no free band stands beside the buttons, wrapped to the stretch when it
    // is too long for one line there, and only when even that fails over the toolbar's middle.
    enum MessagePlace { BelowTable, BesideButtons, OverToolbar }
    readonly property int toastPlace: {
        if (fitsBelowTable(toast.wideHeight))
            return GameView.MessagePlace.BelowTable;
        const toolbarTop = toolbar.mapToItem(view, 0, 0).y;
        void [toolbar.y, arrangement.y];
        // Centred on the toolbar, it may reach up to the window's edge and down to the table.
        const room = 2 * Math.min(toolbarTop + toolbar.height / 2 - 4,
                                  arrangement.mapToItem(view, 0, 0).y - toolbarTop - toolbar.height / 2);
        if (toast.narrowTextWidth >= 200 && toast.narrowHeight <= room)
            return GameView.MessagePlace.BesideButtons;
        return GameView.MessagePlace.OverToolbar;
    }

    MessageToast {
        id: toast
        board: view.board
        preferences: view.preferences
        z: 8000
        narrowTextWidth: Math.min(wideTextWidth, toolbar.freeStretch.width - view.messageMargin - 40)
        textWidthLimit: view.toastPlace === GameView.MessagePlace.BesideButtons ? narrowTextWidth : wideTextWidth
        coversControls: view.toastPlace === GameView.MessagePlace.OverToolbar
        x: view.messageX(width, height)
        y: view.messageY(height)
    }

    AutoCompleteBadge {
        board: view.board
        z: 9000
        x: view.messageX(width, height)
        y: view.messageY(height)
    }

    // While the game finishes itself the table takes no input.
    MouseArea {
        anchors.fill: parent
        z: 8500
        visible: view.board.autoCompleting
        acceptedButtons: Qt.AllButtons
    }

    ActiveDragOverlay {
        drag: cardDrag
        shown: !view.board.won
        anchors.fill: parent
        z: 10000
    }

    WinOverlay {
        board: view.board
        anchors.fill: parent
        z: 9500
    }

    ConfettiItem {
        id: confetti
        parent: view.parent
        x: view.x
        y: view.y
        width: view.width
        height: view.height
        z: view.z + 1
        startedAt: view.board.celebrationStartedAt
        visible: startedAt > 0
        enabled: false
        Accessible.ignored: true
    }

    ConfirmationDialog {
        board: view.board
    }

    // The sheets exist only while they show: a hidden window would still stand in the
    // accessibility tree, with its buttons, for a screen reader to wander into.
    // Made by Loaders too, as the arrangements are.
    // qmllint disable unqualified
    Loader {
        active: view.board.showRules
        sourceComponent: RulesView {
            board: view.board
        }
    }

    Loader {
        active: view.preferences.showSettings
        sourceComponent: SettingsWindow {
            preferences: view.preferences
            versionText: view.versionText
            updateHost: view.updateHost
        }
    }

    // "Open Game…" from the menu or the toolbar: the file picker, made when first asked for.
    Connections {
        target: view.board
        function onImportingChanged() {
            if (!view.board.isImportingGame) {
                const shown = openDialog.item as FileDialog;
                if (shown) shown.close();
                return;
            }
            openDialog.active = true;
            const picker = openDialog.item as FileDialog;
            if (picker) {
                picker.currentFolder = view.board.gameFolder;
                picker.open();
            }
            else view.board.isImportingGame = false;
        }
    }
    Loader {
        id: openDialog
        active: false
        sourceComponent: FileDialog {
            fileMode: FileDialog.OpenFile
            nameFilters: [qsTr("Zelvaine games (*.zelvaine)"), qsTr("All files (*)")]
            onAccepted: {
                view.board.isImportingGame = false;
                view.board.openGame(selectedFile);
            }
            onRejected: view.board.isImportingGame = false
        }
    }
    // qmllint enable unqualified

    // A shared game dropped on the window opens like one chosen in the picker.
    DropArea {
        anchors.fill: parent
        keys: ["text/uri-list"]
        onEntered: drag => drag.accepted = drag.hasUrls
        onDropped: drop => {
            if (!drop.hasUrls) return;
            // Like a file handed over by the file manager: only a shared game is taken.
            view.board.openGamePath(drop.urls[0].toString());
            drop.accept(Qt.CopyAction);
        }
    }
}
