#pragma once

#include "store/defaults_store.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "store/saved_game.hpp"
#include "store/sound_cues.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zelvaine::testing {

// Remembers every cue as text: "deal", "place", "card-shove-1@0.32", "enabled:0".
class RecordingSoundCues final : public SoundCues {
public:
    void playDeal() override { cues.push_back("deal"); }
    void playPlacement() override { cues.push_back("place"); }
    void play(std::string_view name, double volume) override
    {
        cues.push_back(std::string(name) + "@" + std::to_string(volume).substr(0, 4));
    }
    void setEnabled(bool enabled) override { cues.push_back(enabled ? "enabled:1" : "enabled:0"); }

    std::vector<std::string> cues;
};

// Counts writes so tests can tell how often the game was saved.
class CountingDefaultsStore final : public DefaultsStore {
public:
    std::optional<DefaultsValue> value(std::string_view key) const override
    {
        ++reads;
        return inner.value(key);
    }
    void set(std::string_view key, DefaultsValue value) override
    {
        ++writes;
        if (key == savedGameKey) ++saves;
        inner.set(key, std::move(value));
    }
    void remove(std::string_view key) override
    {
        ++writes;
        inner.remove(key);
    }
    void flush() override {}

    InMemoryDefaultsStore inner;
    mutable int reads = 0;
    int writes = 0;
    // The writes of the saved game alone.
    int saves = 0;
};

// A store whose disk fails on command, as the SQLite store reports it.
class FailingDefaultsStore final : public DefaultsStore {
public:
    std::optional<DefaultsValue> value(std::string_view key) const override { return inner.value(key); }
    void set(std::string_view key, DefaultsValue value) override { inner.set(key, std::move(value)); }
    void remove(std::string_view key) override { inner.remove(key); }
    void flush() override {}
    std::optional<DefaultsWriteFailure> writeFailure() const override { return failure; }
    std::optional<std::string> keptAsideFile() const override { return keptAside; }
    void guard(std::string_view key, std::string_view) override { guarded = std::string(key); }
    bool overtaken() const override { return isOvertaken; }
    void retake() override
    {
        isOvertaken = false;
        ++retakes;
    }

    InMemoryDefaultsStore inner;
    std::optional<DefaultsWriteFailure> failure;
    std::optional<std::string> keptAside;
    std::optional<std::string> guarded;
    bool isOvertaken = false;
    int retakes = 0;
};

} // namespace zelvaine::testing
