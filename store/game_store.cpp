#include "store/game_store.hpp"

#include "engine/hints.hpp"
#include "engine/localizer.hpp"
#include "engine/move_rules.hpp"
#include "store/saved_game.hpp"

namespace zelvaine {
namespace {

constexpr double doubleTapInterval = 0.38;

struct Restored {
    SavedGame game;
    std::optional<SavedGamePositions> positions;
};

// A damaged saved game is copied out of harm's way before the first save of the new deal, which
// would replace it; `keptAside` says where, or stays empty when it could not be kept.
std::optional<Restored> restore(DefaultsStore& defaults, std::optional<std::string>& keptAside, bool& lostDamaged)
{
    const auto blob = defaults.data(savedGameKey);
    if (!blob) return std::nullopt;
    RestoredGame restored = restoreSavedGame(std::string_view(reinterpret_cast<const char*>(blob->data()), blob->size()));
    if (!restored.game) {
        if (!restored.finished) {
            keptAside = defaults.keepAside(savedGameKey, *blob);
            lostDamaged = !keptAside;
        }
        return std::nullopt;
    }
    Restored result{std::move(*restored.game), std::nullopt};
    // Going on with the stored pieces themselves lets the next save refer to them as they are,
    // instead of storing every position of a long history again under a new identity.
    if (restored.from == RestoredFrom::savedGame) {
        if (auto runs = defaults.dataRuns(savedGameKey)) {
            result.positions = savedGamePositions(*runs, result.game.history.size(), result.game.redoHistory.size());
        }
    }
    return result;
}

std::string saveFailureText(DefaultsWriteFailure failure)
{
    const char* reason = "";
    switch (failure) {
    case DefaultsWriteFailure::noPlace:
        reason = QT_TRANSLATE_NOOP("Zelvaine", "its file cannot be created or opened.");
        break;
    case DefaultsWriteFailure::readOnly:
        reason = QT_TRANSLATE_NOOP("Zelvaine", "its file, its folder or the disk is read-only.");
        break;
    case DefaultsWriteFailure::diskFull: reason = QT_TRANSLATE_NOOP("Zelvaine", "the disk is full."); break;
    case DefaultsWriteFailure::busy:
        reason = QT_TRANSLATE_NOOP("Zelvaine", "another program is holding its file.");
        break;
    case DefaultsWriteFailure::ioError: reason = QT_TRANSLATE_NOOP("Zelvaine", "the disk reported an error."); break;
    }
    return formatText(localized(QT_TRANSLATE_NOOP("Zelvaine",
                                                  "Zelvaine cannot save your game: %1 It keeps trying as you play.")),
                      {localized(reason)});
}

std::vector<EncodedPosition> encodeAll(const std::vector<GameState>& positions)
{
    std::vector<EncodedPosition> encoded;
    encoded.reserve(positions.size());
    for (const auto& p : positions) encoded.push_back(encodePosition(p));
    return encoded;
}

} // namespace

GameStore::GameStore(std::optional<GameState> initialGame, DefaultsStore& defaults, SoundCues& sound, UptimeClock clock)
    : defaults_(defaults), sound_(sound), clock_(std::move(clock)), shouldPersist_(!initialGame)
{
    if (initialGame) {
        state_ = *initialGame;
        initialState_ = std::move(*initialGame);
    } else if (auto saved = restore(defaults_, damagedGameKeptAs_, damagedGameLost_)) {
        state_ = std::move(saved->game.currentState);
        initialState_ = std::move(saved->game.initialState);
        history_ = std::move(saved->game.history);
        redoHistory_ = std::move(saved->game.redoHistory);
        challenge_ = saved->game.challenge;
        if (saved->positions) {
            stateJson_ = std::move(saved->positions->currentState);
            initialJson_ = std::move(saved->positions->initialState);
            historyJson_ = std::move(saved->positions->history);
            redoJson_ = std::move(saved->positions->redoHistory);
        } else {
            historiesEncoded_ = false;
        }
    } else {
        state_ = dealNewGame();
        initialState_ = state_;
    }
    if (!initialJson_) initialJson_ = encodePosition(initialState_);
    if (!shouldPersist_) return;
    defaults_.guard(savedGameKey, savedGameGenerationKey);
    // Shown when the board appears; a player who finds a new deal must know why.
    if (auto kept = defaults_.keptAsideFile() ? defaults_.keptAsideFile() : damagedGameKeptAs_) {
        messageKind_ = GameMessageKind::notice;
        message_ = formatText(localized(QT_TRANSLATE_NOOP("Zelvaine",
                                                          "Zelvaine found its saved data damaged and kept it as %1.")),
                              {*kept});
    } else if (defaults_.waitingForFile()) {
        messageKind_ = GameMessageKind::notice;
        message_ =
            localized(QT_TRANSLATE_NOOP("Zelvaine",
                                        "Zelvaine cannot open its saved game yet: another program is holding its "
                                        "file. This deal will not replace it, and Zelvaine keeps trying as you play."));
        saveFailureTold_ = true;
    } else if (damagedGameLost_) {
        messageKind_ = GameMessageKind::notice;
        message_ = localized(
            QT_TRANSLATE_NOOP("Zelvaine", "Zelvaine found its saved game damaged and could not keep a copy of it."));
    } else if (auto failure = defaults_.writeFailure()) {
        messageKind_ = GameMessageKind::notice;
        message_ = saveFailureText(*failure);
        saveFailureTold_ = true;
    }
}

std::string GameStore::gameIdentifier() const
{
    for (const Pile& column : initialState_.tableau) {
        if (!column.empty()) return column.front().id.text();
    }
    for (const HandSlot& slot : initialState_.hand) {
        if (slot) return slot->id.text();
    }
    return "empty-deal";
}

void GameStore::setSelection(std::optional<MoveSource> selection)
{
    assign(selection_, std::move(selection), GameStoreProperty::selection);
}

void GameStore::setShowRules(bool show) { assign(showRules_, show, GameStoreProperty::showRules); }

void GameStore::setIsImportingGame(bool importing)
{
    assign(isImportingGame_, importing, GameStoreProperty::isImportingGame);
}

// A message's kind is always assigned before its text, so that an observer of the text sees the
// two together.
void GameStore::clearMessage()
{
    assign(messageKind_, std::nullopt, GameStoreProperty::messageKind);
    assign(message_, std::nullopt, GameStoreProperty::message);
}

void GameStore::setState(GameState state)
{
    // The player went on with another position: the new game they had asked for is not wanted.
    awaitingDeal_ = false;
    stateJson_.reset();
    assign(state_, std::move(state), GameStoreProperty::state);
}

const EncodedPosition& GameStore::stateJson()
{
    if (!stateJson_) stateJson_ = encodePosition(state_);
    return stateJson_;
}

void GameStore::encodeRestoredHistories()
{
    if (historiesEncoded_) return;
    historyJson_ = encodeAll(history_);
    redoJson_ = encodeAll(redoHistory_);
    historiesEncoded_ = true;
}

void GameStore::pushHistory()
{
    encodeRestoredHistories();
    historyJson_.push_back(stateJson());
    history_.push_back(state_);
}

void GameStore::clearTransients()
{
    setSelection(std::nullopt);
    clearMessage();
}

void GameStore::setConfirmation(std::optional<GameConfirmation> confirmation)
{
    assign(confirmation_, confirmation, GameStoreProperty::confirmation);
}

void GameStore::setChallenge(GameChallengeRecord challenge)
{
    assign(challenge_, challenge, GameStoreProperty::challenge);
}

void GameStore::replaceDeal(GameState current, GameState initial, GameChallengeRecord challenge)
{
    // A deal the player chose after being told may replace the other process's game.
    if (shouldPersist_ && defaults_.overtaken()) {
        defaults_.retake();
        overtakenTold_ = false;
    }
    // The plain properties first, so that observers of the new state see the whole new deal.
    initialState_ = std::move(initial);
    initialJson_ = encodePosition(initialState_);
    history_.clear();
    historyJson_.clear();
    redoHistory_.clear();
    redoJson_.clear();
    historiesEncoded_ = true;
    setState(std::move(current));
    setChallenge(challenge);
    clearTransients();
}

void GameStore::newGame()
{
    std::optional<GameState> deal = dealer_ ? dealer_() : dealNewGame();
    if (!deal) {
        awaitingDeal_ = true;
        setConfirmation(std::nullopt);
        return;
    }
    replaceDeal(*deal, *deal, {});
    setConfirmation(std::nullopt);
    persist();
    sound_.playDeal();
}

void GameStore::dealerHasDeal()
{
    if (awaitingDeal_) newGame();
}

void GameStore::restartGame()
{
    if (!hasProgress()) {
        setConfirmation(std::nullopt);
        return;
    }
    pushHistory();
    redoHistory_.clear();
    redoJson_.clear();
    GameChallengeRecord challenge = challenge_;
    challenge.usedRestart = true;
    setChallenge(challenge);
    setState(initialState_);
    stateJson_ = initialJson_;
    clearTransients();
    setConfirmation(std::nullopt);
    persist();
    sound_.play(restartCue.name, restartCue.volume);
}

void GameStore::undo()
{
    if (history_.empty()) return;
    encodeRestoredHistories();
    GameState previous = std::move(history_.back());
    EncodedPosition previousJson = std::move(historyJson_.back());
    history_.pop_back();
    historyJson_.pop_back();
    GameChallengeRecord challenge = challenge_;
    challenge.usedUndo = true;
    setChallenge(challenge);
    redoJson_.push_back(stateJson());
    redoHistory_.push_back(state_);
    setState(std::move(previous));
    stateJson_ = std::move(previousJson);
    clearTransients();
    persist();
}

void GameStore::redo()
{
    if (redoHistory_.empty()) return;
    encodeRestoredHistories();
    GameState next = std::move(redoHistory_.back());
    EncodedPosition nextJson = std::move(redoJson_.back());
    redoHistory_.pop_back();
    redoJson_.pop_back();
    pushHistory();
    setState(std::move(next));
    stateJson_ = std::move(nextJson);
    clearTransients();
    persist();
}

void GameStore::requestNewGame()
{
    if (!confirmation_) setConfirmation(GameConfirmation::newGame);
}

void GameStore::requestRestart()
{
    if (hasProgress() && !confirmation_) setConfirmation(GameConfirmation::restartGame);
}

void GameStore::dismissConfirmation()
{
    if (confirmation_ != GameConfirmation::autoComplete) pendingSharedGame_.reset();
    setConfirmation(std::nullopt);
}

void GameStore::offerAutoComplete()
{
    if (!confirmation_) setConfirmation(GameConfirmation::autoComplete);
}

void GameStore::enterAutoComplete()
{
    setConfirmation(std::nullopt);
    GameChallengeRecord challenge = challenge_;
    challenge.usedAutoComplete = true;
    setChallenge(challenge);
    persist();
    clearTransients();
    lastTap_.reset();
}

bool GameStore::move(const MoveSource& source, const MoveDestination& destination)
{
    MoveOutcome outcome = applyMove(state_, source, destination);
    if (auto* refused = std::get_if<MoveRefused>(&outcome)) {
        refuse(refused->reason);
        return false;
    }
    if (std::holds_alternative<MoveIgnored>(outcome)) {
        setSelection(std::nullopt);
        return false;
    }
    auto& moved = std::get<MoveMoved>(outcome);
    if (moved.counted) pushHistory();
    if (moved.fromFoundation) {
        GameChallengeRecord challenge = challenge_;
        challenge.movedCardFromFoundation = true;
        setChallenge(challenge);
    }
    redoHistory_.clear();
    redoJson_.clear();
    setState(std::move(moved.state));
    clearTransients();
    persist();
    sound_.playPlacement();
    return true;
}

void GameStore::moveToFoundation(const MoveSource& source)
{
    const auto cards = movableCardsView(state_, source);
    if (!cards || cards->size() != 1) return;
    if (const auto foundation = foundationDestination(state_, source)) {
        move(source, MoveDestination::foundation(*foundation));
    } else {
        refuse(noFoundationAcceptsText(cards->front()));
    }
}

bool GameStore::autoMove(const MoveSource& source)
{
    const auto destination = automaticDestination(state_, source);
    return destination && move(source, *destination);
}

bool GameStore::performAutoMove(const FoundationAutoMove& planned)
{
    if (nextFoundationAutoMove(state_) != planned) return false;
    return move(planned.source, MoveDestination::foundation(planned.foundationIndex));
}

bool GameStore::canMove(const MoveSource& source, const MoveDestination& destination) const
{
    return zelvaine::canMove(state_, source, destination);
}

bool GameStore::canMoveToAnyFoundation(const MoveSource& source) const
{
    return zelvaine::canMoveToAnyFoundation(state_, source);
}

void GameStore::toggleSelection(const MoveSource& source)
{
    if (!movableCardsView(state_, source)) return;
    setSelection(selection_ == source ? std::nullopt : std::optional(source));
}

bool GameStore::handleTap(const MoveDestination& destination, const std::optional<MoveSource>& tapped)
{
    if (!selection_) return false;
    if (canMove(*selection_, destination)) return move(*selection_, destination);
    if (tapped == selection_) {
        setSelection(std::nullopt);
    } else if (tapped && movableCardsView(state_, *tapped)) {
        setSelection(tapped);
    } else {
        setSelection(std::nullopt);
    }
    clearMessage();
    lastTap_.reset();
    return false;
}

bool GameStore::registerTap(const MoveSource& source)
{
    const double now = clock_();
    if (lastTap_ && lastTap_->source == source && now - lastTap_->time < doubleTapInterval) {
        lastTap_.reset();
        return true;
    }
    lastTap_ = Tap{source, now};
    return false;
}

void GameStore::showHint()
{
    GameChallengeRecord challenge = challenge_;
    challenge.usedHint = true;
    setChallenge(challenge);
    assign(messageKind_, GameMessageKind::hint, GameStoreProperty::messageKind);
    Hint hint = findHint(state_);
    if (hint.source) setSelection(hint.source);
    assign(message_, std::move(hint.text), GameStoreProperty::message);
    // Saved after the hint is shown: a save that cannot be made says so once, and that word
    // must not be replaced by the hint before the player has seen it.
    persist();
}

void GameStore::showMoveHint(const MoveSource& source, const MoveDestination& destination)
{
    GameChallengeRecord challenge = challenge_;
    challenge.usedHint = true;
    setChallenge(challenge);
    assign(messageKind_, GameMessageKind::hint, GameStoreProperty::messageKind);
    setSelection(source);
    assign(message_, moveHintText(state_, source, destination), GameStoreProperty::message);
    persist(); // after the message, as the hint's
}

std::optional<ZelvaineGameDocumentError> GameStore::prepareSharedGame(const ZelvaineGameDocument& document)
{
    if (confirmation_) return std::nullopt;
    auto states = document.makeStates();
    if (!states) return states.error();
    pendingSharedGame_ = SharedGame{std::move(states->current), std::move(states->initial)};
    setConfirmation(GameConfirmation::openSharedGame);
    return std::nullopt;
}

void GameStore::openPendingSharedGame()
{
    if (!pendingSharedGame_) {
        setConfirmation(std::nullopt);
        return;
    }
    SharedGame game = std::move(*pendingSharedGame_);
    replaceDeal(std::move(game.current), std::move(game.initial), GameChallengeRecord::imported());
    pendingSharedGame_.reset();
    setConfirmation(std::nullopt);
    persist();
    sound_.play(restartCue.name, restartCue.volume);
}

void GameStore::rejectSharedGame(const std::optional<std::string>& description)
{
    pendingSharedGame_.reset();
    setConfirmation(std::nullopt);
    publishMessage(GameMessageKind::notice, description.value_or(sharedGameFailureText()));
}

void GameStore::showNotice(std::string text) { publishMessage(GameMessageKind::notice, std::move(text)); }

bool GameStore::canMakeDocument() const { return isWellFormed(state_) && isWellFormed(initialState_); }

std::optional<ZelvaineGameDocument> GameStore::makeDocument() const
{
    if (!canMakeDocument()) return std::nullopt;
    return ZelvaineGameDocument::fromStates(state_, initialState_);
}

void GameStore::publishMessage(GameMessageKind kind, std::string text)
{
    assign(messageKind_, kind, GameStoreProperty::messageKind);
    assign(message_, std::move(text), GameStoreProperty::message);
}

void GameStore::refuse(const std::string& text)
{
    setSelection(std::nullopt);
    refuseKeepingSelection(text);
}

void GameStore::refuseKeepingSelection(const std::string& text)
{
    publishMessage(GameMessageKind::moveFeedback, text);
    sound_.play(refusalCue.name, refusalCue.volume);
}

void GameStore::persist()
{
    if (!shouldPersist_) return;
    if (persistenceDeferralCount_ == 0) {
        persistNow();
    } else {
        hasDeferredPersistence_ = true;
    }
}

void GameStore::persistNow()
{
    if (!shouldPersist_) return;
    encodeRestoredHistories();
    defaults_.setRuns(savedGameKey, savedGameRuns(stateJson(), initialJson_, historyJson_, redoJson_, challenge_));
    hasDeferredPersistence_ = false;
    reportSaveHealth();
}

bool GameStore::reportOvertaken()
{
    if (overtakenTold_ || !defaults_.overtaken()) return false;
    overtakenTold_ = true;
    publishMessage(GameMessageKind::notice,
                   localized(QT_TRANSLATE_NOOP("Zelvaine",
                                               "Another Zelvaine window saved its game after this one was opened. "
                                               "To keep that game, this window no longer saves; start a new "
                                               "game here to save again.")));
    return true;
}

void GameStore::reportSaveHealth()
{
    // A window that no longer saves its game has said so; that its disk fails as well adds nothing.
    if (reportOvertaken() || overtakenTold_) return;
    // The write just handed over is still on its way; what is known is whether the ones before
    // it arrived, which is soon enough for the player to stop or make room.
    const auto failure = defaults_.writeFailure();
    if (!failure) {
        saveFailureTold_ = false;
        return;
    }
    if (saveFailureTold_) return;
    saveFailureTold_ = true;
    publishMessage(GameMessageKind::notice, saveFailureText(*failure));
}

void GameStore::beginDeferringPersistence() { ++persistenceDeferralCount_; }

void GameStore::endDeferringPersistence()
{
    if (persistenceDeferralCount_ == 0) return;
    --persistenceDeferralCount_;
    if (persistenceDeferralCount_ == 0 && hasDeferredPersistence_) persistNow();
}

void GameStore::flushDeferredPersistence()
{
    if (hasDeferredPersistence_) persistNow();
}

} // namespace zelvaine
