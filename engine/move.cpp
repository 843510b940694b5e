#include "engine/move.hpp"

#include <functional>

namespace zelvaine {

std::size_t MoveSourceHash::operator()(const MoveSource& source) const noexcept
{
    const std::hash<std::int64_t> h;
    return h(static_cast<std::int64_t>(source.kind)) * 31 * 31 + h(source.index) * 31 + h(source.cardIndex);
}

std::size_t MoveDestinationHash::operator()(const MoveDestination& destination) const noexcept
{
    const std::hash<std::int64_t> h;
    const std::size_t slot = destination.index ? h(*destination.index) * 2 + 1 : 0;
    return h(static_cast<std::int64_t>(destination.kind)) * 31 + slot;
}

std::string toString(const MoveSource& source)
{
    switch (source.kind) {
    case MoveSource::Kind::tableau:
        return "tableau:" + std::to_string(source.index) + ":" + std::to_string(source.cardIndex);
    case MoveSource::Kind::hand: return "hand:" + std::to_string(source.index);
    case MoveSource::Kind::foundation: return "foundation:" + std::to_string(source.index);
    }
    return {};
}

std::string toString(const MoveDestination& destination)
{
    std::string name;
    switch (destination.kind) {
    case MoveDestination::Kind::tableau: name = "tableau"; break;
    case MoveDestination::Kind::foundation: name = "foundation"; break;
    case MoveDestination::Kind::hand: name = "hand"; break;
    }
    if (destination.index) name += ":" + std::to_string(*destination.index);
    return name;
}

} // namespace zelvaine
