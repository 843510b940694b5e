#include "solver/memory_release.hpp"

// Any C library header defines __GLIBC__ on the GNU C library.
#include <cstdlib>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace zelvaine::solver {

void keepLargeBlocksMapped()
{
#if defined(__GLIBC__)
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
#endif
}

void releaseFreeMemory()
{
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}

} // namespace zelvaine::solver
