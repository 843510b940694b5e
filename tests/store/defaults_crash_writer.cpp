// The crash test's child: saves ever newer records until it is killed. Each record is set
// together with three newer ones before a flush, so coalescing is in play; after each flush the
// newest sequence number goes down the pipe, and the parent knows that one at least is durable.
#include "store/sqlite_defaults_store.hpp"
#include "tests/store/child_process.hpp"
#include "tests/store/defaults_crash_record.hpp"

#include <unistd.h>

#include <cstdint>
#include <cstdlib>

int main(int argc, char** argv)
{
    using namespace zelvaine::testing;
    if (argc != 3) return 2;
    const int pipe = std::atoi(argv[2]);

    zelvaine::SqliteDefaultsStore store(argv[1]);
    std::uint64_t sequence = 0;
    if (auto stored = store.data(crash_record::key)) {
        auto decoded = crash_record::decode(*stored);
        if (!decoded) return 4; // the parent checks this too, but a child should not build on it
        sequence = *decoded;
    }
    report(pipe, sequence); // ready

    for (;;) {
        for (int i = 0; i < 4; ++i) store.set(crash_record::key, crash_record::encode(++sequence));
        store.flush();
        report(pipe, sequence);
    }
}
