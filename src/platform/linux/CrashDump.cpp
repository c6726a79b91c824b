#include "platform/CrashDump.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <execinfo.h>
#include <fcntl.h>
#include <initializer_list>
#include <sys/syscall.h>
#include <sys/types.h>
#include <ucontext.h>
#include <unistd.h>

// Everything below onFatalSignal runs in a dying process: no heap, no locks, no stdio, only system calls. The
// one liberty is backtrace(), which is safe once its library has been loaded, and that happens at
// installation.

namespace
{
constexpr int fatalSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr int maxFrames = 128;

char dumpFolder[512];
long localOffset = 0;                 // seconds of local time ahead of UTC, since localtime() may take a lock
alignas(16) char handlerStack[65536]; // a stack overflow leaves no room on the thread's own
std::atomic<pid_t> dumpingThread{0};

struct Register {
    const char *name;
    int index;
};
#if defined(__x86_64__)
constexpr Register registers[] = {
    {"RIP", REG_RIP}, {"RSP", REG_RSP}, {"RBP", REG_RBP}, {"RAX", REG_RAX},       {"RBX", REG_RBX},
    {"RCX", REG_RCX}, {"RDX", REG_RDX}, {"RSI", REG_RSI}, {"RDI", REG_RDI},       {"R8", REG_R8},
    {"R9", REG_R9},   {"R10", REG_R10}, {"R11", REG_R11}, {"R12", REG_R12},       {"R13", REG_R13},
    {"R14", REG_R14}, {"R15", REG_R15}, {"EFL", REG_EFL}, {"TRAPNO", REG_TRAPNO}, {"CR2", REG_CR2}};
uint64_t registerValue(const ucontext_t *context, int index)
{
    return uint64_t(context->uc_mcontext.gregs[index]);
}
#elif defined(__aarch64__)
constexpr Register registers[] = {{"X0", 0}, {"X1", 1}, {"X2", 2}, {"X3", 3}, {"X29", 29}, {"X30", 30}};
uint64_t registerValue(const ucontext_t *context, int index)
{
    return context->uc_mcontext.regs[index];
}
#endif

void put(int fd, const char *text, size_t length)
{
    while (length > 0) {
        const ssize_t count = ::write(fd, text, length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        text += count;
        length -= size_t(count);
    }
}

void put(int fd, const char *text)
{
    put(fd, text, std::strlen(text));
}

/// Writes `value` right-aligned in at least `digits` digits at `end` - 1 and before; returns where it begins.
char *formatNumber(char *end, uint64_t value, unsigned base, int digits)
{
    while (digits-- > 0 || value > 0) {
        *--end = "0123456789abcdef"[value % base];
        value /= base;
    }
    return end;
}

void putNumber(int fd, uint64_t value, unsigned base, int digits)
{
    char text[32];
    char *end = text + sizeof(text);
    const char *begin = formatNumber(end, value, base, digits);
    put(fd, begin, size_t(end - begin));
}

/// "<folder>yyyyMMddhhmmss.dmp" of the present local time. The date is counted from 1 March of year 0, as
/// usual where the C library's conversion cannot be called.
void dumpName(char *name)
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const int64_t local = int64_t(now.tv_sec) + localOffset;
    const int64_t days = local / 86400 + 719468;
    const int64_t era = days / 146097;
    const int64_t dayOfEra = days % 146097;
    const int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int64_t shifted = (5 * dayOfYear + 2) / 153; // 0 is March
    const int64_t month = shifted < 10 ? shifted + 3 : shifted - 9;
    const int64_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    const int64_t day = dayOfYear - (153 * shifted + 2) / 5 + 1;
    const int64_t second = local % 86400;

    std::strcpy(name, dumpFolder);
    char *end = name + std::strlen(name) + 14;
    std::strcpy(end, ".dmp");
    for (const int64_t part : {second % 60, second / 60 % 60, second / 3600, day, month})
        end = formatNumber(end, uint64_t(part), 10, 2);
    formatNumber(end, uint64_t(year), 10, 4);
}

void putRegisters(int fd, const ucontext_t *context)
{
    put(fd, "registers:\n");
    for (const Register &entry : registers) {
        put(fd, entry.name);
        put(fd, " 0x");
        putNumber(fd, registerValue(context, entry.index), 16, 16);
        put(fd, "\n");
    }
}

void putModules(int fd)
{
    put(fd, "modules:\n");
    const int maps = ::open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
    if (maps < 0)
        return;
    char block[4096];
    ssize_t count = 0;
    while ((count = ::read(maps, block, sizeof(block))) > 0)
        put(fd, block, size_t(count));
    ::close(maps);
}

void putThreadName(int fd)
{
    char name[16] = {};
    const int comm = ::open("/proc/thread-self/comm", O_RDONLY | O_CLOEXEC);
    if (comm < 0)
        return;
    const ssize_t count = ::read(comm, name, sizeof(name));
    ::close(comm);
    if (count > 0)
        put(fd, name, size_t(count)); // ends with the line's end
}

void writeDump(int signal, const siginfo_t *info, const ucontext_t *context)
{
    char name[sizeof(dumpFolder) + 32];
    dumpName(name);
    const int fd = ::open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0)
        return;
    put(fd, "signal: ");
    putNumber(fd, unsigned(signal), 10, 1);
    put(fd, "\naddress: 0x");
    putNumber(fd, uint64_t(reinterpret_cast<uintptr_t>(info->si_addr)), 16, 16);
    put(fd, "\nthread: ");
    putNumber(fd, uint64_t(dumpingThread.load()), 10, 1);
    put(fd, " ");
    putThreadName(fd);
    putRegisters(fd, context);
    put(fd, "backtrace:\n");
    void *frames[maxFrames];
    backtrace_symbols_fd(frames, backtrace(frames, maxFrames), fd);
    putModules(fd);
    ::fsync(fd);
    ::close(fd);
}

void dieOf(int signal)
{
    std::signal(signal, SIG_DFL);
    ::raise(signal); // delivered when the handler returns, since it is blocked until then
}

void onFatalSignal(int signal, siginfo_t *info, void *context)
{
    const pid_t self = pid_t(::syscall(SYS_gettid));
    pid_t none = 0;
    if (dumpingThread.compare_exchange_strong(none, self))
        writeDump(signal, info, static_cast<const ucontext_t *>(context));
    else if (none != self) {
        for (;;)
            ::pause(); // another thread crashed first, the process dies with its dump
    }
    dieOf(signal);
}

void readLocalOffset()
{
    const time_t now = ::time(nullptr);
    tm local{};
    ::localtime_r(&now, &local);
    localOffset = local.tm_gmtoff;
}
} // namespace

void installCrashHandler(const char *folder)
{
    std::strncpy(dumpFolder, folder, sizeof(dumpFolder) - 1);
    readLocalOffset();
    void *frame[1];
    backtrace(frame, 1); // loads the unwinder now, while loading is still allowed

    stack_t stack{};
    stack.ss_sp = handlerStack;
    stack.ss_size = sizeof(handlerStack);
    ::sigaltstack(&stack, nullptr);

    struct sigaction action {
    };
    action.sa_sigaction = onFatalSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (const int signal : fatalSignals)
        ::sigaction(signal, &action, nullptr);
}
