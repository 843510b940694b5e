#pragma once

namespace zelvaine::solver {

// Hands the heap's free pages back to the system. A solve's tables are freed when it ends, but
// the allocator keeps what it once held; without this a game that asks the solver again and
// again would sit on the largest solve's memory for good. Does nothing where the C library
// offers no way to do it.
void releaseFreeMemory();

} // namespace zelvaine::solver
