#include "process.h"

#include <cstdlib>

#include "checker.h"
#include "fault.h"

extern "C" int omp_get_max_threads();

namespace kormtest {

void prepareProcess() {
#ifdef KORM_MEMORY_SANITIZER
    // The OpenMP runtime isn't compiled for it: what it writes counts as unwritten when it is handed to the C library. The
    // library under test calls that for sines and cosines only.
    __msan_scoped_disable_interceptor_checks();
#endif
    // Teams larger than the machine must not spin while they wait for one another.
    setenv("KMP_BLOCKTIME", "0", 0);
    setenv("OMP_WAIT_POLICY", "passive", 0);
    // The OpenMP runtime's first thread must outlive all others: with a tool such as Archer loaded, the end of a critical
    // section looks that thread up, whoever is in the section.
    omp_get_max_threads();
    installFaultHandlers();
}

}  // namespace kormtest
