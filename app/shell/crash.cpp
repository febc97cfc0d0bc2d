// The crash handlers. A signal handler may only use async-signal-safe calls,
// so the record is built in fixed buffers with our own digit formatting and
// written with open/read/write/close; backtrace() is warmed up at install time
// because its first call loads the unwinder (and allocates). The handler
// names no symbol: it writes raw addresses and a copy of /proc/self/maps, and
// the next start turns them into module!symbol lines (crashsymbols.cpp).
#include "app/shell/crash.h"

#include "app/shell/options.h"

#ifndef _WIN32
#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <execinfo.h>
#include <fcntl.h>
#include <iterator>
#include <ucontext.h>
#include <unistd.h>
#endif

namespace app {

#ifdef _WIN32

// The Windows filter (dbghelp stack walk) is not built yet.
void installCrashHandler() {}
void setCrashFilePath(const std::string&) {}

#else

namespace {

constexpr int kMaxFrames = 40;
constexpr int kSignals[] = {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS};

char crashPath[4096]; // empty until start-up has found the data directory
std::atomic<bool> writing{false};
// Room to run the handler when the crash is a stack overflow.
alignas(16) char altStack[64 * 1024];

// One line at a time in a fixed buffer; longer lines are cut.
class Line {
  public:
    explicit Line(int fd) : fd_(fd) {}
    Line& text(const char* s) {
        while (*s && n_ < sizeof buf_ - 1)
            buf_[n_++] = *s++;
        return *this;
    }
    Line& dec(unsigned long v) {
        char digits[24];
        int k = 0;
        do {
            digits[k++] = char('0' + v % 10);
            v /= 10;
        } while (v);
        while (k && n_ < sizeof buf_ - 1)
            buf_[n_++] = digits[--k];
        return *this;
    }
    // Lower-case hex without prefix, at least minDigits wide.
    Line& hex(uintptr_t v, int minDigits = 1) {
        char digits[2 * sizeof v];
        int k = 0;
        do {
            digits[k++] = "0123456789abcdef"[v & 15];
            v >>= 4;
        } while (v);
        while (k < minDigits && k < int(sizeof digits))
            digits[k++] = '0';
        while (k && n_ < sizeof buf_ - 1)
            buf_[n_++] = digits[--k];
        return *this;
    }
    // As "%p" prints it here.
    Line& pointer(const void* p) {
        if (!p) return text("(nil)");
        return text("0x").hex(reinterpret_cast<uintptr_t>(p));
    }
    void end() {
        buf_[n_++] = '\n';
        size_t done = 0;
        while (done < n_) {
            const ssize_t w = ::write(fd_, buf_ + done, n_ - done);
            if (w < 0 && errno == EINTR) continue;
            if (w <= 0) break;
            done += size_t(w);
        }
        n_ = 0;
    }

  private:
    int fd_;
    char buf_[1024];
    size_t n_ = 0;
};

// The raw record: the first line as it stays, one "  #N 0x<address>" line
// per frame, then "-- maps 1" (frame 0 is the interrupted instruction
// itself) or "-- maps 0" (every frame is a return address), followed by the
// process's memory map, which says what module each address lies in.
void writeRecord(unsigned long code, const void* address, void* const* frames, int count, bool exactFirst) {
    if (!crashPath[0]) return;
    const int fd = ::open(crashPath, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) return;
    Line line(fd);
    line.text("Ostrovalden ")
        .text(kVersion)
        .text(" crash: exception 0x")
        .hex(code, 8)
        .text(" at ")
        .pointer(address);
    line.end();
    for (int i = 0; i < count && i < kMaxFrames; ++i) {
        line.text("  #").dec(unsigned(i)).text(" 0x").hex(reinterpret_cast<uintptr_t>(frames[i]));
        line.end();
    }
    line.text("-- maps ").text(exactFirst ? "1" : "0");
    line.end();
    const int maps = ::open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
    if (maps >= 0) {
        char buf[4096];
        for (;;) {
            const ssize_t n = ::read(maps, buf, sizeof buf);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) break;
            for (ssize_t done = 0; done < n;) {
                const ssize_t w = ::write(fd, buf + done, size_t(n - done));
                if (w < 0 && errno == EINTR) continue;
                if (w <= 0) break;
                done += w;
            }
        }
        ::close(maps);
    }
    ::close(fd);
}

// Only the first crash writes; another thread crashing meanwhile gives the
// first time to finish before it, too, ends the process.
bool claimRecord() {
    if (!writing.exchange(true)) return true;
    timespec wait{2, 0};
    while (nanosleep(&wait, &wait) != 0 && errno == EINTR) {
    }
    return false;
}

const void* programCounter(void* context) {
    const auto* uc = static_cast<const ucontext_t*>(context);
    if (!uc) return nullptr;
#if defined(__x86_64__)
    return reinterpret_cast<const void*>(uc->uc_mcontext.gregs[REG_RIP]);
#elif defined(__i386__)
    return reinterpret_cast<const void*>(uc->uc_mcontext.gregs[REG_EIP]);
#elif defined(__aarch64__)
    return reinterpret_cast<const void*>(uc->uc_mcontext.pc);
#else
    return nullptr;
#endif
}

void onSignal(int sig, siginfo_t* info, void* context) {
    const int savedErrno = errno;
    if (claimRecord()) {
        const void* pc = programCounter(context);
        // A fault the kernel raised names its address; a signal sent by
        // abort() or kill() has none, so the interrupted instruction stands in.
        const void* address = info && info->si_code > 0 ? info->si_addr : pc;
        void* frames[kMaxFrames + 16];
        const int n = backtrace(frames, int(std::size(frames)));
        // Start at the interrupted instruction, leaving out the handler's own frames.
        int first = -1;
        for (int i = 0; i < n && first < 0; ++i)
            if (frames[i] == pc) first = i;
        if (first >= 0)
            writeRecord(unsigned(sig), address, frames + first, n - first, true);
        else
            writeRecord(unsigned(sig), address, frames, n, false);
    }
    errno = savedErrno;
    // Die of the same signal as without us: the default action on return.
    ::signal(sig, SIG_DFL);
    ::raise(sig);
}

void onTerminate() {
    if (claimRecord()) {
        void* frames[kMaxFrames + 1];
        const int n = backtrace(frames, int(std::size(frames)));
        // Frame 0 is this handler; the thrower follows the runtime's frames.
        writeRecord(SIGABRT, n > 1 ? frames[1] : nullptr, frames + 1, n - 1, false);
    }
    ::signal(SIGABRT, SIG_DFL); // written once is enough
    std::abort();
}

} // namespace

void installCrashHandler() {
    void* warm[2];
    backtrace(warm, 2);

    stack_t ss{};
    ss.ss_sp = altStack;
    ss.ss_size = sizeof altStack;
    sigaltstack(&ss, nullptr);

    struct sigaction sa {};
    sa.sa_sigaction = onSignal;
    sa.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&sa.sa_mask);
    for (int sig : kSignals)
        sigaddset(&sa.sa_mask, sig);
    for (int sig : kSignals)
        sigaction(sig, &sa, nullptr);
    std::set_terminate(onTerminate);
}

void setCrashFilePath(const std::string& nativeUtf8Path) {
    if (nativeUtf8Path.size() >= sizeof crashPath) {
        crashPath[0] = '\0';
        return;
    }
    std::memcpy(crashPath, nativeUtf8Path.c_str(), nativeUtf8Path.size() + 1);
}

#endif

} // namespace app
