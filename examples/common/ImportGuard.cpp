#include "examples/common/ImportGuard.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

namespace demo {
namespace {

// SIGPROF comes from the timer.
constexpr std::array<int, 6> kSignals = {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL, SIGPROF};
constexpr int kSeconds = 60;
constexpr rlim_t kAddressSpace = rlim_t{8} << 30;

// The signal handler uses these alone: the heap and the stack may be damaged.
std::array<char, 512> text;
std::size_t textSize = 0;
int status = 0;
std::array<char, 16384> handlerStack;
std::array<struct sigaction, kSignals.size()> previous;
rlimit previousSpace{};

extern "C" void leave(int) {
    const auto written = ::write(STDERR_FILENO, text.data(), textSize);
    static_cast<void>(written);
    std::_Exit(status);
}

void setTimer(int seconds) {
    itimerval timer{};
    timer.it_value.tv_sec = seconds;
    ::setitimer(ITIMER_PROF, &timer, nullptr);
}

void limitAddressSpace(rlim_t limit) {
    // Not under a sanitizer, which reserves terabytes of address space for itself.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    rlimit space = previousSpace;
    space.rlim_cur = std::min(space.rlim_cur, limit);
    ::setrlimit(RLIMIT_AS, &space);
#else
    static_cast<void>(limit);
#endif
}

}  // namespace

ImportGuard::ImportGuard(const char* message, int exitStatus) {
    textSize = std::min(std::strlen(message), text.size() - 1);
    std::memcpy(text.data(), message, textSize);
    text[textSize++] = '\n';
    status = exitStatus;

    stack_t stack{};
    stack.ss_sp = handlerStack.data();
    stack.ss_size = handlerStack.size();
    ::sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_handler = &leave;
    action.sa_flags = SA_ONSTACK;
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], &action, &previous[i]);
    }
    setTimer(kSeconds);
    ::getrlimit(RLIMIT_AS, &previousSpace);
    limitAddressSpace(kAddressSpace);
}

ImportGuard::~ImportGuard() {
    limitAddressSpace(RLIM_INFINITY);
    setTimer(0);
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], &previous[i], nullptr);
    }
}

}  // namespace demo
