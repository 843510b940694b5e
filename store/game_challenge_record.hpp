#pragma once

#include "engine/state_json.hpp"

#include <string>

namespace zelvaine {

// Which kinds of help the player used in the current deal, and whether it came from a file.
struct GameChallengeRecord {
    bool usedHint = false;
    bool usedUndo = false;
    bool usedRestart = false;
    bool usedAutoComplete = false;
    bool movedCardFromFoundation = false;
    bool wasImported = false;

    static GameChallengeRecord imported()
    {
        GameChallengeRecord record;
        record.wasImported = true;
        return record;
    }

    friend bool operator==(const GameChallengeRecord&, const GameChallengeRecord&) = default;
};

void appendJson(std::string& out, const GameChallengeRecord& record);
// All six keys are required, each a boolean.
JsonResult<GameChallengeRecord> decodeChallengeRecord(const simdjson::dom::element& value, const JsonPath& path);

} // namespace zelvaine
