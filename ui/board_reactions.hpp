#pragma once

#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#include "store/observable.hpp"
#include "ui/finish_playback.hpp"

#include <cstdint>

namespace zelvaine {

enum class BoardReactionsProperty : std::uint8_t { celebrationStartedAt };

// What the board does after every change of the position: it keeps the statistics, offers the
// automatic finish once per deal, starts the confetti once per won position, and forgets the
// offer, the finish and the confetti when the deal is back at its start. It reads no clock: the
// caller says when the reaction runs, and ends the confetti after celebrationSeconds.
class BoardReactions : public Observable<BoardReactionsProperty> {
public:
    // With preferences the statistics are kept: the deal on show counts as played from now on.
    BoardReactions(GameStore& store, FinishPlayback& finish, GamePreferences* statistics);

    // The store's position changed, and its operation is still under way: its challenge record,
    // confirmation and message may change yet. Only a return to the deal's start is noted now,
    // and a playback is stopped before it takes one more step on that deal.
    void positionChanged();
    // Once the store's operation is over; `nowMilliseconds` since the epoch.
    void react(double nowMilliseconds);

    // The confetti's start in milliseconds since the epoch; 0 when none falls.
    double celebrationStartedAt() const { return celebrationStartedAt_; }
    // Its time is up.
    void endCelebration() { setCelebration(0); }

    // The game is ending during the playback: the finish is played out and the win counted at
    // once, as a reaction may never run again.
    void completeFinishNow();

private:
    void recordStatistics();
    void setCelebration(double startedAt);
    void dismissFinishQuestion();

    GameStore& store_;
    FinishPlayback& finish_;
    GamePreferences* statistics_;
    bool passedDealStart_ = false;
    bool hasOfferedFinish_ = false;
    bool hasCelebratedCompletion_ = false;
    double celebrationStartedAt_ = 0;
};

} // namespace zelvaine
