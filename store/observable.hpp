#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace zelvaine {

// Observers hear which property was assigned, once per assignment, in the order of assignment.
// The views read the new value from the object; the order is part of each operation's contract.
template <class Property>
class Observable {
public:
    using Observer = std::function<void(Property)>;
    using Token = std::size_t;

    Token observe(Observer observer)
    {
        observers_.emplace_back(++lastToken_, std::move(observer));
        return lastToken_;
    }

    void unobserve(Token token)
    {
        std::erase_if(observers_, [token](const auto& entry) { return entry.first == token; });
    }

protected:
    void notify(Property property) const
    {
        // A copy, so that an observer may subscribe or unsubscribe while being told.
        const auto current = observers_;
        for (const auto& [token, observer] : current) observer(property);
    }

    template <class T, class V>
    void assign(T& field, V&& value, Property property)
    {
        field = std::forward<V>(value);
        notify(property);
    }

private:
    std::vector<std::pair<Token, Observer>> observers_;
    Token lastToken_ = 0;
};

} // namespace zelvaine
