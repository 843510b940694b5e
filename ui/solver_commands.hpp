#pragma once

// moc cannot read the C++20 standard headers these pull in, and needs nothing from them.
#ifndef Q_MOC_RUN
#include "solver/last_winnable_search.hpp"
#include "solver/winnability_service.hpp"
#include "solver/winnable_dealer.hpp"
#include "store/game_preferences.hpp"
#include "store/game_store.hpp"
#endif

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>
#include <vector>

namespace zelvaine {

// The solver's commands at the table: whether the deal can still be won, the undo back to the
// last position that could, and the next move of a winning line. Every solve runs on the
// service's worker; a change of position (a move, an undo, a new game) abandons the command.
class SolverCommands : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application around its store")
    // The command at work.
    Q_PROPERTY(Command running READ running NOTIFY runningChanged FINAL)
    // The toolbar's verdict on the table while the player asks for it.
    Q_PROPERTY(Verdict liveVerdict READ liveVerdict NOTIFY liveVerdictChanged FINAL)

public:
    enum class Command { None, CheckWinnability, UndoToWinnable, WinningMove };
    Q_ENUM(Command)
    enum class Verdict { Off, Checking, Winnable, Lost, Undecided };
    Q_ENUM(Verdict)

    // With preferences, the live verdict and the winnable deals follow the player's choices.
    // Without `solve`, the solver with its normal budgets; tests put a scripted search in its place.
    explicit SolverCommands(GameStore& store, GamePreferences* preferences = nullptr,
                            solver::WinnabilityService::SolveFunction solve = {}, QObject* parent = nullptr);
    ~SolverCommands() override;

    Command running() const { return running_; }
    Verdict liveVerdict() const { return liveVerdict_; }

    Q_INVOKABLE void checkWinnability() { start(Command::CheckWinnability); }
    Q_INVOKABLE void undoToLastWinnablePosition() { start(Command::UndoToWinnable); }
    Q_INVOKABLE void showWinningMove() { start(Command::WinningMove); }
    Q_INVOKABLE void cancel();
    // The game is quitting: every solve stops now rather than when this object goes, after the
    // window, and none starts again.
    void stopForQuit();

signals:
    void runningChanged();
    void liveVerdictChanged();

private:
    void start(Command command);
    void setRunning(Command command);
    void onAnswer(std::uint64_t generation, const solver::WinnabilityService::Answer& answer);
    void undoToLastWinnable(const solver::LastWinnableAnswer& search);
    void finish(std::string notice);
    void followPreferences();
    void solveTableLive();
    void setLiveVerdict(Verdict verdict);

    GameStore& store_;
    GamePreferences* preferences_;
    solver::WinnabilityService::SolveFunction solve_;
    Observable<GameStoreProperty>::Token token_;
    Observable<GamePreferencesProperty>::Token preferencesToken_ = 0;
    Verdict liveVerdict_ = Verdict::Off;
    std::uint64_t liveGeneration_ = 0;
    Command running_ = Command::None;
    std::uint64_t generation_ = 0;
    bool quitting_ = false;
    // Set while the command itself changes the position, which must not abandon it.
    bool changingPosition_ = false;
    // Last, so that its worker stops before anything above goes away.
    std::unique_ptr<solver::WinnabilityService> service_;
    std::unique_ptr<solver::WinnabilityService> live_;
    std::unique_ptr<solver::WinnableDealer> dealer_;
};

} // namespace zelvaine
