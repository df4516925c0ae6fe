#include "entry/parallel.h"

#include <omp.h>

#include <algorithm>
#include <cerrno>

#include "korcore.h"
#include "korm.h"

#ifndef KORM_GNU_OPENMP
// LLVM's runtime exports its allocator pair without declaring it in omp.h for C++ users of other compilers.
extern "C" void* kmpc_malloc(std::size_t size);
extern "C" void kmpc_free(void* block);
#endif

namespace korm::inline KORM_VARIANT {
namespace {

// One block with a piece for each thread, from the OpenMP runtime.
class ScratchBlock {
public:
    ScratchBlock(std::size_t bytesPerPiece, std::int32_t pieces) : bytesPerPiece_(bytesPerPiece) {
        if (bytesPerPiece_ == 0) return;
        // A size that wraps is one that can't be had.
        if (bytesPerPiece_ > PTRDIFF_MAX / static_cast<std::size_t>(pieces)) return;
        block_ = allocate(bytesPerPiece_ * static_cast<std::size_t>(pieces));
    }
    ~ScratchBlock() {
        if (block_ != nullptr) release(block_);
    }
    ScratchBlock(const ScratchBlock&) = delete;
    ScratchBlock& operator=(const ScratchBlock&) = delete;

    bool available() const { return bytesPerPiece_ == 0 || block_ != nullptr; }

    void* piece(std::int32_t thread) const {
        return block_ == nullptr ? nullptr
                                 : static_cast<std::byte*>(block_) + static_cast<std::size_t>(thread) * bytesPerPiece_;
    }

private:
#ifdef KORM_GNU_OPENMP
    static void* allocate(std::size_t size) { return omp_alloc(size, omp_default_mem_alloc); }
    static void release(void* block) { omp_free(block, omp_default_mem_alloc); }
#else
    static void* allocate(std::size_t size) { return kmpc_malloc(size); }
    static void release(void* block) { kmpc_free(block); }
#endif

    std::size_t bytesPerPiece_;
    void* block_ = nullptr;
};

// What the runtime's system calls leave in errno is not the caller's business.
class ErrnoKept {
public:
    ErrnoKept() = default;
    ~ErrnoKept() { errno = callers_; }
    ErrnoKept(const ErrnoKept&) = delete;
    ErrnoKept& operator=(const ErrnoKept&) = delete;

private:
    int callers_ = errno;
};

// From here on the runtime is involved. A function of its own, since a compiler may ask the runtime for the
// calling thread's number at the top of a function with a parallel region: a call that stays serial must not.
[[gnu::noinline]] std::int32_t runTeam(std::int32_t count, Statuses statuses, Scratch scratch, std::int32_t threads,
                                       RunFunction function, const void* call) {
    const ScratchBlock block(scratch.bytesPerThread, threads);
    if (!block.available()) return function(call, {0, count}, scratch.callers);

    // The number of threads is read again for the team and may have changed. A team never outgrows the
    // pieces of scratch; without scratch it may be larger than `count`, and some threads get no object.
    const std::int32_t wanted = std::max(ownGetNumThreads(), 1);
    const std::int32_t team = scratch.bytesPerThread == 0 ? wanted : std::min(wanted, threads);

    std::int32_t status = korStatusOk;
    Split split{};
#pragma omp parallel num_threads(team) default(none) shared(split, status, block) \
    firstprivate(count, statuses, function, call)
    {
#pragma omp master
        split = Split::over(count, omp_get_num_threads());
#pragma omp barrier
        const std::int32_t thread = omp_get_thread_num();
        const std::int32_t result = function(call, split.run(thread), block.piece(thread));
        if (statuses == Statuses::merged) {
            // Unnamed: one lock for the whole process, held for a compare and a store.
#pragma omp critical
            if (status == korStatusOk) status = result;
        }
    }
    return status;
}

}  // namespace

// An ia32 caller's stack may be aligned to 4 bytes only. A compiler realigns it where its own code needs that, which a
// driver without vectors on its stack does not; the runtime does.
[[gnu::force_align_arg_pointer]] std::int32_t forEachRun(std::int32_t count, Statuses statuses, Scratch scratch,
                                                         RunFunction function, const void* call) {
    const ErrnoKept errnoKept;
    const std::int32_t threads = ownGetNumThreads();
    if (threads <= 1 || count < threads) return function(call, {0, count}, scratch.callers);
    return runTeam(count, statuses, scratch, threads, function, call);
}

}  // namespace korm::inline KORM_VARIANT
