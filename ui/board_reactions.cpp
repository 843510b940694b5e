#include "ui/board_reactions.hpp"

#include "engine/auto_complete.hpp"

#include <utility>

namespace zelvaine {

BoardReactions::BoardReactions(GameStore& store, FinishPlayback& finish, GamePreferences* statistics)
    : store_(store), finish_(finish), statistics_(statistics)
{
    recordStatistics();
}

void BoardReactions::positionChanged()
{
    if (store_.state().moveCount != 0) return;
    passedDealStart_ = true;
    finish_.stop();
}

void BoardReactions::react(double nowMilliseconds)
{
    recordStatistics();
    const GameState& state = store_.state();
    // A deal that passed through its start in the meantime (undo to the start, then a move) is
    // a fresh deal for the offer and the confetti.
    if (std::exchange(passedDealStart_, false) || state.moveCount == 0) {
        finish_.stop();
        hasOfferedFinish_ = false;
        dismissFinishQuestion();
        hasCelebratedCompletion_ = false;
        setCelebration(0);
    }
    if (isWon(state)) {
        // Undoing the last move and making it again wins the same position: no new confetti.
        if (!hasCelebratedCompletion_) {
            hasCelebratedCompletion_ = true;
            dismissFinishQuestion();
            setCelebration(nowMilliseconds);
        }
        return;
    }
    // A declined offer is not repeated during the deal, and no question is asked over another.
    if (finish_.isPlaying() || hasOfferedFinish_ || store_.confirmation()) return;
    if (hasNoBlockedKing(state) && canAutoComplete(state)) {
        hasOfferedFinish_ = true;
        store_.offerAutoComplete();
    }
}

void BoardReactions::completeFinishNow()
{
    if (!finish_.isPlaying()) return;
    finish_.completeNow();
    recordStatistics();
}

void BoardReactions::recordStatistics()
{
    if (!statistics_) return;
    const std::string identifier = store_.gameIdentifier();
    statistics_->recordGameStarted(identifier);
    const GameState& state = store_.state();
    if (isWon(state)) statistics_->recordGameWon(state.moveCount, identifier, !store_.challenge().wasImported);
}

void BoardReactions::setCelebration(double startedAt)
{
    if (startedAt == celebrationStartedAt_) return;
    celebrationStartedAt_ = startedAt;
    notify(BoardReactionsProperty::celebrationStartedAt);
}

void BoardReactions::dismissFinishQuestion()
{
    if (store_.confirmation() == GameConfirmation::autoComplete) store_.dismissConfirmation();
}

} // namespace zelvaine
