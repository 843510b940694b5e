#include "tools/cli/move_text.hpp"

#include <charconv>
#include <vector>

namespace zelvaine::cli {
namespace {

std::vector<std::string_view> split(std::string_view text)
{
    std::vector<std::string_view> parts;
    for (;;) {
        const auto colon = text.find(':');
        parts.push_back(text.substr(0, colon));
        if (colon == std::string_view::npos) return parts;
        text.remove_prefix(colon + 1);
    }
}

std::optional<std::int64_t> number(std::string_view text)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
    return value;
}

} // namespace

std::optional<MoveSource> parseMoveSource(std::string_view text)
{
    const auto parts = split(text);
    if (parts[0] == "tableau" && parts.size() == 3) {
        const auto column = number(parts[1]);
        const auto card = number(parts[2]);
        if (column && card) return MoveSource::tableau(*column, *card);
    } else if (parts.size() == 2) {
        const auto index = number(parts[1]);
        if (!index) return std::nullopt;
        if (parts[0] == "hand") return MoveSource::hand(*index);
        if (parts[0] == "foundation") return MoveSource::foundation(*index);
    }
    return std::nullopt;
}

std::optional<MoveDestination> parseMoveDestination(std::string_view text)
{
    const auto parts = split(text);
    if (parts.size() == 1 && parts[0] == "hand") return MoveDestination::hand();
    if (parts.size() != 2) return std::nullopt;
    const auto index = number(parts[1]);
    if (!index) return std::nullopt;
    if (parts[0] == "tableau") return MoveDestination::tableau(*index);
    if (parts[0] == "foundation") return MoveDestination::foundation(*index);
    if (parts[0] == "hand") return MoveDestination::hand(*index);
    return std::nullopt;
}

} // namespace zelvaine::cli
