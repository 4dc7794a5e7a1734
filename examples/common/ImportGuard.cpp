#include "examples/common/ImportGuard.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace demo {
namespace {

constexpr std::array<int, 5> kCrashes = {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL};

// What a handler may touch when neither the heap nor the stack is to be trusted.
std::array<char, 512> text;
std::size_t textSize = 0;
int status = 0;
std::array<char, 16384> handlerStack;
std::array<struct sigaction, kCrashes.size()> previous;

extern "C" void leave(int) {
    const auto written = ::write(STDERR_FILENO, text.data(), textSize);
    static_cast<void>(written);
    std::_Exit(status);
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
    for (std::size_t i = 0; i < kCrashes.size(); ++i)
        ::sigaction(kCrashes[i], &action, &previous[i]);
}

ImportGuard::~ImportGuard() {
    for (std::size_t i = 0; i < kCrashes.size(); ++i)
        ::sigaction(kCrashes[i], &previous[i], nullptr);
}

}  // namespace demo
