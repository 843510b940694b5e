#include "ui/game_board.hpp"

#include "engine/auto_complete.hpp"
#include "engine/move_rules.hpp"
#include "store/game_confirmation.hpp"

#include "ui/card_drag_controller.hpp"
#include "ui/celebration.hpp"
#include "ui/place_kind.hpp"
#include "ui/shared_game_files.hpp"
#include "ui/tap_router.hpp"

#include <QDateTime>

#include <limits>
#include <utility>

namespace zelvaine {

GameBoard::GameBoard(GameStore& store, GamePreferences* statistics, QObject* parent)
    : QObject(parent),
      store_(store),
      // The finish flies its cards through the drag controller, once the view has one.
      finish_(store, {[this](const FoundationAutoMove& move) {
                          return flights_ ? flights_->fly(move.source, move.foundationIndex, move.card) : 0;
                      },
                      [this] {
                          if (flights_) flights_->land();
                      }}),
      reactions_(store, finish_, statistics)
{
    for (std::size_t c = 0; c < tableauColumnCount; ++c) columns_.push_back(std::make_unique<CardListModel>(this));
    token_ = store_.observe([this](GameStoreProperty property) { onStoreChanged(property); });
    finishTimer_.setSingleShot(true);
    connect(&finishTimer_, &QTimer::timeout, this, &GameBoard::playFinishStep);
    finish_.observe([this](FinishPlaybackProperty) {
        if (!finish_.isPlaying()) finishTimer_.stop();
        emit autoCompletingChanged();
    });
    celebrationTimer_.setSingleShot(true);
    celebrationTimer_.setInterval(static_cast<int>(celebrationSeconds * 1000));
    connect(&celebrationTimer_, &QTimer::timeout, this, [this] { reactions_.endCelebration(); });
    reactions_.observe([this](BoardReactionsProperty) {
        if (reactions_.celebrationStartedAt() == 0) celebrationTimer_.stop();
        else celebrationTimer_.start();
        emit celebrationChanged();
    });
    // The keyboard starts on the first column's lowest card.
    focus_ = settleFocus({KeyboardFocus::Row::tableau, 0, std::numeric_limits<std::int64_t>::max()}, store_.state());
    refreshPlaces();
    refreshTargets();
    shownSelection_ = store_.selection();
    publishChanges();
}

GameBoard::~GameBoard() { store_.unobserve(token_); }

CardListModel* GameBoard::columnCards(int index) const
{
    if (index < 0 || static_cast<std::size_t>(index) >= columns_.size()) return nullptr;
    return columns_[static_cast<std::size_t>(index)].get();
}

int GameBoard::moveCount() const { return static_cast<int>(store_.state().moveCount); }

bool GameBoard::won() const { return isWon(store_.state()); }

Place::Kind GameBoard::selectionKind() const
{
    return store_.selection() ? placeKind(store_.selection()->kind) : Place::Kind::None;
}

int GameBoard::selectionIndex() const { return store_.selection() ? static_cast<int>(store_.selection()->index) : -1; }

int GameBoard::selectionCardIndex() const
{
    return store_.selection() ? static_cast<int>(store_.selection()->cardIndex) : -1;
}

QString GameBoard::message() const { return store_.message() ? QString::fromStdString(*store_.message()) : QString(); }

Message::Kind GameBoard::messageKind() const { return zelvaine::messageKind(store_.messageKind()); }

Place::Kind GameBoard::focusKind() const { return focusShown_ ? placeKind(focus_.row) : Place::Kind::None; }

void GameBoard::onStoreChanged(GameStoreProperty property)
{
    switch (property) {
    case GameStoreProperty::state:
        refreshPlaces();
        refreshTargets();
        settleFocusAfterChange();
        // The store is in the middle of an operation; the full reaction waits until it is over.
        reactions_.positionChanged();
        if (!reactionQueued_) {
            reactionQueued_ = true;
            QMetaObject::invokeMethod(this, &GameBoard::afterPositionChange, Qt::QueuedConnection);
        }
        break;
    case GameStoreProperty::selection:
        refreshTargets();
        // Every move clears the selection; most moves had none to clear.
        if (store_.selection() != shownSelection_) {
            shownSelection_ = store_.selection();
            emit selectionChanged();
        }
        break;
    default: break;
    }
    // The history, the challenge record and the deal's start change without a notice of their
    // own, so every notice compares everything the properties show.
    publishChanges(property);
    if (property == GameStoreProperty::message && store_.message()) emit messageArrived();
}

void GameBoard::settleFocusAfterChange()
{
    // A hidden ring waits on its column's lowest card, where the first arrow key shows it,
    // however that column grew or shrank meanwhile.
    KeyboardFocus target = focus_;
    if (!focusShown_ && target.row == KeyboardFocus::Row::tableau)
        target.cardIndex = std::numeric_limits<std::int64_t>::max();
    placeFocus(settleFocus(target, store_.state()));
}

void GameBoard::placeFocus(const KeyboardFocus& focus)
{
    if (focus == focus_) return;
    focus_ = focus;
    emit focusChanged();
}

void GameBoard::publishChanges(std::optional<GameStoreProperty> property)
{
    // Compares a property with what its signal last announced, and announces a change.
    const auto update = [this](auto& shown, auto now, void (GameBoard::*signal)()) {
        if (shown == now) return;
        shown = std::move(now);
        emit(this->*signal)();
    };
    update(shown_.moveCount, moveCount(), &GameBoard::moveCountChanged);
    update(shown_.won, won(), &GameBoard::wonChanged);
    update(shown_.canUndo, canUndo(), &GameBoard::canUndoChanged);
    update(shown_.canRedo, canRedo(), &GameBoard::canRedoChanged);
    update(shown_.hasProgress, hasProgress(), &GameBoard::hasProgressChanged);
    update(shown_.canShare, canShare(), &GameBoard::canShareChanged);
    if (QString text = winMessage(), summary = winSummary(); shown_.winMessage != text || shown_.winSummary != summary) {
        shown_.winMessage = std::move(text);
        shown_.winSummary = std::move(summary);
        emit winTextChanged();
    }
    update(shown_.confirmation, confirmation(), &GameBoard::confirmationChanged);
    update(shown_.showRules, showRules(), &GameBoard::showRulesChanged);
    update(shown_.isImportingGame, isImportingGame(), &GameBoard::importingChanged);
    // The store assigns a message's kind before its text: the pair is complete once the text is.
    if (property == GameStoreProperty::messageKind) return;
    if (QString text = message(); shown_.message != text || shown_.messageKind != messageKind()) {
        shown_.message = std::move(text);
        shown_.messageKind = messageKind();
        emit messageChanged();
    }
}

Confirmation::Kind GameBoard::confirmation() const { return confirmationKind(store_.confirmation()); }

namespace {

QString confirmationText(const std::optional<GameConfirmation>& confirmation, std::string ConfirmationTexts::*text)
{
    return confirmation ? QString::fromStdString(confirmationTexts(*confirmation).*text) : QString();
}

} // namespace

QString GameBoard::confirmationTitle() const
{
    return confirmationText(store_.confirmation(), &ConfirmationTexts::title);
}

QString GameBoard::confirmationMessage() const
{
    return confirmationText(store_.confirmation(), &ConfirmationTexts::message);
}

QString GameBoard::confirmText() const
{
    return confirmationText(store_.confirmation(), &ConfirmationTexts::confirmButton);
}

QString GameBoard::cancelText() const
{
    return confirmationText(store_.confirmation(), &ConfirmationTexts::cancelButton);
}

void GameBoard::confirm()
{
    if (!store_.confirmation()) return;
    switch (*store_.confirmation()) {
    case GameConfirmation::newGame: store_.newGame(); break;
    case GameConfirmation::restartGame: store_.restartGame(); break;
    case GameConfirmation::openSharedGame: store_.openPendingSharedGame(); break;
    case GameConfirmation::autoComplete: wakeFinishAfter(finish_.start()); break;
    }
}

bool GameBoard::exportGame(const QUrl& file)
{
    const auto folder = shareGame(store_, localPath(file));
    if (!folder) return false;
    if (lastShareFolder_ != *folder) {
        lastShareFolder_ = *folder;
        emit gameFolderChanged();
    }
    return true;
}

QUrl GameBoard::gameFolder() const { return sharedGameFolder(lastShareFolder_); }

void GameBoard::openGame(const QUrl& file) { openSharedGame(store_, localPath(file)); }

void GameBoard::openGamePath(const QString& path)
{
    const QUrl url = path.startsWith(QStringLiteral("file:")) ? QUrl(path) : QUrl::fromLocalFile(path);
    if (!isSharedGameFile(url.toLocalFile())) return;
    openGame(url);
}

void GameBoard::afterPositionChange()
{
    reactionQueued_ = false;
    reactions_.react(static_cast<double>(QDateTime::currentMSecsSinceEpoch()));
}

QString GameBoard::winMessage() const
{
    if (!isWon(store_.state())) return {};
    return QString::fromStdString(celebrationMessage(store_.gameIdentifier(), store_.state().moveCount));
}

QString GameBoard::winSummary() const
{
    if (!isWon(store_.state())) return {};
    return QString::fromStdString(completionSummary(store_.state().moveCount));
}

void GameBoard::playFinishStep() { wakeFinishAfter(finish_.step()); }

void GameBoard::wakeFinishAfter(std::optional<int> milliseconds)
{
    if (milliseconds) finishTimer_.start(*milliseconds);
}

void GameBoard::completeAutomaticFinish() { reactions_.completeFinishNow(); }

void GameBoard::refreshPlaces()
{
    const GameState& state = store_.state();
    for (std::size_t c = 0; c < columns_.size(); ++c) {
        std::vector<CardListModel::Row> rows;
        const Pile& cards = c < state.tableau.size() ? state.tableau[c] : Pile{};
        rows.reserve(cards.size());
        for (std::size_t i = 0; i < cards.size(); ++i) {
            const bool movable = isValidString(state, static_cast<std::int64_t>(c), static_cast<std::int64_t>(i));
            rows.push_back({cards[i], movable, 1});
        }
        columns_[c]->setRows(std::move(rows));
    }

    std::vector<CardListModel::Row> handRows;
    for (const HandSlot& slot : state.hand) handRows.push_back({slot, slot.has_value(), slot ? 1 : 0});
    hand_.setRows(std::move(handRows));

    std::vector<CardListModel::Row> tops;
    for (const Pile& pile : state.foundations) {
        tops.push_back(
            {pile.empty() ? std::nullopt : std::optional(pile.back()), !pile.empty(), static_cast<int>(pile.size())});
    }
    foundations_.setRows(std::move(tops));
}

void GameBoard::refreshTargets()
{
    QList<bool> columns(static_cast<qsizetype>(tableauColumnCount), false);
    QList<bool> foundations(static_cast<qsizetype>(foundationCount), false);
    QList<bool> hand(static_cast<qsizetype>(handSlotCount), false);
    if (const auto& selection = store_.selection()) {
        for (qsizetype c = 0; c < columns.size(); ++c)
            columns[c] = store_.canMove(*selection, MoveDestination::tableau(c));
        for (qsizetype f = 0; f < foundations.size(); ++f) {
            foundations[f] = store_.canMove(*selection, MoveDestination::foundation(f));
        }
        for (qsizetype s = 0; s < hand.size(); ++s) hand[s] = store_.canMove(*selection, MoveDestination::hand(s));
    }
    if (columns == columnTargets_ && foundations == foundationTargets_ && hand == handTargets_) return;
    columnTargets_ = columns;
    foundationTargets_ = foundations;
    handTargets_ = hand;
    emit targetsChanged();
}

void GameBoard::tapTableauCard(int column, int cardIndex) { taps::onTableauCard(store_, column, cardIndex); }

void GameBoard::tapColumn(int column) { taps::onEmptyPlace(store_, MoveDestination::tableau(column)); }

void GameBoard::tapHand(int slot)
{
    const auto& hand = store_.state().hand;
    if (slot >= 0 && static_cast<std::size_t>(slot) < hand.size() && hand[static_cast<std::size_t>(slot)]) {
        taps::onHandCard(store_, slot);
    } else {
        taps::onEmptyPlace(store_, MoveDestination::hand(slot));
    }
}

void GameBoard::tapFoundation(int index)
{
    const auto& piles = store_.state().foundations;
    if (index >= 0 && static_cast<std::size_t>(index) < piles.size() && !piles[static_cast<std::size_t>(index)].empty()) {
        taps::onFoundationCard(store_, index);
    } else {
        taps::onEmptyPlace(store_, MoveDestination::foundation(index));
    }
}

void GameBoard::tapTable() { taps::onTable(store_); }

void GameBoard::moveFocus(Focus::Direction direction, bool portrait, bool handOnRight)
{
    KeyboardFocus next = focus_;
    if (focusShown_) {
        const FocusArrangement arrangement = portrait      ? FocusArrangement::portrait
                                             : handOnRight ? FocusArrangement::landscapeHandRight
                                                           : FocusArrangement::landscapeHandLeft;
        next = zelvaine::moveFocus(focus_, focusDirection(direction), store_.state(), arrangement);
    }
    showFocusAt(next);
}

void GameBoard::showFocus() { showFocusAt(focus_); }

void GameBoard::showFocusAt(const KeyboardFocus& focus)
{
    const KeyboardFocus settled = settleFocus(focus, store_.state());
    if (focusShown_ && settled == focus_) return;
    focus_ = settled;
    focusShown_ = true;
    emit focusChanged();
}

void GameBoard::activateFocus()
{
    if (!focusShown_) {
        showFocus();
        return;
    }
    placeFocus(zelvaine::activateFocus(store_, focus_));
}

void GameBoard::undo()
{
    followArrival([this] { store_.undo(); });
}

void GameBoard::redo()
{
    followArrival([this] { store_.redo(); });
}

void GameBoard::followArrival(const std::function<void()>& change)
{
    // Only a ring on show moves, so only then is the position kept to compare: a player who plays
    // with the pointer has none.
    if (!focusShown_) return change();
    const GameState before = store_.state();
    change();
    placeFocus(focusOnArrival(focus_, before, store_.state()));
}

void GameBoard::requestMenuAtFocus()
{
    if (!focusShown_) {
        showFocus();
        return;
    }
    const GameState& state = store_.state();
    const auto index = static_cast<std::size_t>(focus_.index);
    switch (focus_.row) {
    case KeyboardFocus::Row::tableau:
        if (!isValidString(state, focus_.index, focus_.cardIndex)) return;
        break;
    case KeyboardFocus::Row::hand:
        if (index >= state.hand.size() || !state.hand[index]) return;
        break;
    case KeyboardFocus::Row::foundations:
        if (index >= state.foundations.size() || state.foundations[index].empty()) return;
        break;
    }
    emit menuRequested(placeKind(focus_.row), static_cast<int>(focus_.index), static_cast<int>(focus_.cardIndex));
}

void GameBoard::hideFocus()
{
    if (!focusShown_) return;
    focusShown_ = false;
    emit focusChanged();
}

bool GameBoard::canMoveToAnyFoundation(Place::Kind kind, int index, int cardIndex) const
{
    return store_.canMoveToAnyFoundation(placeSource(kind, index, cardIndex));
}

bool GameBoard::canMoveToHand(Place::Kind kind, int index, int cardIndex) const
{
    return store_.canMove(placeSource(kind, index, cardIndex), MoveDestination::hand());
}

void GameBoard::moveToFoundation(Place::Kind kind, int index, int cardIndex)
{
    store_.moveToFoundation(placeSource(kind, index, cardIndex));
}

void GameBoard::moveToHand(Place::Kind kind, int index, int cardIndex)
{
    store_.move(placeSource(kind, index, cardIndex), MoveDestination::hand());
}

void GameBoard::moveToColumn(Place::Kind kind, int index, int cardIndex, int column)
{
    store_.move(placeSource(kind, index, cardIndex), MoveDestination::tableau(column));
}

} // namespace zelvaine
