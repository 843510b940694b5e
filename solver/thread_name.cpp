#include "solver/thread_name.hpp"

#ifdef __linux__
#include <pthread.h>
#endif

namespace zelvaine::solver {

void nameThread([[maybe_unused]] std::jthread& thread, [[maybe_unused]] const char* name)
{
#ifdef __linux__
    pthread_setname_np(thread.native_handle(), name);
#endif
}

} // namespace zelvaine::solver
