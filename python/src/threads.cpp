#include "threads.h"

#include <korcore.h>
#include <omp.h>

#include <exception>

namespace korm::python {

void inBlocks(Index count, Index block, Index elements, const std::function<void(Blocks&)>& run) {
    constexpr Index least = 4096;  // elements that are worth the start of a second thread
    Blocks blocks(count, block);
    const Index threads = count * elements < least ? 1 : std::min<Index>(ownGetNumThreads(), (count - 1) / block + 1);
    if (threads <= 1) return run(blocks);
    std::exception_ptr failure;
#pragma omp parallel num_threads(static_cast <int>(threads))
    {
        try {
            run(blocks);
        } catch (...) {
#pragma omp critical
            failure = std::current_exception();
        }
    }
    if (failure) std::rethrow_exception(failure);
}

}
