// Functions that are called for one object at a time: a loop that calls one for every object, with arguments that follow from
// its prototype.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <type_traits>
#include <utility>

namespace bench {

// Every object has 16 floats of its own in every operand, at a multiple of 16 bytes, as some peers ask for.
struct Calls {
    static constexpr int objects = 32;
    static constexpr int floats = 16;

    float* inputs[4];
    float* result;
    float scalars[8];  // by value, in the order of the arguments
};
using CallLoop = void (*)(const Calls&);

// Of a peer, by the name of the library's function without korm and _32f.
using CallLoops = std::map<std::string, CallLoop>;
const CallLoops& glmCallLoops();
const CallLoops& cglmCallLoops();

enum class Output { last, first };

// Pointers are inputs in their order and one output, the last pointer or the first; numbers are the row's scalars.
// What a function returns other than a status is its result.
template <class... Parameters>
struct Positions {
    static constexpr int all = sizeof...(Parameters);
    static constexpr bool isPointer[all + 1] = {std::is_pointer_v<Parameters>...};  // no array is empty

    static constexpr int before(int position, bool pointers) {
        int found = 0;
        for (int i = 0; i < position; ++i) found += isPointer[i] == pointers;
        return found;
    }
    static constexpr int pointers() { return before(all, true); }
};

template <class Parameter, int index, bool isOutput>
[[gnu::always_inline]] inline Parameter argument(const Calls& work, std::ptrdiff_t at) {
    if constexpr (!std::is_pointer_v<Parameter>) return static_cast<Parameter>(work.scalars[index]);
    else if constexpr (isOutput) return reinterpret_cast<Parameter>(work.result + at);
    else return reinterpret_cast<Parameter>(work.inputs[index] + at);
}

template <auto function, Output output, class Return, class... Parameters, std::size_t... is>
[[gnu::always_inline]] inline void callEach(const Calls& work, Return (*)(Parameters...), std::index_sequence<is...>) {
    using Of = Positions<Parameters...>;
    constexpr bool returnsResult = std::is_same_v<Return, float>;
    constexpr int out = returnsResult ? -1 : output == Output::first ? 0 : Of::pointers() - 1;
    for (std::ptrdiff_t k = 0; k < Calls::objects; ++k) {
        const std::ptrdiff_t at = k * Calls::floats;
        const auto call = [&] {
            return function(argument < Parameters,
                            Of::before(is, Of::isPointer[is]) - (Of::isPointer[is] && out == 0 ? 1 : 0),
                            Of::isPointer[is] && Of::before(is, true) == out > (work, at)...);
        };
        if constexpr (returnsResult) work.result[at] = call();
        else call();
    }
}

template <auto function, Output output = Output::last>
[[gnu::noinline]] void each(const Calls& work) {
    [&]<class Return, class... Parameters>(Return (*type)(Parameters...)) {
        callEach<function, output>(work, type, std::index_sequence_for<Parameters...>());
    }(function);
}

#if defined(__x86_64__)
// Where a stub of the library jumps to: what its one instruction, a jump through a record, finds there.
inline void* behindStub(const void* stub) {
    const auto* const code = static_cast<const unsigned char*>(stub);
    if (code[0] != 0xff || code[1] != 0x25) {
        std::fprintf(stderr, "bench_geometry: a stub isn't a jump through a record\n");
        std::abort();
    }
    std::int32_t distance;
    std::memcpy(&distance, code + 2, sizeof distance);
    void* entry;
    std::memcpy(&entry, code + 6 + distance, sizeof entry);
    return entry;
}

// A function of the library without its stub. It is entered as the peers are, by a call of a jump through a table: this
// one is as the linker's, which leads to the stub, and takes 16 bytes as there.
template <auto function>
struct Direct;

template <class Return, class... Parameters, Return (*function)(Parameters...)>
struct Direct<function> {
    static inline void* const entry = behindStub(reinterpret_cast<const void*>(function));

    [[gnu::naked, gnu::noinline, gnu::aligned(16)]] static Return call(Parameters...) { asm("jmp *%0" : : "m"(entry)); }
};
#endif

}  // namespace bench
