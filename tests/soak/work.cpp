#include "work.h"

#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <utility>

#include "../geometry/homogeneous.h"
#include "../geometry/scene.h"
#include "../routines/sizes.h"
#include "../support/digest.h"
#include "../support/family.h"
#include "../support/library.h"
#include "../support/scene.h"
#include "../support/thread_number.h"

extern "C" int omp_get_max_threads();
extern "C" void omp_set_num_threads(int threads);

namespace kormtest {
namespace {

// Both what the runtime is told and what the library is answered.
void setThreads(std::int32_t threads) {
    omp_set_num_threads(threads);
    scriptThreadNumbers({omp_get_max_threads()});
}

std::uint64_t digestOfCall(const CallResult& result, const std::vector<std::byte>& bytes, bool withStatus) {
    Digest digest;
    // Which of several failures a team reports is open, but not that it reports one.
    digest.add(withStatus ? result.status() : std::int32_t{result.status() != 0});
    digest.add(static_cast<std::int32_t>(result.frameDamage.size()));
    digest.add(bytes.data(), bytes.size());
    return digest.value();
}

class FormCall {
public:
    explicit FormCall(const Work& work)
        : form_(*work.form),
          random_(mixSeed(seedOfName(work.name), work.number)),
          scene_(threadArena(), form_, optionsOf(work), random_, values_),
          arguments_(scene_.arguments()) {}

    void call() { result_ = callFunction(Library::linked().function(form_), arguments_); }
    std::uint64_t digest() const { return digestOfCall(result_, scene_.comparableResult(), !form_.family->mayFail); }

private:
    SceneOptions optionsOf(const Work& work) {
        SceneOptions options;
        options.sizes = work.large ? sizesBeyondLimit(form_, largestTeam + 1, random_) : randomSizes(form_, random_);
        options.plain = random_.chance(50);
        return options;
    }

    const Form& form_;
    Random random_;
    Random values_{random_.next()};
    Scene scene_;
    std::vector<CallValue> arguments_;
    CallResult result_;
};

std::uint64_t digestOfFixedSize(const Work& work) {
    Random random(mixSeed(seedOfName(work.name), work.number));
    Random values(random.next());
    void* const code = Library::linked().find(work.name);
    if (work.name == homogeneousName) {
        HomogeneousOptions options;
        options.count = random.between(1, 400);
        const HomogeneousScene scene(threadArena(), options, random, values);
        const CallResult result = callFunction(code, scene.arguments());
        return digestOfCall(result, scene.resultBytes(), true);
    }
    const GeometryFunction& function = geometryFunction(work.name);
    GeometryOptions options;
    if (function.batch()) options.count = random.between(1, 40);
    const GeometryScene scene(threadArena(), function, options, random, values);
    const CallResult result = callFunction(code, scene.arguments());
    return digestOfCall(result, scene.resultBytes(), true);
}

// Takes all memory that is left below the limit, to the last block, for as long as it lives.
class Famine {
public:
    Famine() {
        getrlimit(RLIMIT_AS, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytesInUse();
        setrlimit(RLIMIT_AS, &limit);
        for (std::size_t size = std::size_t{1} << 20; size >= sizeof(Block); size /= 2) {
            while (void* const memory = std::malloc(size)) blocks_ = new (memory) Block{blocks_};
        }
    }
    Famine(const Famine&) = delete;
    Famine& operator=(const Famine&) = delete;
    ~Famine() {
        while (blocks_ != nullptr) std::free(std::exchange(blocks_, blocks_->next));
        setrlimit(RLIMIT_AS, &before_);
    }

private:
    struct Block {
        Block* next;
    };

    static rlim_t bytesInUse() {
        unsigned long pages = 0;
        std::FILE* const file = std::fopen("/proc/self/statm", "re");
        if (file == nullptr || std::fscanf(file, "%lu", &pages) != 1) std::abort();
        std::fclose(file);
        return static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    }

    rlimit before_{};
    Block* blocks_ = nullptr;
};

}  // namespace

std::vector<Work> allWork() {
    std::vector<Work> work;
    for (const Form& form : allForms()) {
        work.push_back({form.name, &form, 0, false});
        if (form.driver) work.push_back({form.name, &form, 1, true});
    }
    for (const GeometryFunction& function : geometryFunctions()) work.push_back({function.name, nullptr, 0, false});
    work.push_back({homogeneousName, nullptr, 0, false});
    return work;
}

std::uint64_t digestOfWork(const Work& work, std::int32_t threads) {
    setThreads(threads);
    if (work.form == nullptr) return digestOfFixedSize(work);
    FormCall call(work);
    call.call();
    return call.digest();
}

StarvedCall starvedCall(const Work& work, std::int32_t threads) {
    // Teams have their threads from now on. (A call with scratch would leave its block with the runtime.)
    setThreads(threads);
    static const Form& withoutScratch = formNamed("kormMul_vac_32f");
    FormCall({withoutScratch.name, &withoutScratch, 1, true}).call();
    FormCall starved(work);
    setThreads(threads);
    {
        const Famine famine;
        starved.call();
    }
    return {starved.digest(), threadNumberQuestions() == 2};
}

}  // namespace kormtest
