#include "ui/solver_commands.hpp"

#include "engine/localizer.hpp"
#include "solver/memory_release.hpp"

#include <QMetaObject>
#include <QPointer>

namespace zelvaine {
namespace {

std::string verdictText(solver::Verdict verdict)
{
    switch (verdict) {
    case solver::Verdict::winnable: return localized(QT_TRANSLATE_NOOP("Zelvaine", "This deal can still be won."));
    case solver::Verdict::unwinnable:
        return localized(QT_TRANSLATE_NOOP("Zelvaine", "This deal can no longer be won."));
    case solver::Verdict::unknown: break;
    }
    return localized(QT_TRANSLATE_NOOP("Zelvaine", "The solver could not decide this deal quickly."));
}

} // namespace

SolverCommands::SolverCommands(GameStore& store, GamePreferences* preferences,
                               solver::WinnabilityService::SolveFunction solve, QObject* parent)
    : QObject(parent), store_(store), preferences_(preferences), solve_(std::move(solve))
{
    token_ = store_.observe([this](GameStoreProperty property) {
        if (property != GameStoreProperty::state) return;
        if (!changingPosition_) cancel();
        solveTableLive();
    });
    // Answers arrive on the worker; the queued call runs on this object's thread, and not at
    // all once this object is gone.
    auto makeService = [this](solver::WinnabilityService::Delivery deliver) {
        return solve_
                   ? std::make_unique<solver::WinnabilityService>(std::move(deliver), solve_, solver::releaseFreeMemory)
                   : std::make_unique<solver::WinnabilityService>(std::move(deliver));
    };
    live_ = makeService([this](solver::WinnabilityService::Answer answer) {
        QMetaObject::invokeMethod(
            this,
            [this, generation = answer.generation, verdict = answer.result.verdict] {
                // An answer already on its way when the game began to quit is about a table
                // that may have changed since, with no newer request to outdate it.
                if (quitting_ || generation != liveGeneration_ || liveVerdict_ == Verdict::Off) return;
                setLiveVerdict(verdict == solver::Verdict::winnable     ? Verdict::Winnable
                               : verdict == solver::Verdict::unwinnable ? Verdict::Lost
                                                                        : Verdict::Undecided);
            },
            Qt::QueuedConnection);
    });
    if (preferences_) {
        preferencesToken_ = preferences_->observe([this](GamePreferencesProperty property) {
            if (property == GamePreferencesProperty::showsWinnability ||
                property == GamePreferencesProperty::winnableDealsOnly)
                followPreferences();
        });
        followPreferences();
    }
    auto deliver = [this](solver::WinnabilityService::Answer answer) {
        QMetaObject::invokeMethod(
            this, [this, answer = std::move(answer)] { onAnswer(answer.generation, answer); }, Qt::QueuedConnection);
    };
    service_ = makeService(std::move(deliver));
}

SolverCommands::~SolverCommands()
{
    store_.unobserve(token_);
    if (preferences_) preferences_->unobserve(preferencesToken_);
    store_.setDealer({});
    dealer_.reset();
    live_.reset();
    service_.reset();
}

void SolverCommands::stopForQuit()
{
    quitting_ = true;
    cancel();
    live_->cancel();
    store_.setDealer({});
    dealer_.reset();
}

void SolverCommands::followPreferences()
{
    if (quitting_) return;
    if (preferences_->winnableDealsOnly() != (dealer_ != nullptr)) {
        if (preferences_->winnableDealsOnly()) {
            // Told on the dealer's thread; the store hears of it on this one, and not at all once
            // this object is gone.
            dealer_ = std::make_unique<solver::WinnableDealer>([] { return dealNewGame(); },
                                                               [this] {
                                                                   QMetaObject::invokeMethod(
                                                                       this, [this] { store_.dealerHasDeal(); },
                                                                       Qt::QueuedConnection);
                                                               },
                                                               solve_);
            store_.setDealer([this]() -> std::optional<GameState> {
                std::optional<GameState> deal = dealer_->take();
                if (!deal)
                    store_.showNotice(localized(QT_TRANSLATE_NOOP("Zelvaine", "Finding a deal that can be won…")));
                return deal;
            });
        } else {
            store_.setDealer({});
            dealer_.reset();
            // A new game waiting for a proven deal takes the plain shuffle instead.
            store_.dealerHasDeal();
        }
    }
    if (preferences_->showsWinnability() != (liveVerdict_ != Verdict::Off)) {
        if (preferences_->showsWinnability()) {
            setLiveVerdict(Verdict::Checking);
            solveTableLive();
        } else {
            live_->cancel();
            setLiveVerdict(Verdict::Off);
        }
    }
}

void SolverCommands::solveTableLive()
{
    if (liveVerdict_ == Verdict::Off || quitting_) return;
    setLiveVerdict(Verdict::Checking);
    liveGeneration_ = live_->request(store_.state());
}

void SolverCommands::setLiveVerdict(Verdict verdict)
{
    if (liveVerdict_ == verdict) return;
    liveVerdict_ = verdict;
    emit liveVerdictChanged();
}

void SolverCommands::setRunning(Command command)
{
    if (running_ == command) return;
    running_ = command;
    emit runningChanged();
}

void SolverCommands::cancel()
{
    if (running_ == Command::None) return;
    service_->cancel();
    setRunning(Command::None);
}

void SolverCommands::start(Command command)
{
    cancel();
    if (quitting_) return;
    setRunning(command);
    if (command == Command::UndoToWinnable) {
        std::vector<GameState> line = store_.history();
        line.push_back(store_.state());
        generation_ = service_->requestLastWinnable(std::move(line));
    } else {
        generation_ = service_->request(store_.state());
    }
}

void SolverCommands::onAnswer(std::uint64_t generation, const solver::WinnabilityService::Answer& answer)
{
    if (running_ == Command::None || generation != generation_ || !service_->isCurrent(generation)) return;
    const solver::SolveResult& result = answer.result;
    switch (running_) {
    case Command::CheckWinnability: finish(verdictText(result.verdict)); return;
    case Command::WinningMove:
        if (result.verdict == solver::Verdict::winnable && !result.moves.empty()) {
            setRunning(Command::None);
            store_.showMoveHint(result.moves.front().source, result.moves.front().destination);
        } else {
            finish(verdictText(result.verdict));
        }
        return;
    case Command::UndoToWinnable:
        if (answer.search) undoToLastWinnable(*answer.search);
        return;
    case Command::None: return;
    }
}

void SolverCommands::undoToLastWinnable(const solver::LastWinnableAnswer& search)
{
    // Nothing to look for while the table itself can be won, or cannot be decided.
    if (search.table != solver::Verdict::unwinnable) {
        finish(verdictText(search.table));
        return;
    }
    if (!search.lastWinnable) {
        finish(localized(QT_TRANSLATE_NOOP("Zelvaine", "This deal could not be won from its start.")));
        return;
    }
    // The line searched was the history and the table, unchanged since: a change would have
    // abandoned the command. The deal was lost by the move made from the last winnable position.
    const std::size_t last = *search.lastWinnable;
    const std::size_t steps = store_.history().size() - last;
    const std::int64_t lostAt = steps > 1 ? store_.history()[last + 1].moveCount : store_.state().moveCount;
    // Ordinary undo steps, so that Redo walks forward again.
    changingPosition_ = true;
    for (std::size_t step = 0; step < steps; ++step) store_.undo();
    changingPosition_ = false;
    finish(formatText(localized(QT_TRANSLATE_NOOP("Zelvaine", "The deal was lost at move %1.")),
                      {std::to_string(lostAt)}));
}

void SolverCommands::finish(std::string notice)
{
    setRunning(Command::None);
    store_.showNotice(std::move(notice));
}

} // namespace zelvaine
