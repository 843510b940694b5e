import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import Zelvaine

// The title, the move count, the best result and the game's commands above the table.
RowLayout {
    id: toolbar

    required property GameBoard board
    required property PreferencesModel preferences
    property SolverCommands solver: null
    property bool isCompact: false
    // The buttons keep their titles while the toolbar has room for them, and show only their
    // icons (with the title as a tooltip) when it has not.
    readonly property bool showsTitles: !isCompact && (labelledWidth === 0 || width >= labelledWidth)
    property real labelledWidth: 0
    readonly property Item freeStretch: freeStretch
    onImplicitWidthChanged: if (showsTitles) labelledWidth = implicitWidth

    spacing: 6

    Row {
        spacing: 8
        Image {
            source: "qrc:/icons/mdi/cards-playing-outline.svg"
            sourceSize.width: 22
            sourceSize.height: 22
            anchors.verticalCenter: parent.verticalCenter
        }
        Column {
            Text {
                text: "Zelvaine"
                font.pixelSize: 22
                font.bold: true
                color: Qt.rgba(0.96, 0.82, 0.34, 1)
            }
            Text {
                visible: !toolbar.isCompact
                text: qsTr("Two-deck challenge")
                font.pixelSize: 11
                color: Qt.rgba(1, 1, 1, 0.65)
            }
        }
    }
    Text {
        objectName: "moveCount"
        Layout.leftMargin: 18
        text: qsTr("%n moves", "", toolbar.board.moveCount)
        font.pixelSize: toolbar.isCompact ? 11 : 15
        // The system face's figures are all one width, so the count does not jitter as it grows.
        color: Qt.rgba(1, 1, 1, 0.7)
        Accessible.name: text
    }
    Row {
        objectName: "highScore"
        visible: toolbar.preferences.hasHighScore
        spacing: 3
        Layout.leftMargin: 10
        Accessible.role: Accessible.StaticText
        // Hidden until there is a best game; until then a screen reader should not find it.
        Accessible.ignored: !visible
        Accessible.name: qsTr("High score: %n moves", "", toolbar.preferences.highScore)
        Image {
            source: "qrc:/icons/mdi/trophy.svg"
            sourceSize.width: 13
            sourceSize.height: 13
            anchors.verticalCenter: parent.verticalCenter
            opacity: 0.82
        }
        Text {
            text: toolbar.preferences.hasHighScore ? toolbar.preferences.highScore : ""
            font.pixelSize: 11
            font.weight: Font.DemiBold
            color: Qt.rgba(1, 0.84, 0.29, 0.82)
        }
    }
    // Whether the table can still be won, while the player asks to see it.
    Text {
        objectName: "winnabilityIndicator"
        readonly property int verdict: toolbar.solver !== null ? toolbar.solver.liveVerdict : SolverCommands.Verdict.Off
        visible: verdict !== SolverCommands.Verdict.Off
        Layout.leftMargin: 14
        text: verdict === SolverCommands.Verdict.Checking ? qsTr("Checking…")
            : verdict === SolverCommands.Verdict.Winnable ? qsTr("Can be won")
            : verdict === SolverCommands.Verdict.Lost ? qsTr("Lost")
            : qsTr("Undecided")
        font.pixelSize: 11
        font.weight: Font.DemiBold
        color: verdict === SolverCommands.Verdict.Winnable ? Qt.rgba(0.55, 0.9, 0.6, 0.9)
             : verdict === SolverCommands.Verdict.Lost ? Qt.rgba(1, 0.55, 0.5, 0.9)
             : Qt.rgba(1, 1, 1, 0.6)
        readonly property string accessibleName: qsTr("Winnability: %1").arg(text)
        Accessible.role: Accessible.StaticText
        Accessible.name: accessibleName
        Accessible.ignored: !visible
    }
    // The stretch between the title and the buttons, where a message can stand without hiding either.
    Item {
        id: freeStretch
        Layout.fillWidth: true
    }

    ToolbarButton {
        objectName: "undoButton"
        text: qsTr("Undo")
        iconName: "undo"
        isCompact: !toolbar.showsTitles
        visible: toolbar.preferences.showsUndo
        enabled: toolbar.board.canUndo
        onClicked: toolbar.board.undo()
    }
    ToolbarButton {
        objectName: "redoButton"
        text: qsTr("Redo")
        iconName: "redo"
        isCompact: !toolbar.showsTitles
        visible: toolbar.preferences.showsUndo
        enabled: toolbar.board.canRedo
        onClicked: toolbar.board.redo()
    }
    ToolbarButton {
        objectName: "hintButton"
        text: qsTr("Hint")
        iconName: "lightbulb-outline"
        isCompact: !toolbar.showsTitles
        visible: toolbar.preferences.showsHint
        onClicked: toolbar.board.showHint()
    }
    ToolbarButton {
        id: transferButton
        objectName: "gameTransferMenu"
        text: qsTr("Share")
        iconName: "share-variant"
        isCompact: !toolbar.showsTitles
        Accessible.name: qsTr("Share or open game")
        // Below the button, so that the menu never hides what opened it.
        onClicked: transferMenu.popup(transferButton, 0, transferButton.height)
        Menu {
            id: transferMenu
            MenuItem {
                objectName: "shareGameItem"
                text: qsTr("Share Game")
                icon.source: "qrc:/icons/mdi/export-variant.svg"
                enabled: toolbar.board.canShare
                // Each time where the last share went (or Documents, or home): a folder that exists.
                onTriggered: toolbar.openSharePanel(toolbar.board.gameFolder + "/Zelvaine Game.zelvaine")
            }
            MenuItem {
                objectName: "openGameItem"
                text: qsTr("Open Game…")
                icon.source: "qrc:/icons/mdi/folder-open-outline.svg"
                enabled: toolbar.board.confirmation === Confirmation.Kind.None
                onTriggered: toolbar.board.isImportingGame = true
            }
        }
    }
    ToolbarButton {
        text: qsTr("Restart")
        iconName: "restart"
        isCompact: !toolbar.showsTitles
        enabled: toolbar.board.hasProgress
        onClicked: toolbar.board.requestRestart()
    }
    ToolbarButton {
        text: qsTr("New")
        iconName: "refresh"
        isCompact: !toolbar.showsTitles
        onClicked: toolbar.board.requestNewGame()
    }
    ToolbarButton {
        objectName: "rulesButton"
        text: qsTr("Rules")
        iconName: "help-circle-outline"
        isCompact: !toolbar.showsTitles
        onClicked: toolbar.board.showRules = true
    }
    ToolbarButton {
        objectName: "settingsButton"
        text: qsTr("Settings")
        iconName: "cog-outline"
        isCompact: !toolbar.showsTitles
        onClicked: toolbar.preferences.showSettings = true
    }

    // The file panels are made when first asked for.
    Loader {
        id: saveDialog
        active: false
        sourceComponent: FileDialog {
            id: sharePanel
            // Qt's own panel, where the desktop has no file chooser: the game asks before it
            // replaces a file, as the desktop's choosers do themselves.
            property bool qtsOwnPanel: false
            fileMode: FileDialog.SaveFile
            acceptLabel: qsTr("Save")
            defaultSuffix: "zelvaine"
            nameFilters: [qsTr("Zelvaine games (*.zelvaine)")]
            onVisibleChanged: if (visible) qtsOwnPanel = QtFilePanel.teach(sharePanel)
            onAccepted: toolbar.share(sharePanel.selectedFile, qtsOwnPanel) // qmllint disable unqualified
        }
    }
    function openSharePanel(file: url) {
        saveDialog.active = true;
        const panel = saveDialog.item as FileDialog;
        const name = String(QtFilePanel.fileUrl(file));
        panel.currentFolder = name.substring(0, name.lastIndexOf("/"));
        panel.selectedFile = name;
        panel.open();
    }
    function share(file: url, askBeforeReplacing: bool) {
        if (askBeforeReplacing && QtFilePanel.wouldReplace(file)) {
            replaceQuestion.file = file;
            replaceQuestion.open();
        } else {
            toolbar.board.exportGame(file);
        }
    }

    QuestionDialog {
        id: replaceQuestion
        objectName: "replaceQuestion"
        property url file
        parent: Overlay.overlay
        title: qsTr("Replace “%1”?").arg(decodeURIComponent(String(file).split("/").pop()))
        message: qsTr("A file of that name is already there. Replacing it loses what it holds.")
        confirmText: qsTr("Replace")
        confirmName: "replaceConfirm"
        onAccepted: toolbar.board.exportGame(file)
        // Back to the panel, in the same folder with the same name, for another.
        onRejected: toolbar.openSharePanel(file)
    }
}
