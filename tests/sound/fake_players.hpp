#pragma once

#include "sound/sound_player.hpp"

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace zelvaine::testing {

// What a fake player was asked to do, with the cue it was opened for and its place in
// that cue's pool (in order of opening).
struct PlayerEvent {
    // The output's own events (rest, wake) carry the cue "output".
    enum class Action { prepare, seek, volume, play, stop, rest, wake };

    std::string cue;
    int player = 0;
    Action action = Action::prepare;
    double value = 0; // seconds for seek, level for volume
    std::chrono::steady_clock::time_point at;
};

// Players that record instead of sounding. Files are never read: only their names matter.
class FakePlayers final : public SoundPlayerFactory {
public:
    // Cues whose files "cannot be opened as audio".
    explicit FakePlayers(std::set<std::string> unplayableCues = {}) : unplayable_(std::move(unplayableCues)) {}

    std::unique_ptr<SoundPlayer> open(const std::filesystem::path& file) override
    {
        const auto cue = file.stem().string();
        if (unplayable_.contains(cue)) return nullptr;
        std::lock_guard lock(log_->mutex);
        return std::make_unique<Player>(log_, cue, log_->opened[cue]++);
    }

    void setOutputResting(bool resting) override
    {
        std::lock_guard lock(log_->mutex);
        log_->events.push_back({"output", 0, resting ? PlayerEvent::Action::rest : PlayerEvent::Action::wake, 0,
                                std::chrono::steady_clock::now()});
    }

    std::vector<PlayerEvent> events() const
    {
        std::lock_guard lock(log_->mutex);
        return log_->events;
    }

    // The play events only, optionally of one cue.
    std::vector<PlayerEvent> plays(const std::string& cue = {}) const
    {
        std::vector<PlayerEvent> found;
        for (auto& event : events())
            if (event.action == PlayerEvent::Action::play && (cue.empty() || event.cue == cue)) found.push_back(event);
        return found;
    }

    std::map<std::string, int> openedPerCue() const
    {
        std::lock_guard lock(log_->mutex);
        return log_->opened;
    }

private:
    struct Log {
        mutable std::mutex mutex;
        std::vector<PlayerEvent> events;
        std::map<std::string, int> opened;
    };

    class Player final : public SoundPlayer {
    public:
        Player(std::shared_ptr<Log> log, std::string cue, int index)
            : log_(std::move(log)), cue_(std::move(cue)), index_(index)
        {}
        void prepareToPlay() override { record(PlayerEvent::Action::prepare, 0); }
        void setCurrentTime(double seconds) override { record(PlayerEvent::Action::seek, seconds); }
        void setVolume(float volume) override { record(PlayerEvent::Action::volume, volume); }
        void play() override { record(PlayerEvent::Action::play, 0); }
        void stop() override { record(PlayerEvent::Action::stop, 0); }

    private:
        void record(PlayerEvent::Action action, double value)
        {
            std::lock_guard lock(log_->mutex);
            log_->events.push_back({cue_, index_, action, value, std::chrono::steady_clock::now()});
        }
        std::shared_ptr<Log> log_;
        std::string cue_;
        int index_;
    };

    std::set<std::string> unplayable_;
    std::shared_ptr<Log> log_ = std::make_shared<Log>();
};

} // namespace zelvaine::testing
