#include "solver/solver_task.hpp"

#include <chrono>

namespace zelvaine::solver {

SolverTask::SolverTask(GameState state, SolverOptions options, Callback onFinished)
    : future_(promise_.get_future().share()),
      thread_([this, state = std::move(state), options, onFinished = std::move(onFinished)](std::stop_token stop) {
          SolveResult result = solve(state, options, stop);
          if (onFinished) onFinished(result);
          promise_.set_value(std::move(result));
      })
{}

bool SolverTask::isFinished() const { return future_.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }

} // namespace zelvaine::solver
