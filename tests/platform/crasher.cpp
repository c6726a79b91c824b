// Crashes in the way its argument names, with the crash handler installed, for test_crash.

#include "platform/CrashDump.h"
#include "platform/ThreadName.h"

#include <csignal>
#include <cstdint>
#include <string>
#include <thread>

// Volatile keeps the compiler from seeing the crash come.
volatile std::uintptr_t badAddress = 8;
volatile int wanted = 1 << 30;

static int recurse(int depth)
{
    volatile char block[4096];
    block[0] = char(depth);
    return depth < wanted ? recurse(depth + 1) + block[0] : 0;
}

int main(int, char **argv)
{
    const std::string how = argv[1];
    installCrashHandler(argv[2]);
    if (how == "memory")
        *reinterpret_cast<volatile int *>(badAddress) = 1;
    else if (how == "stack")
        return recurse(0);
    std::thread([] {
        setThreadName("crashing with a long name");
        std::raise(SIGFPE);
    }).join();
}
