#pragma once

#include "engine/auto_complete.hpp"
#include "store/game_store.hpp"
#include "store/observable.hpp"

#include <cstdint>
#include <functional>
#include <optional>

namespace zelvaine {

// What the finish needs of the board's flying cards. `fly` shows the step's card leaving for its
// foundation and says how long the flight takes in milliseconds (0 when nothing flies, as for a
// hand card or a board not yet drawn); `land` removes the flying card, if any. Either may be empty.
struct FinishFlights {
    std::function<int(const FoundationAutoMove&)> fly;
    std::function<void()> land;
};

enum class FinishPlaybackProperty : std::uint8_t { isPlaying };

// The automatic finish the player accepted, played one card at a time: a step flies its card,
// makes the move when the card lands and rests a moment before the next. It keeps no clock:
// start() and step() say after how many milliseconds step() wants to be called again, none when
// the playback is over. The store's saving is deferred for the whole playback so that the
// finish is written once, at its end.
class FinishPlayback : public Observable<FinishPlaybackProperty> {
public:
    // A flight when the board shows none, and the rest after each landing.
    static constexpr int flightMilliseconds = 95;
    static constexpr int restMilliseconds = 25;

    FinishPlayback(GameStore& store, FinishFlights flights);

    bool isPlaying() const { return isPlaying_; }

    // Only a position the finish can still win is played; anything else starts nothing.
    std::optional<int> start();
    std::optional<int> step();
    // Lands any flying card and resumes saving; safe to call when nothing plays.
    void stop();
    // The game is ending during the playback: the rest is played at once, without flights.
    void completeNow();

private:
    void land();

    GameStore& store_;
    FinishFlights flights_;
    bool isPlaying_ = false;
    // The step whose card is in the air; it is made when the flight lands.
    std::optional<FoundationAutoMove> flyingMove_;
};

} // namespace zelvaine
