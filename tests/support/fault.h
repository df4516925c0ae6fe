// Turns a memory fault inside a call into a result, so that the run goes on and names the form.
#pragma once

#include <csetjmp>
#include <cstdint>
#include <string>

namespace kormtest {

struct Fault {
    bool happened = false;
    int signal = 0;
    std::uintptr_t address = 0;
    std::string text() const;
};

namespace detail {

struct FaultFrame {
    sigjmp_buf place;
    Fault fault;
    FaultFrame* outer;
};

// The innermost guarded call of this thread.
extern thread_local FaultFrame* volatile faultFrame;

}  // namespace detail

// Call once, before the first guarded call: installs the handlers for SIGSEGV, SIGBUS, SIGILL and SIGFPE.
void installFaultHandlers();

// What a fault outside of any guarded call says before the process ends: worker threads of a team
// can't be brought back. The text must outlive the calls.
void setFaultContext(const char* text);

// Runs `body`; a fault in it ends it. Nothing in `body` may own memory at the time of the fault.
template <class Body>
Fault guarded(Body&& body) {
    detail::FaultFrame frame;
    frame.outer = detail::faultFrame;
    if (sigsetjmp(frame.place, 0) == 0) {
        detail::faultFrame = &frame;
        body();
    }
    detail::faultFrame = frame.outer;
    return frame.fault;
}

}  // namespace kormtest
