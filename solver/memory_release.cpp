#include "solver/memory_release.hpp"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace zelvaine::solver {

void releaseFreeMemory()
{
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}

} // namespace zelvaine::solver
