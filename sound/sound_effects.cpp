#include "sound/sound_effects.hpp"

#include "sound/openal_player.hpp"
#include "sound/resource_folder.hpp"
#include "store/game_preferences.hpp"
#include "store/sound_cues.hpp"

#include <algorithm>
#include <chrono>

namespace zelvaine {

namespace {

constexpr std::chrono::milliseconds kFanDelay{650};
// Cards land in quick runs (the automatic finish), so each placement cue may overlap itself.
constexpr int kPlacementPoolSize = 3;

} // namespace

SoundEffects& SoundEffects::shared(const DefaultsStore& defaults)
{
    static const std::shared_ptr<SoundEffects> instance =
        create(defaults, std::make_shared<OpenAlPlayerFactory>(), applicationResourceFolder());
    return *instance;
}

std::shared_ptr<SoundEffects> SoundEffects::create(const DefaultsStore& defaults,
                                                   std::shared_ptr<SoundPlayerFactory> playerFactory,
                                                   std::optional<std::filesystem::path> resourceFolder,
                                                   std::chrono::milliseconds restAfter)
{
    // Anything but a stored boolean, including a value of another type, means sounds on.
    const bool enabled = defaults.boolean(preferenceKeys::soundsEnabled).value_or(true);
    std::shared_ptr<SoundEffects> effects(
        new SoundEffects(enabled, std::move(playerFactory), std::move(resourceFolder), restAfter));
    effects->audioQueue_.post([raw = effects.get()] { raw->preloadPlayers(); });
    return effects;
}

SoundEffects::SoundEffects(bool enabled, std::shared_ptr<SoundPlayerFactory> playerFactory,
                           std::optional<std::filesystem::path> resourceFolder, std::chrono::milliseconds restAfter)
    : audioQueue_("zelvaine-sound"),
      playerFactory_(std::move(playerFactory)),
      resourceFolder_(std::move(resourceFolder)),
      restAfter_(restAfter),
      isEnabled_(enabled)
{}

SoundEffects::~SoundEffects()
{
    // Work posted with a plain `this` is dropped here, before any member it uses goes away.
    audioQueue_.shutdown();
}

void SoundEffects::play(std::string_view name, float volume)
{
    audioQueue_.post([this, name = std::string(name), volume] { playOnQueue(name, volume); });
}

void SoundEffects::playDeal()
{
    audioQueue_.post([this] { playDealOnQueue(); });
}

void SoundEffects::playPlacement()
{
    audioQueue_.post([this] { playPlacementOnQueue(); });
}

void SoundEffects::setEnabled(bool enabled)
{
    audioQueue_.post([this, enabled] { setEnabledOnQueue(enabled); });
}

void SoundEffects::waitUntilIdle() { audioQueue_.waitUntilIdle(); }

void SoundEffects::preloadPlayers()
{
    audioQueue_.requireCurrent("SoundEffects::preloadPlayers");
    std::vector<std::string_view> cues{shuffleCue.name, fanCue.name, refusalCue.name};
    for (const SoundCue& placement : placementCues) cues.push_back(placement.name);

    for (const std::string_view cue : cues) {
        const bool isPlacement = std::ranges::find(placementCues, cue, &SoundCue::name) != placementCues.end();
        PlayerPool pool;
        for (int round = 0; round < (isPlacement ? kPlacementPoolSize : 1); ++round) {
            const auto file = findResource(resourceFolder_, "SoundEffects", cue, "caf");
            if (!file) continue;
            auto player = playerFactory_->open(*file);
            if (!player) continue;
            player->prepareToPlay();
            pool.push_back(std::move(player));
        }
        players_.insert_or_assign(std::string(cue), std::move(pool));
    }
    restOutputLater();
}

void SoundEffects::playOnQueue(const std::string& name, float volume)
{
    audioQueue_.requireCurrent("SoundEffects::play");
    if (!isEnabled_) return;
    const auto found = players_.find(name);
    if (found == players_.end() || found->second.empty()) return;

    auto& pool = found->second;
    auto& next = nextPlayerIndex_[name];
    const std::size_t chosen = next % pool.size();
    next = chosen + 1;

    // Restarting cuts off a player that is still sounding: with a full pool the oldest sound
    // gives way to the newest.
    auto& player = *pool[chosen];
    wakeOutput();
    player.setCurrentTime(0);
    player.setVolume(volume);
    player.play();
    restOutputLater();
}

void SoundEffects::playDealOnQueue()
{
    // An older deal's fan must never follow this deal's shuffle, whether or not sounds are on.
    cancelPendingDealSound();
    if (!isEnabled_) return;
    playOnQueue(std::string(shuffleCue.name), static_cast<float>(shuffleCue.volume));
    pendingDealSound_ = audioQueue_.runAfter(kFanDelay, [weakSelf = weak_from_this()] {
        const auto self = weakSelf.lock();
        if (!self) return;
        self->pendingDealSound_.reset();
        // Goes through the gate again: sounds may have been switched off in the meantime.
        self->playOnQueue(std::string(fanCue.name), static_cast<float>(fanCue.volume));
    });
}

void SoundEffects::playPlacementOnQueue()
{
    const SoundCue& cue = placementCues[uniformBelow(random_, placementCues.size())];
    playOnQueue(std::string(cue.name), static_cast<float>(cue.volume));
}

void SoundEffects::setEnabledOnQueue(bool enabled)
{
    isEnabled_ = enabled;
    if (enabled) return;
    cancelPendingDealSound();
    for (auto& [cue, pool] : players_) {
        for (auto& player : pool) {
            player->stop();
            player->setCurrentTime(0);
        }
    }
}

void SoundEffects::cancelPendingDealSound() { pendingDealSound_.reset(); }

void SoundEffects::wakeOutput()
{
    if (!outputResting_) return;
    playerFactory_->setOutputResting(false);
    outputResting_ = false;
}

void SoundEffects::restOutputLater()
{
    restingOutput_ = audioQueue_.runAfter(restAfter_, [weakSelf = weak_from_this()] {
        const auto self = weakSelf.lock();
        if (!self) return;
        self->restingOutput_.reset();
        self->playerFactory_->setOutputResting(true);
        self->outputResting_ = true;
    });
}

} // namespace zelvaine
