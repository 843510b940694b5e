#include "ui/finish_playback.hpp"

#include <utility>

namespace zelvaine {

FinishPlayback::FinishPlayback(GameStore& store, FinishFlights flights) : store_(store), flights_(std::move(flights)) {}

std::optional<int> FinishPlayback::start()
{
    const GameState& state = store_.state();
    if (isWon(state) || !hasNoBlockedKing(state) || !canAutoComplete(state)) return std::nullopt;
    store_.enterAutoComplete();
    stop();
    isPlaying_ = true;
    store_.beginDeferringPersistence();
    notify(FinishPlaybackProperty::isPlaying);
    // The first step comes at once, though not within the player's answer to the question.
    return 0;
}

std::optional<int> FinishPlayback::step()
{
    if (!isPlaying_) return std::nullopt;
    if (flyingMove_) {
        const FoundationAutoMove move = *std::exchange(flyingMove_, std::nullopt);
        const bool moved = store_.performAutoMove(move);
        land();
        if (!moved || isWon(store_.state())) {
            stop();
            return std::nullopt;
        }
        // Whoever heard of the move may have ended the playback.
        if (!isPlaying_) return std::nullopt;
        return restMilliseconds;
    }
    const auto move = isWon(store_.state()) ? std::nullopt : nextFoundationAutoMove(store_.state());
    if (!move) {
        stop();
        return std::nullopt;
    }
    const int flight = flights_.fly ? flights_.fly(*move) : 0;
    flyingMove_ = move;
    return flight > 0 ? flight : flightMilliseconds;
}

void FinishPlayback::completeNow()
{
    if (!isPlaying_) return;
    if (flyingMove_) store_.performAutoMove(*std::exchange(flyingMove_, std::nullopt));
    while (!isWon(store_.state())) {
        const auto move = nextFoundationAutoMove(store_.state());
        if (!move || !store_.performAutoMove(*move)) break;
    }
    // Ends the deferral, which writes the game once.
    stop();
}

void FinishPlayback::stop()
{
    flyingMove_.reset();
    // Also when nothing plays: a deal back at its start must show no card in the air.
    land();
    if (!isPlaying_) return;
    isPlaying_ = false;
    store_.endDeferringPersistence();
    notify(FinishPlaybackProperty::isPlaying);
}

void FinishPlayback::land()
{
    if (flights_.land) flights_.land();
}

} // namespace zelvaine
