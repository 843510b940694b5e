<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AutoCompleteBadge</name>
    <message>
        <source>Auto-completing…</source>
        <translation>Wird automatisch abgeschlossen…</translation>
    </message>
    <message numerus="yes">
        <source>%n moves</source>
        <translation>
            <numerusform>%n Zug</numerusform>
            <numerusform>%n Züge</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BoardToolbar</name>
    <message>
        <source>Two-deck challenge</source>
        <translation>Herausforderung mit zwei Decks</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Hint</source>
        <translation>Tipp</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>Share or open game</source>
        <translation>Spiel teilen oder öffnen</translation>
    </message>
    <message>
        <source>Share Game</source>
        <translation>Spiel teilen</translation>
    </message>
    <message>
        <source>Open Game…</source>
        <translation>Spiel öffnen…</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Neustart</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Zelvaine games (*.zelvaine)</source>
        <translation>Zelvaine-Spiele (*.zelvaine)</translation>
    </message>
    <message>
        <source>Rules</source>
        <translation>Regeln</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message numerus="yes">
        <source>%n moves</source>
        <translation>
            <numerusform>%n Zug</numerusform>
            <numerusform>%n Züge</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>High score: %n moves</source>
        <translation>
            <numerusform>Bestwert: %n Zug</numerusform>
            <numerusform>Bestwert: %n Züge</numerusform>
        </translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Checking…</source>
        <translation>Wird geprüft…</translation>
    </message>
    <message>
        <source>Can be won</source>
        <translation>Zu gewinnen</translation>
    </message>
    <message>
        <source>Lost</source>
        <translation>Verloren</translation>
    </message>
    <message>
        <source>Undecided</source>
        <translation>Unentschieden</translation>
    </message>
    <message>
        <source>Winnability: %1</source>
        <translation>Gewinnbarkeit: %1</translation>
    </message>
    <message>
        <source>Replace “%1”?</source>
        <translation>„%1“ ersetzen?</translation>
    </message>
    <message>
        <source>A file of that name is already there. Replacing it loses what it holds.</source>
        <translation>Eine Datei mit diesem Namen gibt es hier schon. Beim Ersetzen geht ihr Inhalt verloren.</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
</context>
<context>
    <name>CardView</name>
    <message>
        <source>Selected</source>
        <translation>Ausgewählt</translation>
    </message>
    <message>
        <source>Not selected</source>
        <translation>Nicht ausgewählt</translation>
    </message>
</context>
<context>
    <name>FoundationArea</name>
    <message>
        <source>FOUNDATIONS</source>
        <translation>ABLAGESTAPEL</translation>
    </message>
</context>
<context>
    <name>GameView</name>
    <message>
        <source>Zelvaine games (*.zelvaine)</source>
        <translation>Zelvaine-Spiele (*.zelvaine)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>HandArea</name>
    <message>
        <source>HAND</source>
        <translation>HAND</translation>
    </message>
</context>
<context>
    <name>InfoScreen</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>About Zelvaine</source>
        <translation>Über Zelvaine</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen…</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>Einstellungen…</translation>
    </message>
    <message>
        <source>Quit Zelvaine</source>
        <translation>Zelvaine beenden</translation>
    </message>
    <message>
        <source>Open Game…</source>
        <translation>Spiel öffnen…</translation>
    </message>
    <message>
        <source>New Game</source>
        <translation>Neues Spiel</translation>
    </message>
    <message>
        <source>Restart Game</source>
        <translation>Spiel neu starten</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>Hint</source>
        <translation>Tipp</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>A two-deck patience game.</source>
        <translation>Eine Patience mit zwei Kartenspielen.</translation>
    </message>
    <message>
        <source>A new version of Zelvaine is available</source>
        <translation>Eine neue Version von Zelvaine ist verfügbar</translation>
    </message>
    <message>
        <source>You’re up to date</source>
        <translation>Du bist auf dem neuesten Stand</translation>
    </message>
    <message>
        <source>Zelvaine could not check for updates</source>
        <translation>Zelvaine konnte nicht nach Updates suchen</translation>
    </message>
    <message>
        <source>Zelvaine %1 is available; you have %2.</source>
        <translation>Zelvaine %1 ist verfügbar; du hast %2.</translation>
    </message>
    <message>
        <source>Zelvaine %1 is the newest version.</source>
        <translation>Zelvaine %1 ist die neueste Version.</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Herunterladen</translation>
    </message>
    <message>
        <source>Release Notes</source>
        <translation>Versionshinweise</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Checking for Updates…</source>
        <translation>Suche nach Updates …</translation>
    </message>
    <message>
        <source>Asking %1 for the newest version of Zelvaine.</source>
        <translation>Zelvaine fragt %1 nach der neuesten Version.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Stop Checking</source>
        <translation>Prüfung abbrechen</translation>
    </message>
    <message>
        <source>Can This Deal Be Won?</source>
        <translation>Ist dieses Spiel zu gewinnen?</translation>
    </message>
    <message>
        <source>Stop Searching</source>
        <translation>Suche abbrechen</translation>
    </message>
    <message>
        <source>Undo to Last Winnable Position</source>
        <translation>Bis zur letzten gewinnbaren Stellung zurücknehmen</translation>
    </message>
    <message>
        <source>Stop Looking for a Move</source>
        <translation>Zugsuche abbrechen</translation>
    </message>
    <message>
        <source>Show a Winning Move</source>
        <translation>Einen Gewinnzug zeigen</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Solver</source>
        <translation>&amp;Solver</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
</context>
<context>
    <name>MessageToast</name>
    <message>
        <source>Game message: %1</source>
        <translation>Spielmeldung: %1</translation>
    </message>
</context>
<context>
    <name>PlaceSlot</name>
    <message>
        <source>Tap to select, double tap to play an unambiguous move, or drag</source>
        <translation>Tippen zum Auswählen, doppelt tippen für einen eindeutigen Zug oder ziehen</translation>
    </message>
    <message>
        <source>Empty hand slot %1</source>
        <translation>Leerer Handplatz %1</translation>
    </message>
    <message>
        <source>Foundation %1</source>
        <translation>Ablagestapel %1</translation>
    </message>
</context>
<context>
    <name>QuestionDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>RulesView</name>
    <message>
        <source>How to Play</source>
        <translation>So wird gespielt</translation>
    </message>
    <message>
        <source>Set up &amp; goal</source>
        <translation>Aufbau &amp; Ziel</translation>
    </message>
    <message>
        <source>Two complete decks are dealt face-up into ten columns of ten cards. Four cards begin in your hand. Win by moving every suit from ace through king onto the eight foundations.</source>
        <translation>Zwei vollständige Kartenspiele werden offen in zehn Spalten zu je zehn Karten ausgeteilt. Vier Karten liegen zu Beginn in deiner Hand. Du gewinnst, wenn jede Farbe vom Ass bis zum König auf den acht Ablagestapeln liegt.</translation>
    </message>
    <message>
        <source>Build the columns</source>
        <translation>Spalten bauen</translation>
    </message>
    <message>
        <source>Place a card on the lowest card of another column only when it is one rank lower and the opposite color. A correctly descending, alternating-color string moves as one. Only a king—or a string beginning with a king—may fill an empty column.</source>
        <translation>Eine Karte darf nur dann auf die unterste Karte einer anderen Spalte gelegt werden, wenn sie einen Rang niedriger ist und die Gegenfarbe hat: Rot auf Schwarz, Schwarz auf Rot. Eine richtig absteigende Reihe in wechselnden Farben wird als Ganzes bewegt. Nur ein König – oder eine Reihe, die mit einem König beginnt – darf eine leere Spalte füllen.</translation>
    </message>
    <message>
        <source>Build the foundations</source>
        <translation>Ablagestapel bauen</translation>
    </message>
    <message>
        <source>Begin each foundation with an ace, then build upward in the same suit: 2, 3, and so on through king. Only the lowest exposed card of a column, or one card from your hand, may move to a foundation. The top foundation card may move back to a legal column or a free hand space.</source>
        <translation>Beginne jeden Ablagestapel mit einem Ass und baue dann in derselben Farbe aufwärts: 2, 3 und so weiter bis zum König. Nur die unterste freie Karte einer Spalte oder eine Karte aus deiner Hand darf auf einen Ablagestapel gelegt werden. Die oberste Karte eines Ablagestapels darf zurück auf eine passende Spalte oder einen freien Handplatz.</translation>
    </message>
    <message>
        <source>Use your hand</source>
        <translation>Die Hand nutzen</translation>
    </message>
    <message>
        <source>Your hand holds at most four cards. Move the lowest card of any column or the top card of a foundation into a free hand space. A hand card may move to a legal column or foundation.</source>
        <translation>Deine Hand fasst höchstens vier Karten. Lege die unterste Karte einer beliebigen Spalte oder die oberste Karte eines Ablagestapels auf einen freien Handplatz. Eine Karte aus der Hand darf auf eine passende Spalte oder einen passenden Ablagestapel.</translation>
    </message>
    <message>
        <source>Tap a movable card, then tap its destination.</source>
        <translation>Tippe auf eine bewegliche Karte und dann auf ihr Ziel.</translation>
    </message>
    <message>
        <source>Or drag a card or valid string directly.</source>
        <translation>Oder ziehe eine Karte oder eine gültige Reihe direkt an ihren Platz.</translation>
    </message>
    <message>
        <source>Double-tap a movable card or string to play its only legal destination. Foundations are preferred.</source>
        <translation>Tippe doppelt auf eine bewegliche Karte oder Reihe, um sie auf ihr einziges mögliches Ziel zu spielen. Ablagestapel haben Vorrang.</translation>
    </message>
    <message>
        <source>Use Hint to highlight one available move.</source>
        <translation>Mit „Tipp“ wird ein möglicher Zug hervorgehoben.</translation>
    </message>
    <message>
        <source>Restart returns every card to the beginning of the current deal without reshuffling.</source>
        <translation>„Neustart“ bringt alle Karten ohne neues Mischen an den Anfang des aktuellen Spiels zurück.</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Controls</source>
        <translation>Bedienung</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Show Hint</source>
        <translation>„Tipp“ anzeigen</translation>
    </message>
    <message>
        <source>Show Undo &amp; Redo</source>
        <translation>„Rückgängig“ und „Wiederholen“ anzeigen</translation>
    </message>
    <message>
        <source>Landscape Layout</source>
        <translation>Querformat</translation>
    </message>
    <message>
        <source>Hand Position</source>
        <translation>Position der Hand</translation>
    </message>
    <message>
        <source>Places the hand on the selected side in horizontal layouts.</source>
        <translation>Legt die Hand im Querformat auf die gewählte Seite.</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Feedback</source>
        <translation>Rückmeldungen</translation>
    </message>
    <message>
        <source>Sounds</source>
        <translation>Töne</translation>
    </message>
    <message>
        <source>Show invalid move messages</source>
        <translation>Hinweise bei ungültigen Zügen anzeigen</translation>
    </message>
    <message>
        <source>Shows an explanation when a move is invalid. Requested hints remain visible.</source>
        <translation>Erklärt, warum ein Zug nicht möglich ist. Angeforderte Tipps werden weiterhin angezeigt.</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>Games played</source>
        <translation>Gespielt</translation>
    </message>
    <message>
        <source>Games won</source>
        <translation>Gewonnen</translation>
    </message>
    <message>
        <source>Games lost</source>
        <translation>Verloren</translation>
    </message>
    <message>
        <source>Best game</source>
        <translation>Bestes Spiel</translation>
    </message>
    <message>
        <source>Privacy Policy</source>
        <translation>Datenschutzerklärung</translation>
    </message>
    <message>
        <source>Acknowledgements</source>
        <translation>Danksagungen</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message numerus="yes">
        <source>%n moves</source>
        <translation>
            <numerusform>%n Zug</numerusform>
            <numerusform>%n Züge</numerusform>
        </translation>
    </message>
    <message>
        <source>Solver</source>
        <translation>Solver</translation>
    </message>
    <message>
        <source>Show whether the deal can be won</source>
        <translation>Zeigen, ob das Spiel zu gewinnen ist</translation>
    </message>
    <message>
        <source>The toolbar tells, after every move, whether the position can still be won.</source>
        <translation>Die Werkzeugleiste zeigt nach jedem Zug, ob die Stellung noch zu gewinnen ist.</translation>
    </message>
    <message>
        <source>Deal only winnable games</source>
        <translation>Nur gewinnbare Spiele austeilen</translation>
    </message>
    <message>
        <source>New games are deals the solver has proven can be won.</source>
        <translation>Neue Spiele sind Verteilungen, die der Solver als gewinnbar nachgewiesen hat.</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Privacy Policy</source>
        <translation>Datenschutzerklärung</translation>
    </message>
    <message>
        <source>Zelvaine does not collect, transmit, sell, or share personal data.</source>
        <translation>Zelvaine erhebt, überträgt, verkauft und teilt keine personenbezogenen Daten.</translation>
    </message>
    <message>
        <source>Information stored on this device</source>
        <translation>Auf diesem Gerät gespeicherte Daten</translation>
    </message>
    <message>
        <source>Your current deal, preferences, move statistics, and high score are stored locally so the game can restore your progress. Zelvaine has no accounts, advertising, analytics, or tracking.</source>
        <translation>Dein aktuelles Spiel, deine Einstellungen, Zugstatistiken und dein Bestwert werden lokal gespeichert, damit das Spiel deinen Fortschritt wiederherstellen kann. Zelvaine hat keine Konten, keine Werbung, keine Analysen und kein Tracking.</translation>
    </message>
    <message>
        <source>Software updates</source>
        <translation>Software-Updates</translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation>Berechtigungen</translation>
    </message>
    <message>
        <source>Zelvaine does not request access to your location, contacts, photos, camera, microphone, or other protected information.</source>
        <translation>Zelvaine fordert keinen Zugriff auf deinen Standort, deine Kontakte, Fotos, Kamera, dein Mikrofon oder andere geschützte Daten an.</translation>
    </message>
    <message>
        <source>Effective 28 July 2026</source>
        <translation>Gültig ab 28. Juli 2026</translation>
    </message>
    <message>
        <source>Acknowledgements</source>
        <translation>Danksagungen</translation>
    </message>
    <message>
        <source>Playing-card artwork</source>
        <translation>Kartenbilder</translation>
    </message>
    <message>
        <source>The traditional playing-card faces are rendered from %1, the SVG edition by Letele Motebang of Adrian Kennard’s playing-card designs, released into the public domain under Creative Commons CC0.</source>
        <translation>Die traditionellen Kartenbilder werden aus %1 erzeugt, der SVG-Ausgabe von Adrian Kennards Spielkartenentwürfen durch Letele Motebang, die unter Creative Commons CC0 gemeinfrei veröffentlicht ist.</translation>
    </message>
    <message>
        <source>View source</source>
        <translation>Quelle ansehen</translation>
    </message>
    <message>
        <source>App icon</source>
        <translation>App-Symbol</translation>
    </message>
    <message>
        <source>The Zelvaine icon is drawn for the game and uses traditional suit forms.</source>
        <translation>Das Zelvaine-Symbol wurde für das Spiel gezeichnet und verwendet die traditionellen Formen der Kartenfarben.</translation>
    </message>
    <message>
        <source>Sound effects</source>
        <translation>Soundeffekte</translation>
    </message>
    <message>
        <source>Card sounds are synthesised for Zelvaine by its own sound generator; no recordings are used.</source>
        <translation>Die Kartengeräusche erzeugt Zelvaines eigener Klanggenerator; es werden keine Aufnahmen verwendet.</translation>
    </message>
    <message>
        <source>Icons</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <source>Interface symbols are from Material Design Icons by Pictogrammers, licensed under the Apache License 2.0.</source>
        <translation>Die Symbole der Oberfläche stammen aus Material Design Icons von Pictogrammers und stehen unter der Apache License 2.0.</translation>
    </message>
    <message>
        <source>Icon license</source>
        <translation>Symbollizenz</translation>
    </message>
    <message>
        <source>This local information is kept in the folder %1. It stays there when you uninstall Zelvaine; delete that folder to remove it. It may be included in backups of your home folder.</source>
        <translation>Diese lokalen Daten liegen im Ordner %1. Sie bleiben dort, wenn du Zelvaine deinstallierst; lösche diesen Ordner, um sie zu entfernen. Sie können in Sicherungen deines persönlichen Ordners enthalten sein.</translation>
    </message>
    <message>
        <source>Zelvaine connects to %1 only to check for software updates; a download opens in your web browser. It does not send an anonymous system profile.</source>
        <translation>Zelvaine verbindet sich nur mit %1, um nach Softwareupdates zu suchen; ein Download öffnet sich in deinem Webbrowser. Es wird kein anonymes Systemprofil gesendet.</translation>
    </message>
    <message>
        <source>This copy of Zelvaine makes no network connection: it has no update feed and never checks for updates.</source>
        <translation>Diese Kopie von Zelvaine baut keine Netzwerkverbindung auf: Sie hat keinen Update-Feed und sucht nie nach Updates.</translation>
    </message>
    <message>
        <source>Libraries</source>
        <translation>Bibliotheken</translation>
    </message>
    <message>
        <source>Zelvaine is built with these libraries, each under its own licence:</source>
        <translation>Zelvaine verwendet diese Bibliotheken, jede unter ihrer eigenen Lizenz:</translation>
    </message>
    <message>
        <source>Qt 6 by The Qt Company and the Qt Project: GNU Lesser General Public License, version 3.</source>
        <translation>Qt 6 von The Qt Company und dem Qt Project: GNU Lesser General Public License, Version 3.</translation>
    </message>
    <message>
        <source>OpenAL Soft by Chris Robinson and contributors: GNU Library General Public License, version 2 or later.</source>
        <translation>OpenAL Soft von Chris Robinson und Mitwirkenden: GNU Library General Public License, Version 2 oder neuer.</translation>
    </message>
    <message>
        <source>libsndfile by Erik de Castro Lopo and contributors: GNU Lesser General Public License, version 2.1 or later.</source>
        <translation>libsndfile von Erik de Castro Lopo und Mitwirkenden: GNU Lesser General Public License, Version 2.1 oder neuer.</translation>
    </message>
    <message>
        <source>SQLite: dedicated to the public domain.</source>
        <translation>SQLite: gemeinfrei.</translation>
    </message>
    <message>
        <source>simdjson by Daniel Lemire, Geoff Langdale and contributors: Apache License 2.0.</source>
        <translation>simdjson von Daniel Lemire, Geoff Langdale und Mitwirkenden: Apache License 2.0.</translation>
    </message>
    <message>
        <source>Asio by Christopher M. Kohlhoff: Boost Software License 1.0.</source>
        <translation>Asio von Christopher M. Kohlhoff: Boost Software License 1.0.</translation>
    </message>
    <message>
        <source>libuuid from util-linux by Theodore Ts’o: BSD 3-Clause License.</source>
        <translation>libuuid aus util-linux von Theodore Ts’o: BSD-3-Clause-Lizenz.</translation>
    </message>
    <message>
        <source>Qt’s licence terms</source>
        <translation>Lizenzbedingungen von Qt</translation>
    </message>
    <message>
        <source>Zelvaine’s update checker is its own: it reads only the release feed that its packager names, if any, and sends nothing about you or your system.</source>
        <translation>Zelvaine sucht mit einer eigenen Updateprüfung nach Updates: Sie liest nur den Release-Feed, den ihr Paketersteller angibt, falls es einen gibt, und sendet nichts über dich oder dein System.</translation>
    </message>
</context>
<context>
    <name>SharedGameFiles</name>
    <message>
        <source>The game was not shared: the folder “%1” does not exist.</source>
        <translation>Das Spiel wurde nicht geteilt: Den Ordner „%1“ gibt es nicht.</translation>
    </message>
    <message>
        <source>The game was not shared: the disk is full.</source>
        <translation>Das Spiel wurde nicht geteilt: Der Datenträger ist voll.</translation>
    </message>
    <message>
        <source>The game was not shared: “%1” cannot be written to.</source>
        <translation>Das Spiel wurde nicht geteilt: „%1“ ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>The game was not shared: “%1” could not be written (%2).</source>
        <translation>Das Spiel wurde nicht geteilt: „%1“ konnte nicht geschrieben werden (%2).</translation>
    </message>
    <message>
        <source>Game shared as “%1” in %2.</source>
        <translation>Spiel als „%1“ in %2 geteilt.</translation>
    </message>
</context>
<context>
    <name>SourceMoveMenu</name>
    <message>
        <source>Move to Foundation</source>
        <translation>Auf Ablagestapel legen</translation>
    </message>
    <message>
        <source>Move to Hand</source>
        <translation>In die Hand nehmen</translation>
    </message>
    <message>
        <source>Move to Column</source>
        <translation>Auf Spalte legen</translation>
    </message>
    <message>
        <source>Column %1</source>
        <translation>Spalte %1</translation>
    </message>
</context>
<context>
    <name>TableauColumn</name>
    <message>
        <source>Column %1, %2 cards</source>
        <translation>Spalte %1, %2 Karten</translation>
    </message>
    <message>
        <source>Tap to select, double tap to play an unambiguous move, or drag this card and its valid string</source>
        <translation>Tippen zum Auswählen, doppelt tippen für einen eindeutigen Zug oder diese Karte samt gültiger Reihe ziehen</translation>
    </message>
    <message>
        <source>This card is blocked</source>
        <translation>Diese Karte ist blockiert</translation>
    </message>
    <message>
        <source>Selected</source>
        <translation>Ausgewählt</translation>
    </message>
    <message>
        <source>Not selected</source>
        <translation>Nicht ausgewählt</translation>
    </message>
</context>
<context>
    <name>UpdateFeed</name>
    <message>
        <source>The update feed declares a document type, which is not accepted.</source>
        <translation>Der Update-Feed deklariert einen Dokumenttyp; das wird nicht angenommen.</translation>
    </message>
    <message>
        <source>The update server sent an empty answer.</source>
        <translation>Der Update-Server hat eine leere Antwort geschickt.</translation>
    </message>
    <message>
        <source>The update feed is not valid XML.</source>
        <translation>Der Update-Feed ist kein gültiges XML.</translation>
    </message>
    <message>
        <source>The update server did not send a release feed.</source>
        <translation>Der Update-Server hat keinen Versions-Feed geschickt.</translation>
    </message>
    <message>
        <source>The update feed is damaged (line %1: %2).</source>
        <translation>Der Update-Feed ist beschädigt (Zeile %1: %2).</translation>
    </message>
    <message>
        <source>The update feed lists no releases.</source>
        <translation>Der Update-Feed nennt keine Versionen.</translation>
    </message>
    <message>
        <source>The update feed lists no release with a readable version and address.</source>
        <translation>Der Update-Feed nennt keine Version mit lesbarer Nummer und Adresse.</translation>
    </message>
    <message>
        <source>The address &quot;%1&quot; is not valid.</source>
        <translation>Die Adresse „%1“ ist ungültig.</translation>
    </message>
    <message>
        <source>Updates are only fetched over HTTPS; &quot;%1&quot; was refused.</source>
        <translation>Updates werden nur über HTTPS geladen; „%1“ wurde abgelehnt.</translation>
    </message>
    <message>
        <source>The update configuration is damaged: %1</source>
        <translation>Die Update-Konfiguration ist beschädigt: %1</translation>
    </message>
    <message>
        <source>The update configuration %1 could not be read.</source>
        <translation>Die Update-Konfiguration %1 konnte nicht gelesen werden.</translation>
    </message>
</context>
<context>
    <name>WinOverlay</name>
    <message>
        <source>Zelvaine Complete</source>
        <translation>Zelvaine geschafft</translation>
    </message>
    <message>
        <source>Play Again</source>
        <translation>Noch einmal spielen</translation>
    </message>
    <message>
        <source>Zelvaine Complete: %1 %2</source>
        <translation>Zelvaine geschafft: %1 %2</translation>
    </message>
</context>
<context>
    <name>Zelvaine</name>
    <message>
        <source>clubs</source>
        <translation>Kreuz</translation>
    </message>
    <message>
        <source>diamonds</source>
        <translation>Karo</translation>
    </message>
    <message>
        <source>hearts</source>
        <translation>Herz</translation>
    </message>
    <message>
        <source>spades</source>
        <translation>Pik</translation>
    </message>
    <message>
        <source>ace</source>
        <translation>Ass</translation>
    </message>
    <message>
        <source>two</source>
        <translation>Zwei</translation>
    </message>
    <message>
        <source>three</source>
        <translation>Drei</translation>
    </message>
    <message>
        <source>four</source>
        <translation>Vier</translation>
    </message>
    <message>
        <source>five</source>
        <translation>Fünf</translation>
    </message>
    <message>
        <source>six</source>
        <translation>Sechs</translation>
    </message>
    <message>
        <source>seven</source>
        <translation>Sieben</translation>
    </message>
    <message>
        <source>eight</source>
        <translation>Acht</translation>
    </message>
    <message>
        <source>nine</source>
        <translation>Neun</translation>
    </message>
    <message>
        <source>ten</source>
        <translation>Zehn</translation>
    </message>
    <message>
        <source>jack</source>
        <translation>Bube</translation>
    </message>
    <message>
        <source>queen</source>
        <translation>Dame</translation>
    </message>
    <message>
        <source>king</source>
        <translation>König</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>Accessible playing-card name, for example “queen of hearts”.</extracomment>
        <translation>%2-%1</translation>
    </message>
    <message>
        <source>Move %1 to foundation %2.</source>
        <translation>%1 auf Ablagestapel %2 legen.</translation>
    </message>
    <message>
        <source>Move %1 to column %2.</source>
        <translation>%1 auf Spalte %2 legen.</translation>
    </message>
    <message>
        <source>Move %1 and its string to column %2.</source>
        <translation>%1 samt Reihe auf Spalte %2 legen.</translation>
    </message>
    <message>
        <source>Move %1 to your hand.</source>
        <translation>%1 in die Hand nehmen.</translation>
    </message>
    <message>
        <source>No immediate move found. Undo or start a new deal.</source>
        <translation>Kein direkter Zug gefunden. Mach einen Zug rückgängig oder beginne ein neues Spiel.</translation>
    </message>
    <message>
        <source>Try moving a lowest tableau card into your hand.</source>
        <translation>Nimm die unterste Karte einer Spalte in die Hand.</translation>
    </message>
    <message>
        <source>No foundation can accept %1.</source>
        <translation>Kein Ablagestapel kann %1 aufnehmen.</translation>
    </message>
    <message>
        <source>That move is not available.</source>
        <translation>Dieser Zug ist nicht möglich.</translation>
    </message>
    <message>
        <source>Only a king or a string beginning with a king can fill an empty column.</source>
        <translation>Nur ein König oder eine Reihe, die mit einem König beginnt, kann eine leere Spalte füllen.</translation>
    </message>
    <message>
        <source>next rank</source>
        <translation>eine nächsthöhere Karte</translation>
    </message>
    <message>
        <source>%1 must land on an opposite-color %2. %3 cannot accept it.</source>
        <translation>%1 kann nur auf %2 der Gegenfarbe gelegt werden. %3 passt nicht.</translation>
    </message>
    <message>
        <source>That foundation already has a card.</source>
        <translation>Auf diesem Ablagestapel liegt schon eine Karte.</translation>
    </message>
    <message>
        <source>Foundations build upward in the same suit, beginning with an ace.</source>
        <translation>Ablagestapel werden in derselben Farbe aufwärts gebaut, beginnend mit einem Ass.</translation>
    </message>
    <message>
        <source>Your hand can hold at most four cards.</source>
        <translation>Deine Hand fasst höchstens vier Karten.</translation>
    </message>
    <message>
        <source>That card is not available.</source>
        <translation>Diese Karte ist nicht spielbar.</translation>
    </message>
    <message>
        <source>Only one card at a time can move to a foundation.</source>
        <translation>Auf einen Ablagestapel darf nur jeweils eine Karte gelegt werden.</translation>
    </message>
    <message>
        <source>Only the lowest card of a column or the top card of a foundation can move to your hand.</source>
        <translation>Nur die unterste Karte einer Spalte oder die oberste Karte eines Ablagestapels darf in deine Hand.</translation>
    </message>
    <message>
        <source>Start a new game?</source>
        <translation>Neues Spiel beginnen?</translation>
    </message>
    <message>
        <source>The current deal and undo history will be cleared.</source>
        <translation>Das aktuelle Spiel und alle Züge zum Rückgängigmachen werden verworfen.</translation>
    </message>
    <message>
        <source>New Game</source>
        <translation>Neues Spiel</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Restart this game?</source>
        <translation>Dieses Spiel neu starten?</translation>
    </message>
    <message>
        <source>Return every card to this deal&apos;s original position. You can undo this restart.</source>
        <translation>Alle Karten kehren in die Ausgangsstellung dieses Spiels zurück. Du kannst den Neustart rückgängig machen.</translation>
    </message>
    <message>
        <source>Restart Game</source>
        <translation>Spiel neu starten</translation>
    </message>
    <message>
        <source>Finish automatically?</source>
        <translation>Automatisch zu Ende spielen?</translation>
    </message>
    <message>
        <source>Every remaining card can now move directly to a foundation. Zelvaine can play those moves for you.</source>
        <translation>Jede verbleibende Karte kann jetzt direkt auf einen Ablagestapel. Zelvaine kann diese Züge für dich spielen.</translation>
    </message>
    <message>
        <source>Auto Complete</source>
        <translation>Automatisch abschließen</translation>
    </message>
    <message>
        <source>Keep Playing</source>
        <translation>Weiterspielen</translation>
    </message>
    <message>
        <source>Open shared game?</source>
        <translation>Geteiltes Spiel öffnen?</translation>
    </message>
    <message>
        <source>Your current game will be replaced. The shared game will start with a new Undo history.</source>
        <translation>Dein aktuelles Spiel wird ersetzt. Das geteilte Spiel beginnt ohne Züge zum Rückgängigmachen.</translation>
    </message>
    <message>
        <source>Open Game</source>
        <translation>Spiel öffnen</translation>
    </message>
    <message>
        <source>Zelvaine could not open that game file.</source>
        <translation>Zelvaine konnte diese Spieldatei nicht öffnen.</translation>
    </message>
    <message>
        <source>This game uses unsupported Zelvaine file format version %1.</source>
        <translation>Dieses Spiel verwendet die nicht unterstützte Version %1 des Zelvaine-Dateiformats.</translation>
    </message>
    <message>
        <source>This Zelvaine game file is too large to open.</source>
        <translation>Diese Zelvaine-Spieldatei ist zu groß zum Öffnen.</translation>
    </message>
    <message>
        <source>This file does not contain a valid Zelvaine game.</source>
        <translation>Diese Datei enthält kein gültiges Zelvaine-Spiel.</translation>
    </message>
    <message>
        <source>That card cannot be dropped there.</source>
        <translation>Diese Karte kann dort nicht abgelegt werden.</translation>
    </message>
    <message>
        <source>Perfect efficiency — every move sent a card home.</source>
        <translation>Vollkommene Effizienz – jeder Zug brachte eine Karte ans Ziel.</translation>
    </message>
    <message>
        <source>The mathematical floor — not one move to spare.</source>
        <translation>Das mathematische Minimum – kein einziger Zug zu viel.</translation>
    </message>
    <message>
        <source>One hundred and four cards in one hundred and four moves. Flawless.</source>
        <translation>Hundertvier Karten in hundertvier Zügen. Makellos.</translation>
    </message>
    <message>
        <source>Extraordinary — within sight of the mathematical minimum.</source>
        <translation>Außergewöhnlich – in Sichtweite des mathematischen Minimums.</translation>
    </message>
    <message>
        <source>Exceptional play — almost every move sent a card home.</source>
        <translation>Herausragend gespielt – fast jeder Zug brachte eine Karte ans Ziel.</translation>
    </message>
    <message>
        <source>A remarkably direct route through two full decks.</source>
        <translation>Ein bemerkenswert direkter Weg durch zwei volle Kartenspiele.</translation>
    </message>
    <message>
        <source>Masterful play — remarkably close to the minimum.</source>
        <translation>Meisterhaft gespielt – erstaunlich nah am Minimum.</translation>
    </message>
    <message>
        <source>Superb efficiency — very little motion went to waste.</source>
        <translation>Glänzende Effizienz – kaum ein Handgriff war vergeudet.</translation>
    </message>
    <message>
        <source>A precise, economical finish.</source>
        <translation>Ein präziser, sparsamer Abschluss.</translation>
    </message>
    <message>
        <source>Brilliantly efficient — a beautifully lean game.</source>
        <translation>Brillant effizient – ein wunderbar schlankes Spiel.</translation>
    </message>
    <message>
        <source>Excellent economy — that deal unfolded cleanly.</source>
        <translation>Hervorragend sparsam – dieses Spiel ging glatt auf.</translation>
    </message>
    <message>
        <source>A crisp route from tableau to foundations.</source>
        <translation>Ein klarer Weg von den Spalten zu den Ablagestapeln.</translation>
    </message>
    <message>
        <source>Excellent work — you kept every move purposeful.</source>
        <translation>Ausgezeichnet – jeder deiner Züge hatte ein Ziel.</translation>
    </message>
    <message>
        <source>A polished game with a very tidy finish.</source>
        <translation>Ein ausgefeiltes Spiel mit einem sehr sauberen Abschluss.</translation>
    </message>
    <message>
        <source>Smart choices and a clean result.</source>
        <translation>Kluge Entscheidungen und ein sauberes Ergebnis.</translation>
    </message>
    <message>
        <source>That was controlled, efficient play.</source>
        <translation>Das war kontrolliert und effizient gespielt.</translation>
    </message>
    <message>
        <source>Very well played — a strong, efficient finish.</source>
        <translation>Sehr gut gespielt – ein starker, effizienter Abschluss.</translation>
    </message>
    <message>
        <source>A sharp finish — that deal stayed under control.</source>
        <translation>Ein souveräner Abschluss – dieses Spiel hattest du im Griff.</translation>
    </message>
    <message>
        <source>Clean work — comfortably below two hundred moves.</source>
        <translation>Saubere Arbeit – deutlich unter zweihundert Zügen.</translation>
    </message>
    <message>
        <source>Nicely managed from first card to last.</source>
        <translation>Schön gemeistert, von der ersten bis zur letzten Karte.</translation>
    </message>
    <message>
        <source>Strong play — you found a tidy route through.</source>
        <translation>Stark gespielt – du hast einen sauberen Weg hindurch gefunden.</translation>
    </message>
    <message>
        <source>That was efficient, composed, and complete.</source>
        <translation>Das war effizient, gelassen und vollständig.</translation>
    </message>
    <message>
        <source>Well judged — you kept the deal moving.</source>
        <translation>Gut überlegt – du hast das Spiel in Bewegung gehalten.</translation>
    </message>
    <message>
        <source>A confident finish with little wasted motion.</source>
        <translation>Ein sicherer Abschluss mit kaum einem überflüssigen Zug.</translation>
    </message>
    <message>
        <source>Nicely done — you handled a demanding deal.</source>
        <translation>Schön gemacht – du hast ein anspruchsvolles Spiel gemeistert.</translation>
    </message>
    <message>
        <source>Good game — the foundations came together nicely.</source>
        <translation>Gutes Spiel – die Ablagestapel haben sich schön gefüllt.</translation>
    </message>
    <message>
        <source>Solid play — you kept finding the next step.</source>
        <translation>Solide gespielt – du hast immer wieder den nächsten Schritt gefunden.</translation>
    </message>
    <message>
        <source>A well-earned win from a complicated layout.</source>
        <translation>Ein verdienter Sieg aus einer verzwickten Auslage.</translation>
    </message>
    <message>
        <source>Nicely untangled — every suit found its place.</source>
        <translation>Schön entwirrt – jede Farbe hat ihren Platz gefunden.</translation>
    </message>
    <message>
        <source>Good patience, good choices, good finish.</source>
        <translation>Gute Geduld, gute Entscheidungen, guter Abschluss.</translation>
    </message>
    <message>
        <source>The long route still led exactly where it needed to.</source>
        <translation>Auch der lange Weg führte genau ans Ziel.</translation>
    </message>
    <message>
        <source>A steady hand saw that deal through.</source>
        <translation>Mit ruhiger Hand bis zum Ende gespielt.</translation>
    </message>
    <message>
        <source>Well recovered — that board had plenty to solve.</source>
        <translation>Stark zurückgekämpft – diese Auslage hatte es in sich.</translation>
    </message>
    <message>
        <source>Another full pair of decks brought home.</source>
        <translation>Wieder zwei volle Kartenspiele ins Ziel gebracht.</translation>
    </message>
    <message>
        <source>You saw it through — every completed deal deserves a crown.</source>
        <translation>Du hast durchgehalten – jedes vollendete Spiel verdient eine Krone.</translation>
    </message>
    <message>
        <source>Persistence wins the deal.</source>
        <translation>Beharrlichkeit gewinnt das Spiel.</translation>
    </message>
    <message>
        <source>A hard-fought finish is still a fine finish.</source>
        <translation>Ein hart erkämpfter Abschluss ist trotzdem ein schöner Abschluss.</translation>
    </message>
    <message>
        <source>That board made you work for it. Well done.</source>
        <translation>Diese Auslage hat dich gefordert. Gut gemacht.</translation>
    </message>
    <message>
        <source>No shortcut required — just a well-earned win.</source>
        <translation>Ganz ohne Abkürzung – einfach ein verdienter Sieg.</translation>
    </message>
    <message>
        <source>One hundred and four cards, all exactly where they belong.</source>
        <translation>Hundertvier Karten, alle genau dort, wo sie hingehören.</translation>
    </message>
    <message>
        <source>The scenic route still ends at eight full foundations.</source>
        <translation>Auch der Umweg endet bei acht vollen Ablagestapeln.</translation>
    </message>
    <message>
        <source>Patience paid off, one card at a time.</source>
        <translation>Geduld hat sich ausgezahlt, Karte für Karte.</translation>
    </message>
    <message>
        <source>Complicated deal, complete result.</source>
        <translation>Verzwicktes Spiel, vollständiges Ergebnis.</translation>
    </message>
    <message>
        <source>You kept going until the table was clear.</source>
        <translation>Du bist drangeblieben, bis der Tisch leer war.</translation>
    </message>
    <message>
        <source>Some deals are puzzles of endurance. This one is solved.</source>
        <translation>Manche Spiele sind Geduldsproben. Diese ist bestanden.</translation>
    </message>
    <message>
        <source>The move count can wait. The win is yours.</source>
        <translation>Die Zugzahl kann warten. Der Sieg gehört dir.</translation>
    </message>
    <message numerus="yes">
        <source>You built all eight foundations in %n moves.</source>
        <translation>
            <numerusform>Du hast alle acht Ablagestapel in %n Zug gebaut.</numerusform>
            <numerusform>Du hast alle acht Ablagestapel in %n Zügen gebaut.</numerusform>
        </translation>
    </message>
    <message>
        <source>its file cannot be created or opened.</source>
        <translation>ihre Datei lässt sich nicht anlegen oder öffnen.</translation>
    </message>
    <message>
        <source>its file, its folder or the disk is read-only.</source>
        <translation>ihre Datei, ihr Ordner oder der Datenträger ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>the disk is full.</source>
        <translation>der Datenträger ist voll.</translation>
    </message>
    <message>
        <source>another program is holding its file.</source>
        <translation>ein anderes Programm hält ihre Datei gesperrt.</translation>
    </message>
    <message>
        <source>the disk reported an error.</source>
        <translation>der Datenträger hat einen Fehler gemeldet.</translation>
    </message>
    <message>
        <source>Zelvaine cannot save your game: %1 It keeps trying as you play.</source>
        <translation>Zelvaine kann dein Spiel nicht speichern: %1 Es versucht es weiter, während du spielst.</translation>
    </message>
    <message>
        <source>Zelvaine found its saved data damaged and kept it as %1.</source>
        <translation>Zelvaine hat seine gespeicherten Daten beschädigt vorgefunden und als %1 aufbewahrt.</translation>
    </message>
    <message>
        <source>Another Zelvaine window saved its game after this one was opened. To keep that game, this window no longer saves; start a new game here to save again.</source>
        <translation>Ein anderes Zelvaine-Fenster hat sein Spiel gespeichert, nachdem dieses geöffnet wurde. Damit jenes Spiel erhalten bleibt, speichert dieses Fenster nicht mehr; beginne hier ein neues Spiel, um wieder zu speichern.</translation>
    </message>
    <message>
        <source>Zelvaine cannot open its saved game yet: another program is holding its file. This deal will not replace it, and Zelvaine keeps trying as you play.</source>
        <translation>Zelvaine kann sein gespeichertes Spiel noch nicht öffnen: Ein anderes Programm hält seine Datei. Dieses Spiel ersetzt es nicht, und Zelvaine versucht es weiter, während du spielst.</translation>
    </message>
    <message>
        <source>Zelvaine found its saved game damaged and could not keep a copy of it.</source>
        <translation>Zelvaine hat sein gespeichertes Spiel beschädigt vorgefunden und konnte keine Kopie davon aufbewahren.</translation>
    </message>
    <message>
        <source>This deal can still be won.</source>
        <translation>Dieses Spiel ist noch zu gewinnen.</translation>
    </message>
    <message>
        <source>This deal can no longer be won.</source>
        <translation>Dieses Spiel ist nicht mehr zu gewinnen.</translation>
    </message>
    <message>
        <source>The solver could not decide this deal quickly.</source>
        <translation>Der Solver konnte dieses Spiel nicht schnell entscheiden.</translation>
    </message>
    <message>
        <source>This deal could not be won from its start.</source>
        <translation>Dieses Spiel war von Anfang an nicht zu gewinnen.</translation>
    </message>
    <message>
        <source>The deal was lost at move %1.</source>
        <translation>Das Spiel ging mit Zug %1 verloren.</translation>
    </message>
    <message>
        <source>Finding a deal that can be won…</source>
        <translation>Ein gewinnbares Spiel wird gesucht…</translation>
    </message>
</context>
<context>
    <name>zelvaine::Updater</name>
    <message numerus="yes">
        <source>The update server did not answer within %n second(s).</source>
        <translation>
            <numerusform>Der Update-Server hat nicht innerhalb von %n Sekunde geantwortet.</numerusform>
            <numerusform>Der Update-Server hat nicht innerhalb von %n Sekunden geantwortet.</numerusform>
        </translation>
    </message>
    <message>
        <source>Checking for updates is turned off: %1</source>
        <translation>Die Suche nach Updates ist ausgeschaltet: %1</translation>
    </message>
    <message numerus="yes">
        <source>The update server redirected more than %n time(s); the check was stopped.</source>
        <translation>
            <numerusform>Der Update-Server hat mehr als %n Mal umgeleitet; die Prüfung wurde abgebrochen.</numerusform>
            <numerusform>Der Update-Server hat mehr als %n Mal umgeleitet; die Prüfung wurde abgebrochen.</numerusform>
        </translation>
    </message>
    <message>
        <source>The update server redirected from HTTPS to an unencrypted address; it was not followed.</source>
        <translation>Der Update-Server hat von HTTPS auf eine unverschlüsselte Adresse umgeleitet; der Umleitung wurde nicht gefolgt.</translation>
    </message>
    <message>
        <source>The update feed is larger than %1 KB and was not read.</source>
        <translation>Der Update-Feed ist größer als %1 KB und wurde nicht gelesen.</translation>
    </message>
    <message>
        <source>The update server answered with an error (HTTP %1).</source>
        <translation>Der Update-Server hat mit einem Fehler geantwortet (HTTP %1).</translation>
    </message>
    <message>
        <source>The update server %1 could not be reached. Check the network connection and try again.</source>
        <translation>Der Update-Server %1 war nicht erreichbar. Prüfe die Netzwerkverbindung und versuche es erneut.</translation>
    </message>
    <message>
        <source>The identity of the update server %1 could not be verified.</source>
        <translation>Die Identität des Update-Servers %1 konnte nicht bestätigt werden.</translation>
    </message>
    <message>
        <source>The update check failed: %1</source>
        <translation>Die Update-Prüfung ist fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>The update server redirected without saying where to.</source>
        <translation>Der Update-Server hat umgeleitet, ohne ein Ziel zu nennen.</translation>
    </message>
    <message>
        <source>This copy of Zelvaine has no update feed and never checks for updates.</source>
        <translation>Diese Kopie von Zelvaine hat keinen Update-Feed und sucht nie nach Updates.</translation>
    </message>
</context>
</TS>
