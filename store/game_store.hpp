#pragma once

#include "engine/auto_complete.hpp"
#include "engine/game_state.hpp"
#include "engine/move.hpp"
#include "store/defaults_store.hpp"
#include "store/game_challenge_record.hpp"
#include "store/game_confirmation.hpp"
#include "store/game_document.hpp"
#include "store/observable.hpp"
#include "store/saved_game.hpp"
#include "store/sound_cues.hpp"
#include "store/uptime_clock.hpp"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zelvaine {

enum class GameStoreProperty : std::uint8_t {
    state,
    selection,
    showRules,
    confirmation,
    isImportingGame,
    message,
    messageKind,
    challenge
};

// The one live game. Every player action ends in one of these operations; the store asks the
// rules for every decision and adds what surrounds a change: history, the challenge record,
// selection and message, saving and the sound cue, in a fixed order.
class GameStore : public Observable<GameStoreProperty> {
public:
    struct Tap {
        MoveSource source;
        double time = 0;
    };
    struct SharedGame {
        GameState current;
        GameState initial;
    };

    // Without a game, restores the saved game (or deals) and saves from then on; with one,
    // plays that game and never touches the saved game.
    GameStore(std::optional<GameState> initialGame, DefaultsStore& defaults, SoundCues& sound,
              UptimeClock clock = steadyUptimeSeconds);

    // Observable properties.
    const GameState& state() const { return state_; }
    const std::optional<MoveSource>& selection() const { return selection_; }
    bool showRules() const { return showRules_; }
    const std::optional<GameConfirmation>& confirmation() const { return confirmation_; }
    bool isImportingGame() const { return isImportingGame_; }
    const std::optional<std::string>& message() const { return message_; }
    const std::optional<GameMessageKind>& messageKind() const { return messageKind_; }
    const GameChallengeRecord& challenge() const { return challenge_; }

    // Plain properties.
    const GameState& initialState() const { return initialState_; }
    const std::vector<GameState>& history() const { return history_; }
    const std::vector<GameState>& redoHistory() const { return redoHistory_; }
    const std::optional<Tap>& lastTap() const { return lastTap_; }
    const std::optional<SharedGame>& pendingSharedGame() const { return pendingSharedGame_; }
    std::int64_t persistenceDeferralCount() const { return persistenceDeferralCount_; }
    bool hasDeferredPersistence() const { return hasDeferredPersistence_; }
    bool shouldPersist() const { return shouldPersist_; }

    bool hasProgress() const { return state_ != initialState_; }
    std::string gameIdentifier() const;

    // Written by the views themselves.
    void setSelection(std::optional<MoveSource> selection);
    void clearLastTap() { lastTap_.reset(); }
    void setShowRules(bool show);
    void setIsImportingGame(bool importing);
    // The toast expired or was filtered out.
    void clearMessage();

    // Deals the dealer's next game, or waits for one when it has none ready: the dealer says so
    // through dealerHasDeal(), and any change of position before then drops the request.
    void newGame();
    // Where newGame's deals come from; none for the plain shuffle.
    void setDealer(std::function<std::optional<GameState>()> dealer) { dealer_ = std::move(dealer); }
    // The dealer has a deal ready, or was replaced: a new game waiting for one is dealt now.
    void dealerHasDeal();
    bool isAwaitingDeal() const { return awaitingDeal_; }
    void restartGame();
    void undo();
    void redo();
    void requestNewGame();
    void requestRestart();
    void dismissConfirmation();
    // The board found the position finishable and asks the player.
    void offerAutoComplete();
    // The player accepted the automatic finish; the playback follows.
    void enterAutoComplete();

    bool move(const MoveSource& source, const MoveDestination& destination);
    void moveToFoundation(const MoveSource& source);
    bool autoMove(const MoveSource& source);
    bool performAutoMove(const FoundationAutoMove& planned);
    bool canMove(const MoveSource& source, const MoveDestination& destination) const;
    bool canMoveToAnyFoundation(const MoveSource& source) const;

    void toggleSelection(const MoveSource& source);
    bool isSelected(const MoveSource& source) const { return selection_ == source; }
    // `tapped` is the source under the tap, when the tapped card could be one.
    bool handleTap(const MoveDestination& destination, const std::optional<MoveSource>& tapped);
    bool registerTap(const MoveSource& source);

    void showHint();
    // A hint chosen elsewhere (the solver's next winning move): shown and counted like showHint.
    void showMoveHint(const MoveSource& source, const MoveDestination& destination);

    // Converts and holds a received game until the player confirms; the conversion's error is
    // returned unchanged and nothing changes then.
    std::optional<ZelvaineGameDocumentError> prepareSharedGame(const ZelvaineGameDocument& document);
    void openPendingSharedGame();
    void rejectSharedGame(const std::optional<std::string>& description);
    // A word about the player's files (a share written or not) that leaves any question standing.
    void showNotice(std::string text);
    // Whether the game can be shared: both of its positions are well formed.
    bool canMakeDocument() const;
    std::optional<ZelvaineGameDocument> makeDocument() const;

    void refuse(const std::string& text);
    // For a refused drop: the dragged source stays selected.
    void refuseKeepingSelection(const std::string& text);

    void persist();
    void persistNow();
    void beginDeferringPersistence();
    void endDeferringPersistence();
    void flushDeferredPersistence();

private:
    void replaceDeal(GameState current, GameState initial, GameChallengeRecord challenge);
    void setState(GameState state);
    void pushHistory();
    void clearTransients();
    void setConfirmation(std::optional<GameConfirmation> confirmation);
    void setChallenge(GameChallengeRecord challenge);
    void publishMessage(GameMessageKind kind, std::string text);
    const EncodedPosition& stateJson();
    // Tells the player, once for each run of failures, that their game is not reaching the disk.
    void reportSaveHealth();
    // Tells the player, once, that another process saved a game this one would overwrite.
    bool reportOvertaken();
    void encodeRestoredHistories();

    DefaultsStore& defaults_;
    SoundCues& sound_;
    UptimeClock clock_;
    bool shouldPersist_;

    GameState state_;
    std::optional<MoveSource> selection_;
    bool showRules_ = false;
    std::optional<GameConfirmation> confirmation_;
    bool isImportingGame_ = false;
    std::optional<std::string> message_;
    std::optional<GameMessageKind> messageKind_;
    GameChallengeRecord challenge_;

    GameState initialState_;
    std::vector<GameState> history_;
    std::vector<GameState> redoHistory_;
    std::optional<Tap> lastTap_;
    std::optional<SharedGame> pendingSharedGame_;
    std::int64_t persistenceDeferralCount_ = 0;
    bool hasDeferredPersistence_ = false;

    // The JSON of each recorded position, kept beside it: positions never change once recorded.
    EncodedPosition stateJson_;
    EncodedPosition initialJson_;
    std::vector<EncodedPosition> historyJson_;
    std::vector<EncodedPosition> redoJson_;
    // A restored game's histories are encoded at their first use rather than during start-up.
    bool historiesEncoded_ = true;
    bool saveFailureTold_ = false;
    bool overtakenTold_ = false;
    // A saved game found damaged at start: where it was kept, or that it could not be.
    std::optional<std::string> damagedGameKeptAs_;
    bool damagedGameLost_ = false;
    std::function<std::optional<GameState>()> dealer_;
    bool awaitingDeal_ = false;
};

} // namespace zelvaine
