#include "store/game_challenge_record.hpp"

#include <simdjson.h>

#include <array>
#include <utility>

namespace zelvaine {
namespace {

using Flag = bool GameChallengeRecord::*;
constexpr std::array<std::pair<std::string_view, Flag>, 6> fields{{
    {"usedHint", &GameChallengeRecord::usedHint},
    {"usedUndo", &GameChallengeRecord::usedUndo},
    {"usedRestart", &GameChallengeRecord::usedRestart},
    {"usedAutoComplete", &GameChallengeRecord::usedAutoComplete},
    {"movedCardFromFoundation", &GameChallengeRecord::movedCardFromFoundation},
    {"wasImported", &GameChallengeRecord::wasImported},
}};

} // namespace

void appendJson(std::string& out, const GameChallengeRecord& record)
{
    char separator = '{';
    for (const auto& [key, flag] : fields) {
        out += separator;
        out += '"';
        out += key;
        out += "\":";
        out += record.*flag ? "true" : "false";
        separator = ',';
    }
    out += '}';
}

JsonResult<GameChallengeRecord> decodeChallengeRecord(const simdjson::dom::element& value, const JsonPath& path)
{
    simdjson::dom::object object;
    if (value.get_object().get(object) != simdjson::SUCCESS) {
        return Unexpected{JsonError{path.text(), "expected a challenge record object"}};
    }
    GameChallengeRecord record;
    for (const auto& [key, flag] : fields) {
        simdjson::dom::element field;
        if (object.at_key(key).get(field) != simdjson::SUCCESS) {
            return Unexpected{JsonError{path.text(), "missing key \"" + std::string(key) + "\""}};
        }
        if (field.get_bool().get(record.*flag) != simdjson::SUCCESS) {
            return Unexpected{JsonError{JsonPath(path, key).text(), "expected a boolean"}};
        }
    }
    return record;
}

} // namespace zelvaine
