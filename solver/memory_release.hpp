#pragma once

namespace zelvaine::solver {

// Solves ask for tables of different sizes, and the allocator, having freed a large block, raises
// its threshold for mapping blocks of their own and keeps the next ones in its heap, which it
// seldom gives back. Called once, before solving, this keeps every block from 1 MB mapped on its
// own, so freeing it returns it to the system at once.
void keepLargeBlocksMapped();

// Hands the heap's free pages back to the system. A solve's tables are freed when it ends, but
// the allocator keeps what it once held; without this a game that asks the solver again and
// again would sit on the largest solve's memory for good. Both do nothing where the C library
// offers no way to do it.
void releaseFreeMemory();

} // namespace zelvaine::solver
