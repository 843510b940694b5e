#pragma once

#include "store/defaults_store.hpp"

#include <map>
#include <mutex>

namespace zelvaine {

// Keeps values for the life of the object only; serves tests and runs that must not touch disk.
class InMemoryDefaultsStore final : public DefaultsStore {
public:
    std::optional<DefaultsValue> value(std::string_view key) const override
    {
        std::lock_guard lock(mutex_);
        auto found = values_.find(key);
        if (found == values_.end()) return std::nullopt;
        return found->second;
    }
    void set(std::string_view key, DefaultsValue value) override
    {
        std::lock_guard lock(mutex_);
        values_.insert_or_assign(std::string(key), std::move(value));
    }
    void remove(std::string_view key) override
    {
        std::lock_guard lock(mutex_);
        if (auto found = values_.find(key); found != values_.end()) values_.erase(found);
    }
    void flush() override {}

private:
    mutable std::mutex mutex_;
    std::map<std::string, DefaultsValue, std::less<>> values_;
};

} // namespace zelvaine
