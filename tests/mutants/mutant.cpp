#include "mutant.h"

#include <dlfcn.h>

#include <cstring>

int mutantVariant = 0;

extern "C" __attribute__((visibility("hidden"))) std::int32_t mutantCall(std::size_t index,
                                                                         const unsigned char* registers,
                                                                         const unsigned char* stack);

extern "C" std::int32_t mutantCall(std::size_t index, [[maybe_unused]] const unsigned char* registers,
                                   const unsigned char* stack) {
    using namespace kormtest;
    // Functions without operands answer with zero, or a null record.
    if (index >= allForms().size()) return 0;
    const Form& form = allForms()[index];
    std::vector<CallValue> values;
    [[maybe_unused]] std::size_t integers = 0, vectors = 0;
    for (const Argument& argument : form.arguments) {
        CallValue value;
        if (argument.role == Role::pointer) value.kind = CallValue::Kind::pointer;
        else if (argument.role == Role::value)
            value.kind = form.type == Type::f64 ? CallValue::Kind::real : CallValue::Kind::single;
#if defined(__x86_64__)
        const unsigned char* from = stack;
        if (argument.role == Role::value) from = registers + 48 + 8 * vectors++;
        else if (integers < 6) from = registers + 8 * integers++;
        else stack += 8;
        const bool wide = value.kind == CallValue::Kind::pointer || value.kind == CallValue::Kind::real;
        std::memcpy(&value.bits, from, wide ? 8 : 4);
#else
        const std::size_t size = value.kind == CallValue::Kind::real ? 8 : 4;
        std::memcpy(&value.bits, stack, size);
        stack += size;
#endif
        values.push_back(value);
    }
    // The real library stands in the global scope, this one doesn't.
    return misbehave(form, values, dlsym(RTLD_DEFAULT, form.name.c_str()));
}
