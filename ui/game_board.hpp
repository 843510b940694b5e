#pragma once

// moc cannot read the C++20 standard headers these pull in, and needs nothing from them.
#ifndef Q_MOC_RUN
#include "store/game_store.hpp"
#include "ui/board_reactions.hpp"
#include "ui/finish_playback.hpp"
#include "ui/keyboard_focus.hpp"
#endif
#include "ui/board_vocabulary.hpp"
#include "ui/card_list_model.hpp"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace zelvaine {

class CardDragController;

// The game store as QML sees it: the places' cards as models, the selection, the legal
// destinations to highlight and the message, each with its change signal; and the player's
// taps and commands, handed to the store. It holds no game logic.
class GameBoard : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application around its store")
    Q_PROPERTY(zelvaine::CardListModel* hand READ hand CONSTANT FINAL)
    Q_PROPERTY(zelvaine::CardListModel* foundations READ foundations CONSTANT FINAL)
    Q_PROPERTY(int moveCount READ moveCount NOTIFY moveCountChanged FINAL)
    Q_PROPERTY(bool won READ won NOTIFY wonChanged FINAL)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY canUndoChanged FINAL)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY canRedoChanged FINAL)
    Q_PROPERTY(bool hasProgress READ hasProgress NOTIFY hasProgressChanged FINAL)
    Q_PROPERTY(bool canShare READ canShare NOTIFY canShareChanged FINAL)
    // The rules sheet shows while this is set; closing it clears it.
    Q_PROPERTY(bool showRules READ showRules WRITE setShowRules NOTIFY showRulesChanged FINAL)
    // Set by "Open Game…": the view offers its file picker and clears it.
    Q_PROPERTY(bool isImportingGame READ isImportingGame WRITE setIsImportingGame NOTIFY importingChanged FINAL)
    // Where the file panels start: the last share's folder, else Documents, else home.
    Q_PROPERTY(QUrl gameFolder READ gameFolder NOTIFY gameFolderChanged FINAL)
    Q_PROPERTY(zelvaine::Confirmation::Kind confirmation READ confirmation NOTIFY confirmationChanged FINAL)
    // The open question's words: its title, its text and its two answers; empty with none open.
    Q_PROPERTY(QString confirmationTitle READ confirmationTitle NOTIFY confirmationChanged FINAL)
    Q_PROPERTY(QString confirmationMessage READ confirmationMessage NOTIFY confirmationChanged FINAL)
    Q_PROPERTY(QString confirmText READ confirmText NOTIFY confirmationChanged FINAL)
    Q_PROPERTY(QString cancelText READ cancelText NOTIFY confirmationChanged FINAL)
    Q_PROPERTY(bool autoCompleting READ autoCompleting NOTIFY autoCompletingChanged FINAL)
    // The confetti's start, in milliseconds since the epoch; 0 when none falls.
    Q_PROPERTY(double celebrationStartedAt READ celebrationStartedAt NOTIFY celebrationChanged FINAL)
    // The win panel's praise and its summary line; empty while the position is not won.
    Q_PROPERTY(QString winMessage READ winMessage NOTIFY winTextChanged FINAL)
    Q_PROPERTY(QString winSummary READ winSummary NOTIFY winTextChanged FINAL)
    // The selected place; with a column's card, the card's index too.
    Q_PROPERTY(zelvaine::Place::Kind selectionKind READ selectionKind NOTIFY selectionChanged FINAL)
    Q_PROPERTY(int selectionIndex READ selectionIndex NOTIFY selectionChanged FINAL)
    Q_PROPERTY(int selectionCardIndex READ selectionCardIndex NOTIFY selectionChanged FINAL)
    Q_PROPERTY(QList<bool> columnTargets READ columnTargets NOTIFY targetsChanged FINAL)
    Q_PROPERTY(QList<bool> foundationTargets READ foundationTargets NOTIFY targetsChanged FINAL)
    Q_PROPERTY(QList<bool> handTargets READ handTargets NOTIFY targetsChanged FINAL)
    Q_PROPERTY(QString message READ message NOTIFY messageChanged FINAL)
    Q_PROPERTY(zelvaine::Message::Kind messageKind READ messageKind NOTIFY messageChanged FINAL)
    // The keyboard's place: None while the mouse plays.
    Q_PROPERTY(zelvaine::Place::Kind focusKind READ focusKind NOTIFY focusChanged FINAL)
    Q_PROPERTY(int focusIndex READ focusIndex NOTIFY focusChanged FINAL)
    Q_PROPERTY(int focusCardIndex READ focusCardIndex NOTIFY focusChanged FINAL)

public:
    // With preferences, the board keeps the statistics: a deal counts as played when the board
    // first shows it, and as won when it is seen won.
    explicit GameBoard(GameStore& store, GamePreferences* statistics = nullptr, QObject* parent = nullptr);
    ~GameBoard() override;

    // One column's cards, typed for the view that shows them.
    Q_INVOKABLE zelvaine::CardListModel* columnCards(int index) const;
    CardListModel* hand() { return &hand_; }
    CardListModel* foundations() { return &foundations_; }
    int moveCount() const;
    bool won() const;
    bool canUndo() const { return !store_.history().empty(); }
    bool canRedo() const { return !store_.redoHistory().empty(); }
    bool hasProgress() const { return store_.hasProgress(); }
    Confirmation::Kind confirmation() const;
    QString confirmationTitle() const;
    QString confirmationMessage() const;
    QString confirmText() const;
    QString cancelText() const;
    bool autoCompleting() const { return finish_.isPlaying(); }
    double celebrationStartedAt() const { return reactions_.celebrationStartedAt(); }
    QString winMessage() const;
    QString winSummary() const;
    Place::Kind selectionKind() const;
    int selectionIndex() const;
    int selectionCardIndex() const;
    QList<bool> columnTargets() const { return columnTargets_; }
    QList<bool> foundationTargets() const { return foundationTargets_; }
    QList<bool> handTargets() const { return handTargets_; }
    QString message() const;
    Message::Kind messageKind() const;
    Place::Kind focusKind() const;
    int focusIndex() const { return static_cast<int>(focus_.index); }
    int focusCardIndex() const { return static_cast<int>(focus_.cardIndex); }

    Q_INVOKABLE void tapTableauCard(int column, int cardIndex);
    Q_INVOKABLE void tapColumn(int column);
    Q_INVOKABLE void tapHand(int slot);
    Q_INVOKABLE void tapFoundation(int index);
    Q_INVOKABLE void tapTable();

    // The context menu of a card.
    Q_INVOKABLE bool canMoveToAnyFoundation(zelvaine::Place::Kind kind, int index, int cardIndex) const;
    Q_INVOKABLE bool canMoveToHand(zelvaine::Place::Kind kind, int index, int cardIndex) const;
    Q_INVOKABLE void moveToFoundation(zelvaine::Place::Kind kind, int index, int cardIndex);
    Q_INVOKABLE void moveToHand(zelvaine::Place::Kind kind, int index, int cardIndex);
    Q_INVOKABLE void moveToColumn(zelvaine::Place::Kind kind, int index, int cardIndex, int column);

    // An arrow key (the arrangement and the hand's side say how the places are drawn). The
    // first key only shows where the focus is.
    Q_INVOKABLE void moveFocus(zelvaine::Focus::Direction direction, bool portrait = true, bool handOnRight = false);
    // Shows the focus where it is, without moving it.
    Q_INVOKABLE void showFocus();
    Q_INVOKABLE void activateFocus();
    // The menu key (or Shift+F10) on the focused place: its card's menu of moves, when it holds
    // a card that can move.
    Q_INVOKABLE void requestMenuAtFocus();
    Q_INVOKABLE void hideFocus();

    // The questions asked before the game is replaced, reset or finished for the player.
    Q_INVOKABLE void requestNewGame() { store_.requestNewGame(); }
    Q_INVOKABLE void requestRestart() { store_.requestRestart(); }
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void dismissConfirmation() { store_.dismissConfirmation(); }

    // Shared games: writing the current one to a file, and reading one that the player chose.
    bool canShare() const { return store_.canMakeDocument(); }
    bool showRules() const { return store_.showRules(); }
    void setShowRules(bool show) { store_.setShowRules(show); }
    bool isImportingGame() const { return store_.isImportingGame(); }
    void setIsImportingGame(bool importing) { store_.setIsImportingGame(importing); }
    // A shared game from outside the window (the command line, a dropped file): `path` is a
    // local file path or a file URL. Only a ".zelvaine" file is taken.
    Q_INVOKABLE void openGamePath(const QString& path);
    // Tells the player where the game went, or why it did not.
    Q_INVOKABLE bool exportGame(const QUrl& file);
    QUrl gameFolder() const;
    Q_INVOKABLE void openGame(const QUrl& file);

    Q_INVOKABLE void newGame() { store_.newGame(); }
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    Q_INVOKABLE void showHint() { store_.showHint(); }
    Q_INVOKABLE void clearMessage() { store_.clearMessage(); }

    // The game is ending (quit, logout, a signal) during the automatic finish: the player asked
    // for the finish, so it is played out at once and counted instead of saved half-way.
    void completeAutomaticFinish();

    GameStore& store() { return store_; }
    // Where the automatic finish shows its flying cards; without one the cards simply appear.
    void setFlights(CardDragController* flights) { flights_ = flights; }
    const CardListModel& column(int index) const { return *columns_[static_cast<std::size_t>(index)]; }

signals:
    // Each goes out only when what it announces changed: the store reports every assignment,
    // and most moves leave most of these as they were.
    void moveCountChanged();
    void wonChanged();
    void canUndoChanged();
    void canRedoChanged();
    void hasProgressChanged();
    void canShareChanged();
    void winTextChanged();
    void selectionChanged();
    void targetsChanged();
    void messageChanged();
    // A message was published, also one with the text already on show (the same refusal
    // twice): the player should hear it again.
    void messageArrived();
    // The keyboard asks for the menu of this place's card.
    void menuRequested(zelvaine::Place::Kind kind, int index, int cardIndex);
    void focusChanged();
    void confirmationChanged();
    void autoCompletingChanged();
    void celebrationChanged();
    void showRulesChanged();
    void importingChanged();
    void gameFolderChanged();

private:
    void onStoreChanged(GameStoreProperty property);
    // `property` is the store's notice that prompted the comparison; none at the start.
    void publishChanges(std::optional<GameStoreProperty> property = std::nullopt);
    void showFocusAt(const KeyboardFocus& focus);
    void settleFocusAfterChange();
    // Makes `change` and takes a shown ring to where its cards came back.
    void followArrival(const std::function<void()>& change);
    // Moves the focus, shown or hidden as it is, and says so when it changed.
    void placeFocus(const KeyboardFocus& focus);
    void refreshPlaces();
    void refreshTargets();
    void afterPositionChange();
    void playFinishStep();
    void wakeFinishAfter(std::optional<int> milliseconds);

    GameStore& store_;
    Observable<GameStoreProperty>::Token token_;
    std::vector<std::unique_ptr<CardListModel>> columns_;
    CardListModel hand_;
    CardListModel foundations_;
    QList<bool> columnTargets_;
    QList<bool> foundationTargets_;
    QList<bool> handTargets_;
    // What the properties said when their signals last went out.
    struct Shown {
        int moveCount = -1;
        bool won = false;
        bool canUndo = false;
        bool canRedo = false;
        bool hasProgress = false;
        bool canShare = false;
        QString winMessage;
        QString winSummary;
        Confirmation::Kind confirmation = Confirmation::Kind::None;
        bool showRules = false;
        bool isImportingGame = false;
        QString message;
        Message::Kind messageKind = Message::Kind::None;
    };
    Shown shown_;
    std::optional<MoveSource> shownSelection_;
    KeyboardFocus focus_;
    bool focusShown_ = false;
    CardDragController* flights_ = nullptr;
    FinishPlayback finish_;
    // Calls the playback's next step when it asks for it.
    QTimer finishTimer_;
    BoardReactions reactions_;
    // The reaction to a change of position runs once the store's operation has finished.
    bool reactionQueued_ = false;
    // Ends the confetti celebrationSeconds after it started.
    QTimer celebrationTimer_;
    QString lastShareFolder_;
};

} // namespace zelvaine
