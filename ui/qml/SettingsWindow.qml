pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Window
import Zelvaine

// Qt 6.4's linter does not know StandardKey: the line that names it says so.

// The settings: a fixed 620 × 590 window over the game. Every control writes straight through
// to the preferences; the privacy policy and acknowledgements open in place.
Window {
    id: settings

    required property PreferencesModel preferences
    // "1.0 (1)"; a dash when the build does not say.
    property string versionText: "—"
    // The update server, named by the privacy policy.
    property string updateHost: ""
    // The game window this one stands over, when it is a Qt Quick window.
    readonly property Window gameWindow: transientParent as Window

    objectName: "settingsWindow"
    title: qsTr("Settings")
    width: 620
    height: 590
    minimumWidth: 620
    maximumWidth: 620
    minimumHeight: 590
    maximumHeight: 590
    modality: Qt.WindowModal
    flags: Qt.Dialog
    color: "#161b18"
    visible: preferences.showSettings
    // Centred over the game window, whatever the window manager does with dialogs.
    function centreOverParent() {
        if (!transientParent) return;
        x = transientParent.x + (transientParent.width - width) / 2;
        y = transientParent.y + Math.max(0, (transientParent.height - height) / 3);
    }
    onVisibleChanged: if (visible) centreOverParent()
    onClosing: preferences.showSettings = false

    function close() { preferences.showSettings = false; }

    // A window of its own inherits nothing from the game window: take its dark colours, so that
    // buttons and switches here match the rest of the game.
    Binding {
        target: stack
        property: "palette"
        value: settings.gameWindow ? settings.gameWindow.contentItem.palette : null
        when: settings.gameWindow !== null && settings.gameWindow.contentItem !== null
    }
    StackView {
        id: stack
        objectName: "settingsStack"
        anchors.fill: parent

        // Plain property animations: they run wherever the window is drawn, offscreen too.
        pushEnter: Transition { NumberAnimation { property: "x"; from: stack.width; to: 0; duration: 220; easing.type: Easing.OutCubic } }
        pushExit: Transition { NumberAnimation { property: "x"; from: 0; to: -stack.width / 3; duration: 220; easing.type: Easing.OutCubic } }
        popEnter: Transition { NumberAnimation { property: "x"; from: -stack.width / 3; to: 0; duration: 220; easing.type: Easing.OutCubic } }
        popExit: Transition { NumberAnimation { property: "x"; from: 0; to: stack.width; duration: 220; easing.type: Easing.OutCubic } }
        initialItem: settingsPage
    }

    // Escape closes the window from whichever screen shows, like Done.
    Shortcut {
        sequences: [StandardKey.Cancel] // qmllint disable unqualified
        onActivated: settings.close()
    }

    // Each screen replaces the other, moving in as a push and back as a pop: a screen kept
    // beneath would be hidden but still in the accessibility tree, where a screen reader would
    // read the settings behind the privacy policy.
    Component {
        id: settingsPage
        SettingsPage {
            preferences: settings.preferences
            versionText: settings.versionText
            onDone: settings.close()
            onShowPrivacy: stack.replace(privacy, {}, StackView.PushTransition)
            onShowAcknowledgements: stack.replace(acknowledgements, {}, StackView.PushTransition)
        }
    }

    Component {
        id: privacy
        InfoScreen {
            objectName: "privacyPolicy"
            title: qsTr("Privacy Policy")
            onBack: stack.replace(settingsPage, {}, StackView.PopTransition)
            sections: [
                InfoSection {
                    paragraphs: [qsTr("Zelvaine does not collect, transmit, sell, or share personal data.")]
                },
                InfoSection {
                    header: qsTr("Information stored on this device")
                    paragraphs: [qsTr("Your current deal, preferences, move statistics, and high score are stored locally so the game can restore your progress. Zelvaine has no accounts, advertising, analytics, or tracking."),
                                 qsTr("This local information is kept in the folder %1. It stays there when you uninstall Zelvaine; delete that folder to remove it. It may be included in backups of your home folder.").arg(settings.preferences.dataFolder)]
                },
                InfoSection {
                    header: qsTr("Software updates")
                    // Only a build whose packager named a release feed has a server to name.
                    paragraphs: [settings.updateHost
                                 ? qsTr("Zelvaine connects to %1 only to check for software updates; a download opens in your web browser. It does not send an anonymous system profile.").arg(settings.updateHost)
                                 : qsTr("This copy of Zelvaine makes no network connection: it has no update feed and never checks for updates.")]
                },
                InfoSection {
                    header: qsTr("Permissions")
                    paragraphs: [qsTr("Zelvaine does not request access to your location, contacts, photos, camera, microphone, or other protected information.")]
                },
                InfoSection {
                    paragraphs: [qsTr("Effective 28 July 2026")]
                    secondary: true
                }
            ]
        }
    }

    Component {
        id: acknowledgements
        InfoScreen {
            objectName: "acknowledgements"
            title: qsTr("Acknowledgements")
            onBack: stack.replace(settingsPage, {}, StackView.PopTransition)
            sections: [
                InfoSection {
                    header: qsTr("Playing-card artwork")
                    paragraphs: [qsTr("The traditional playing-card faces are rendered from %1, the SVG edition by Letele Motebang of Adrian Kennard’s playing-card designs, released into the public domain under Creative Commons CC0.").arg("letele/playing-cards")]
                    linkText: qsTr("View source")
                    linkUrl: "https://github.com/letele/playing-cards"
                },
                InfoSection {
                    header: qsTr("App icon")
                    paragraphs: [qsTr("The Zelvaine icon is drawn for the game and uses traditional suit forms.")]
                },
                InfoSection {
                    header: qsTr("Sound effects")
                    paragraphs: [qsTr("Card sounds are synthesised for Zelvaine by its own sound generator; no recordings are used.")]
                },
                InfoSection {
                    header: qsTr("Icons")
                    paragraphs: [qsTr("Interface symbols are from Material Design Icons by Pictogrammers, licensed under the Apache License 2.0.")]
                    linkText: qsTr("Icon license")
                    linkUrl: "https://github.com/Templarian/MaterialDesign-SVG/blob/master/LICENSE"
                },
                InfoSection {
                    header: qsTr("Libraries")
                    paragraphs: [qsTr("Zelvaine is built with these libraries, each under its own licence:"),
                                 qsTr("Qt 6 by The Qt Company and the Qt Project: GNU Lesser General Public License, version 3."),
                                 qsTr("OpenAL Soft by Chris Robinson and contributors: GNU Library General Public License, version 2 or later."),
                                 qsTr("libsndfile by Erik de Castro Lopo and contributors: GNU Lesser General Public License, version 2.1 or later."),
                                 qsTr("SQLite: dedicated to the public domain."),
                                 qsTr("simdjson by Daniel Lemire, Geoff Langdale and contributors: Apache License 2.0."),
                                 qsTr("Asio by Christopher M. Kohlhoff: Boost Software License 1.0."),
                                 qsTr("libuuid from util-linux by Theodore Ts’o: BSD 3-Clause License.")]
                    linkText: qsTr("Qt’s licence terms")
                    linkUrl: "https://doc.qt.io/qt-6/lgpl.html"
                },
                InfoSection {
                    header: qsTr("Software updates")
                    paragraphs: [qsTr("Zelvaine’s update checker is its own: it reads only the release feed that its packager names, if any, and sends nothing about you or your system.")]
                }
            ]
        }
    }
}
