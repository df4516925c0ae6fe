#include "fault.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace kormtest {
namespace detail {

thread_local FaultFrame* volatile faultFrame = nullptr;

}  // namespace detail

namespace {

std::atomic<const char*> context{"no context"};

void handle(int signal, siginfo_t* info, void*) {
    detail::FaultFrame* const frame = detail::faultFrame;
    if (frame != nullptr) {
        frame->fault.happened = true;
        frame->fault.signal = signal;
        frame->fault.address = reinterpret_cast<std::uintptr_t>(info->si_addr);
        detail::faultFrame = frame->outer;
        siglongjmp(frame->place, 1);
    }
    char line[400];
    const int size = std::snprintf(line, sizeof line, "fatal: signal %d at %p outside of a guarded call: %s\n", signal,
                                   info->si_addr, context.load());
    if (write(STDERR_FILENO, line, static_cast<std::size_t>(size)) < 0) _exit(4);
    abort();
}

}  // namespace

std::string Fault::text() const {
    char line[80];
    std::snprintf(line, sizeof line, "signal %d at address 0x%llx", signal, static_cast<unsigned long long>(address));
    return line;
}

void installFaultHandlers() {
    static const bool installed = [] {
        static std::array<std::byte, 64 * 1024> memory;
        stack_t stack{};
        stack.ss_sp = memory.data();
        stack.ss_size = memory.size();
        sigaltstack(&stack, nullptr);
        struct sigaction action {};
        action.sa_sigaction = handle;
        action.sa_flags = SA_SIGINFO | SA_NODEFER | SA_ONSTACK;
        for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE}) sigaction(signal, &action, nullptr);
        return true;
    }();
    static_cast<void>(installed);
}

void setFaultContext(const char* text) { context = text; }

}  // namespace kormtest
