#pragma once

#include "ui/finish_playback.hpp"

#include <vector>

namespace zelvaine::testing {

// Stands in for the drag controller: remembers every card sent flying and every landing, and
// flies a column's card for `columnFlight` milliseconds and a hand card not at all, as the
// board does.
struct RecordingFlights {
    std::vector<FoundationAutoMove> flown;
    int landings = 0;
    int columnFlight = 120;

    FinishFlights hooks()
    {
        return {[this](const FoundationAutoMove& move) {
                    flown.push_back(move);
                    return move.source.isHand() ? 0 : columnFlight;
                },
                [this] { ++landings; }};
    }
};

} // namespace zelvaine::testing
