#pragma once

#include <thread>

namespace zelvaine::solver {

// Names a worker as the system's tools show it, so that a test or a player's process monitor can
// tell the solver's threads apart. Does nothing where the system has no such names.
void nameThread(std::jthread& thread, const char* name);

} // namespace zelvaine::solver
