// Crashes in the way its argument names, with the crash handler installed, for test_crash.

#include "platform/CrashDump.h"
#include "platform/ThreadName.h"

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace
{
// Volatile keeps the compiler from seeing the crash come.
volatile std::uintptr_t badAddress = 8;
volatile int wanted = 1 << 30;

int recurse(int depth)
{
    volatile char block[4096];
    block[0] = char(depth);
    return depth < wanted ? recurse(depth + 1) + block[0] : 0;
}

void crash(const char *how)
{
    if (!std::strcmp(how, "memory"))
        *reinterpret_cast<volatile int *>(badAddress) = 1;
    else if (!std::strcmp(how, "abort"))
        std::abort();
    else if (!std::strcmp(how, "stack"))
        std::exit(recurse(0));
    else if (!std::strcmp(how, "thread"))
        std::thread([] {
            setThreadName("crashing");
            std::raise(SIGFPE);
        }).join();
}
} // namespace

int main(int argc, char **argv)
{
    installCrashHandler(argc > 2 ? argv[2] : "");
    crash(argc > 1 ? argv[1] : "");
    return 0;
}
