// call_cost [--check | --check-small] [--times] [--json FILE] [--trace NAME | --call NAME]
//
// Counts the instructions of one small call, exactly: the processor's trap flag stops the program behind
// every instruction, from the caller's `call` (which counts as one) on.
//  - To the first load: the operands lie in an inaccessible page, so the kernel's first load of an element,
//    or of an entry of a pointer table, ends the counting.
//  - To the return: the same call on accessible operands, up to and with its `ret`.
// Functions of fixed size are counted to the return, those without a call of the mathematics library; batches have
// 64 packed vectors.
// --check fails if a form needs more than 4 instructions an argument to its first load, --check-small looks at
// orders and lengths 3 to 6 only. --trace writes where the instructions of one form stand in the library, order or
// length 3, for `addr2line -fe libkorm.so`. --call makes just this one call, for other tools that count. --times adds
// nanoseconds to what --json writes: the geometric mean of the calls that are counted.
#include <dlfcn.h>
#include <korm.h>
#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>
#include <ucontext.h>
#include <x86intrin.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace {

constexpr int instructionsAnArgument = 4;
constexpr std::size_t operandBytes = 1 << 20;  // for each operand, tables of pointers included
constexpr std::size_t operandPlaces = 5;
constexpr greg_t trapFlag = 0x100;
#ifdef __x86_64__
constexpr int programCounter = REG_RIP, stackPointer = REG_RSP;
#else
constexpr int programCounter = REG_EIP, stackPointer = REG_ESP;
#endif

// --- Stepping ----------------------------------------------------------------------------------

struct Trace {
    greg_t target = 0;
    greg_t returnAddress = 0;
    greg_t frame = 0;
    int instructions = 0;
    enum { before, inside, returned, faulted } state = before;
    sigjmp_buf recovery;
};
volatile Trace* trace = nullptr;
const char* tracedForm = nullptr;
const char* calledForm = nullptr;
bool isTimed = false;
constexpr int placesKept = 1000;
greg_t places[placesKept];     // of the instructions behind the call
std::byte* guarded = nullptr;  // the operands' inaccessible memory
std::byte* open = nullptr;     // the same, accessible

void onTrap(int, siginfo_t*, void* context) {
    greg_t* const registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
    if (trace->state == Trace::before && registers[programCounter] == trace->target) {
        trace->state = Trace::inside;
        trace->instructions = 1;
        places[0] = trace->target;
        trace->frame = registers[stackPointer];
        trace->returnAddress = *reinterpret_cast<const greg_t*>(registers[stackPointer]);
    } else if (trace->state == Trace::inside) {
        if (trace->instructions < placesKept) places[trace->instructions] = registers[programCounter];
        trace->instructions = trace->instructions + 1;
        if (registers[programCounter] == trace->returnAddress && registers[stackPointer] > trace->frame) {
            trace->state = Trace::returned;
            registers[REG_EFL] &= ~trapFlag;
        }
    }
}

void onFault(int, siginfo_t* info, void*) {
    auto* const address = static_cast<std::byte*>(info->si_addr);
    if (trace == nullptr || address < guarded || address >= guarded + operandPlaces * operandBytes) {
        static const char message[] = "call_cost: a fault outside the guarded operands\n";
        std::fputs(message, stderr);
        std::_Exit(2);
    }
    trace->state = Trace::faulted;
    siglongjmp(const_cast<Trace*>(trace)->recovery, 1);
}

// Instructions from the call to the first access to guarded memory, or to the return if there is none.
template <class... Parameters>
int countInstructions(std::int32_t (*function)(Parameters...), const std::tuple<Parameters...>& arguments,
                      bool mustFault) {
    static Trace record;
    record.state = Trace::before;
    record.instructions = 0;
    record.target = reinterpret_cast<greg_t>(function);
    trace = &record;
    // Volatile, so that nothing of it lives in a register that siglongjmp would bring back as it was.
    volatile std::int32_t status = korStatusOk;
    if (sigsetjmp(record.recovery, 1) == 0) {
        std::apply(
            [&](Parameters... parameters) {
                __writeeflags(__readeflags() | static_cast<unsigned>(trapFlag));
                status = function(parameters...);
            },
            arguments);
    }
    trace = nullptr;
    const auto expected = mustFault ? Trace::faulted : Trace::returned;
    if (record.state != expected || status != korStatusOk) {
        std::fprintf(stderr, "call_cost: the call %s, status %d\n",
                     record.state == Trace::before ? "was not seen" : "did not end as it should", status);
        std::exit(2);
    }
    return record.instructions;
}

// Nanoseconds of a call: the least of several rounds.
template <class Function, class Arguments>
double timeOf(Function function, const Arguments& arguments) {
    constexpr int calls = 500;
    auto least = std::chrono::nanoseconds::max();
    for (int round = 0; round < 20; ++round) {
        const auto start = std::chrono::steady_clock::now();
        for (int call = 0; call < calls; ++call) std::apply(function, arguments);
        least = std::min<std::chrono::nanoseconds>(least, std::chrono::steady_clock::now() - start);
    }
    return static_cast<double>(least.count()) / calls;
}

// Of several times.
class GeometricMean {
public:
    void add(double time) {
        logarithms_ += std::log(time);
        ++count_;
    }
    double value() const { return count_ == 0 ? 0 : std::exp(logarithms_ / count_); }

private:
    double logarithms_ = 0;
    int count_ = 0;
};

void printPlaces(int instructions) {
    Dl_info library;
    if (!dladdr(reinterpret_cast<const void*>(places[0]), &library)) return;
    for (int i = 0; i < std::min(instructions, placesKept); ++i)
        std::printf("0x%zx\n", static_cast<std::size_t>(places[i] - reinterpret_cast<greg_t>(library.dli_fbase)));
}

void installHandlers() {
    struct sigaction action {};
    action.sa_flags = SA_SIGINFO;
    action.sa_sigaction = onTrap;
    sigaction(SIGTRAP, &action, nullptr);
    action.sa_sigaction = onFault;
    sigaction(SIGSEGV, &action, nullptr);
    const auto map = [](int protection) {
        void* const memory =
            mmap(nullptr, operandPlaces * operandBytes, protection, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED) std::exit(2);
        return static_cast<std::byte*>(memory);
    };
    guarded = map(PROT_NONE);
    open = map(PROT_READ | PROT_WRITE);
}

// --- Arguments ---------------------------------------------------------------------------------

struct Size {
    std::int32_t width, height;
    bool isStrided;
};

// What a form's operands are. Those of products have sizes of their own, between their strides and the next operand; those of
// factorisations share an order, or a width and a height, and the first of them is a matrix that can be factored.
enum class Operands { matrices, vectors, product, vectorProduct, squares, squareAndVectors, talls, tallAndVectors };

constexpr bool isProduct(Operands operands) {
    return operands == Operands::product || operands == Operands::vectorProduct;
}

constexpr bool hasVectorsBehind(Operands operands) {
    return operands == Operands::vectorProduct || operands == Operands::squareAndVectors ||
           operands == Operands::tallAndVectors;
}

constexpr int sizeArgumentsOf(Operands operands) {
    switch (operands) {
        case Operands::product:
        case Operands::vectorProduct: return 0;
        case Operands::vectors:
        case Operands::squares:
        case Operands::squareAndVectors: return 1;
        default: return 2;
    }
}

// Fills in the arguments from the prototype: a pointer opens an operand, and the integers behind it are its
// strides or its offset, the outermost first, of products then its sizes; else the last one or two integers are the sizes.
template <class... Parameters>
std::tuple<Parameters...> argumentsFor(std::int32_t (*)(Parameters...), bool isPointerLayout, Operands operands,
                                       std::byte* memory, Size size) {
    std::tuple<Parameters...> arguments;
    constexpr int all = sizeof...(Parameters);
    constexpr bool isDouble = (std::is_same_v<std::remove_cv_t<std::remove_pointer_t<Parameters>>, double> || ...) ||
                              (std::is_same_v<Parameters, const double* const*> || ...);
    const std::int32_t elementSize = isDouble ? 8 : 4;
    const std::int32_t elementStride = size.isStrided ? 2 * elementSize : elementSize;
    const int sizeArguments = sizeArgumentsOf(operands);
    int position = 0;
    int operand = -1;
    int integersBehind = 0;
    const auto isMatrix = [&] { return operands != Operands::vectors && !(hasVectorsBehind(operands) && operand > 0); };
    const auto give = [&]<class P>(P& argument) {
        if constexpr (std::is_pointer_v<P>) {
            ++operand;
            integersBehind = 0;
            argument = reinterpret_cast<P>(memory + static_cast<std::size_t>(operand) * operandBytes);
        } else if constexpr (std::is_floating_point_v<P>) {
            argument = P(1.5);
        } else if (position >= all - sizeArguments) {
            argument = position == all - 1 && sizeArguments == 2 ? size.height : size.width;
        } else {
            // A vector has one stride, a matrix the row's before the element's; with a table there is an offset only.
            const int places = isPointerLayout || !isMatrix() ? 1 : 2;
            if (isProduct(operands) && integersBehind >= places)
                argument = integersBehind == places ? size.width : size.height;
            else if (isPointerLayout) argument = 0;
            else if (places == 2 && integersBehind == 0) argument = elementStride * std::max(size.width, size.height);
            else argument = elementStride;
            ++integersBehind;
        }
        ++position;
    };
    std::apply([&](Parameters&... parameters) { (give(parameters), ...); }, arguments);
    return arguments;
}

// Tables for the pointer layout at the start of each operand's memory, their elements behind them.
void fillTables(std::byte* memory, std::int32_t positions, std::size_t elementSize) {
    for (std::size_t operand = 0; operand < operandPlaces; ++operand) {
        std::byte* const base = memory + operand * operandBytes;
        for (std::int32_t i = 0; i < positions; ++i)
            reinterpret_cast<std::byte**>(base)[i] =
                base + operandBytes / 2 + static_cast<std::size_t>(i) * elementSize;
    }
}

// Ones on the diagonal of the first operand, zeros elsewhere: a matrix of `order` rows that can be factored.
template <class T>
void fillIdentity(std::byte* memory, bool isPointerLayout, Size size) {
    const std::int32_t order = size.width, elements = size.isStrided ? 2 : 1;
    T* const first = reinterpret_cast<T*>(memory + (isPointerLayout ? operandBytes / 2 : 0));
    for (std::int32_t i = 0; i < order * order * elements; ++i) first[i] = T(0);
    for (std::int32_t i = 0; i < order; ++i) first[i * (order + 1) * elements] = T(1);
}

// --- Forms -------------------------------------------------------------------------------------

struct Cost {
    std::string name;
    int arguments;
    int toLoadSquare;                                 // the most of sizes 3 to 6
    int toLoadOther;                                  // the most of the other sizes tried
    int toReturn;                                     // of order or length 3
    bool isFixed;                                     // of fixed size: counted to the return only
    GeometricMean timeSquare, timeOther, timeReturn;  // of these calls
};
std::vector<Cost> costs;

template <class... Parameters>
void measure(const char* name, std::int32_t (*function)(Parameters...), Operands operands) {
    const bool isPointerLayout = std::strstr(name, "_P") != nullptr;
    const std::size_t elementSize = std::strstr(name, "_64f") ? 8 : 4;
    const auto prepare = [&](Size size) {
        if (isPointerLayout) fillTables(open, size.width * size.height, elementSize);
        if (elementSize == 4) fillIdentity<float>(open, isPointerLayout, size);
        else fillIdentity<double>(open, isPointerLayout, size);
    };
    if (calledForm) {
        if (std::strcmp(calledForm, name) != 0) return;
        prepare({3, 3, false});
        const auto near = argumentsFor(function, isPointerLayout, operands, open, Size{3, 3, false});
        std::exit(std::apply(function, near) == korStatusOk ? 0 : 1);
    }
    std::vector<std::int32_t> sizes{3, 4, 5, 6, 1, 2, 7, 8, 9, 10, 33};
    if (operands == Operands::vectors) sizes.push_back(1000);
    for (int isStrided = 0; isStrided <= (isPointerLayout ? 0 : 1); ++isStrided) {
        Cost cost{name, sizeof...(Parameters), 0, 0, 0, false, {}, {}, {}};
        if (isStrided) cost.name += " (strided)";
        for (std::int32_t order : sizes) {
            const Size size{order, order, isStrided != 0};
            const auto far = argumentsFor(function, isPointerLayout, operands, guarded, size);
            const int toLoad = countInstructions(function, far, true);
            const bool isSquare = order >= 3 && order <= 6;
            int& most = isSquare ? cost.toLoadSquare : cost.toLoadOther;
            most = std::max(most, toLoad);
            const bool timesThis = isTimed && order <= 33;
            if (order != 3 && !timesThis) continue;
            prepare(size);
            const auto near = argumentsFor(function, isPointerLayout, operands, open, size);
            if (timesThis) (isSquare ? cost.timeSquare : cost.timeOther).add(timeOf(function, near));
            if (order != 3) continue;
            if (tracedForm && !isStrided && !std::strcmp(tracedForm, name)) printPlaces(toLoad);
            cost.toReturn = countInstructions(function, near, false);
            if (isTimed) cost.timeReturn.add(timeOf(function, near));
        }
        costs.push_back(cost);
    }
}

// Pointers are operands, the first of them a matrix that can be inverted; integers are the strides of a batch and,
// last, its count.
template <class... Parameters>
void measureFixed(const char* name, std::int32_t sourceStride, std::int32_t resultStride,
                  std::int32_t (*function)(Parameters...)) {
    for (std::size_t i = 0; i < 16; ++i) reinterpret_cast<float*>(open)[i] = i % 5 ? 0.0F : 1.0F;
    std::tuple<Parameters...> arguments;
    std::byte* operand = open;
    std::int32_t integers[] = {sourceStride, resultStride, 64}, *integer = integers;
    const auto give = [&]<class P>(P& argument) {
        if constexpr (std::is_pointer_v<P>) {
            argument = reinterpret_cast<P>(operand);
            operand += operandBytes;
        } else if constexpr (std::is_floating_point_v<P>) argument = 1.5F;
        else argument = *integer++;
    };
    std::apply([&](Parameters&... parameters) { (give(parameters), ...); }, arguments);
    if (calledForm) {
        if (std::strcmp(calledForm, name) != 0) return;
        std::exit(std::apply(function, arguments) == korStatusOk ? 0 : 1);
    }
    const int toReturn = countInstructions(function, arguments, false);
    if (tracedForm && !std::strcmp(tracedForm, name)) printPlaces(toReturn);
    costs.push_back({name, sizeof...(Parameters), 0, 0, toReturn, true, {}, {}, {}});
    if (isTimed) costs.back().timeReturn.add(timeOf(function, arguments));
}

#define COST(NAME, OPERANDS)                                   \
    measure(#NAME "_32f", NAME##_32f, Operands::OPERANDS);     \
    measure(#NAME "_64f", NAME##_64f, Operands::OPERANDS);     \
    measure(#NAME "_32f_P", NAME##_32f_P, Operands::OPERANDS); \
    measure(#NAME "_64f_P", NAME##_64f_P, Operands::OPERANDS);

#define FIXED(NAME) measureFixed(#NAME "_32f", 0, 0, NAME##_32f);
#define BATCH(NAME, SOURCE_STRIDE, RESULT_STRIDE) measureFixed(#NAME "_32f", SOURCE_STRIDE, RESULT_STRIDE, NAME##_32f);

void measureFixedSizes() {
    FIXED(kormAdd_v2)
    FIXED(kormAdd_v3)
    FIXED(kormAdd_v4)
    FIXED(kormSub_v3)
    FIXED(kormMin_v3)
    FIXED(kormMax_v4)
    FIXED(kormMulC_v2)
    FIXED(kormMulC_v3)
    FIXED(kormMulC_v4)
    FIXED(kormDotProduct_v2)
    FIXED(kormDotProduct_v3)
    FIXED(kormDotProduct_v4)
    FIXED(kormLenSqr_v3)
    FIXED(kormLen_v3)
    FIXED(kormLen_v4)
    FIXED(kormNormalize_v2)
    FIXED(kormNormalize_v3)
    FIXED(kormNormalize_v4)
    FIXED(kormCrossProduct_v2)
    FIXED(kormCrossProduct_v3)
    FIXED(kormCrossProduct_v4)
    FIXED(kormIdentity_m4)
    FIXED(kormTranslation_m4)
    FIXED(kormScaling_m4)
    FIXED(kormLookAtLH_m4)
    FIXED(kormOrthoLH_m4)
    FIXED(kormOrthoOffCenterRH_m4)
    FIXED(kormPerspectiveLH_m4)
    FIXED(kormPerspectiveOffCenterLH_m4)
    FIXED(kormPerspectiveOffCenterRH_m4)
    FIXED(kormDet_m4)
    FIXED(kormInvert_m4)
    FIXED(kormTranspose_m4)
    FIXED(kormMul_mm4x4)
    FIXED(kormMulTranspose_m4)
    FIXED(kormIsIdentity_m4)
    FIXED(kormAffineTransform_m4v2)
    FIXED(kormAffineTransform_m4v3)
    FIXED(kormAffineTransform_m4v4)
    FIXED(kormAffineTransformCoord_m4v2)
    FIXED(kormAffineTransformCoord_m4v3)
    FIXED(kormAffineTransformNormal_m4v2)
    FIXED(kormAffineTransformNormal_m4v3)
    FIXED(kormProject_m4v3)
    FIXED(kormBaryCentric_v3)
    FIXED(kormBaryCentric_v4)
    FIXED(kormInterpolationLinear_v2)
    FIXED(kormInterpolationLinear_v3)
    FIXED(kormInterpolationLinear_v4)
    FIXED(kormHermite_v2)
    FIXED(kormHermite_v3)
    FIXED(kormHermite_v4)
    FIXED(kormInterpolationCatmullRom_v2)
    FIXED(kormInterpolationCatmullRom_v3)
    FIXED(kormInterpolationCatmullRom_v4)
    BATCH(kormAffineTransform_m4v2a, 8, 16)
    BATCH(kormAffineTransform_m4v3a, 12, 16)
    BATCH(kormAffineTransform_m4v4a, 16, 16)
    BATCH(kormAffineTransformCoord_m4v2a, 8, 8)
    BATCH(kormAffineTransformCoord_m4v3a, 12, 12)
    BATCH(kormAffineTransformNormal_m4v2a, 8, 8)
    BATCH(kormAffineTransformNormal_m4v3a, 12, 12)
    BATCH(kormProject_m4v3a, 12, 12)
}

void measureAllForms() {
    COST(kormAdd_mm, matrices)
    COST(kormAdd_tm, matrices)
    COST(kormAdd_tt, matrices)
    COST(kormSub_mm, matrices)
    COST(kormSub_mt, matrices)
    COST(kormSub_tm, matrices)
    COST(kormSub_tt, matrices)
    COST(kormMul_mc, matrices)
    COST(kormMul_tc, matrices)
    COST(kormAdd_vv, vectors)
    COST(kormSub_vv, vectors)
    COST(kormAdd_vc, vectors)
    COST(kormSub_vc, vectors)
    COST(kormSub_cv, vectors)
    COST(kormMul_vc, vectors)
    COST(kormMul_mm, product)
    COST(kormMul_mt, product)
    COST(kormMul_tm, product)
    COST(kormMul_tt, product)
    COST(kormMul_mv, vectorProduct)
    COST(kormMul_tv, vectorProduct)
    COST(kormLUDecomp_m, squares)
    COST(kormCholeskyDecomp_m, squares)
    COST(kormCholeskyBackSubst_mv, squareAndVectors)
    COST(kormQRDecomp_m, talls)
    COST(kormQRBackSubst_mv, tallAndVectors)
}

enum class Check { none, smallSizes, allSizes };

int print(Check check) {
    int misses = 0;
    std::printf("%-36s %9s %18s %18s %10s\n", "form", "arguments", "to load, 3 to 6", "to load, others", "to return");
    for (const Cost& cost : costs) {
        if (cost.isFixed) {
            std::printf("%-36s %9d %18s %18s %10d\n", cost.name.c_str(), cost.arguments, "", "", cost.toReturn);
            continue;
        }
        const int judged =
            check == Check::smallSizes ? cost.toLoadSquare : std::max(cost.toLoadSquare, cost.toLoadOther);
        const bool isOver = judged > instructionsAnArgument * cost.arguments;
        misses += isOver;
        std::printf("%-36s %9d %10d (%5.2f) %10d (%5.2f) %10d%s\n", cost.name.c_str(), cost.arguments,
                    cost.toLoadSquare, static_cast<double>(cost.toLoadSquare) / cost.arguments, cost.toLoadOther,
                    static_cast<double>(cost.toLoadOther) / cost.arguments, cost.toReturn,
                    isOver ? "  over the limit" : "");
    }
    std::printf("%zu rows, %d over %d instructions an argument\n", costs.size(), misses, instructionsAnArgument);
    return check != Check::none && misses > 0 ? 1 : 0;
}

bool writeJson(const char* path) {
    std::FILE* const file = std::fopen(path, "w");
    if (!file) return false;
    std::fputs("[\n", file);
    for (std::size_t i = 0; i < costs.size(); ++i) {
        const Cost& cost = costs[i];
        std::fprintf(file, R"({"name": "%s", "arguments": %d, )", cost.name.c_str(), cost.arguments);
        if (!cost.isFixed)
            std::fprintf(file, R"("toLoadSquare": %d, "toLoadOther": %d, )", cost.toLoadSquare, cost.toLoadOther);
        if (isTimed)
            std::fprintf(file, R"("timeSquare": %.3f, "timeOther": %.3f, "timeReturn": %.3f, )",
                         cost.timeSquare.value(), cost.timeOther.value(), cost.timeReturn.value());
        std::fprintf(file, R"("toReturn": %d}%s)", cost.toReturn, i + 1 < costs.size() ? ",\n" : "\n");
    }
    std::fputs("]\n", file);
    return std::fclose(file) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    Check check = Check::none;
    const char* json = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--check")) check = Check::allSizes;
        else if (!std::strcmp(argv[i], "--check-small")) check = Check::smallSizes;
        else if (!std::strcmp(argv[i], "--times")) isTimed = true;
        else if (!std::strcmp(argv[i], "--trace") && i + 1 < argc) tracedForm = argv[++i];
        else if (!std::strcmp(argv[i], "--call") && i + 1 < argc) calledForm = argv[++i];
        else if (!std::strcmp(argv[i], "--json") && i + 1 < argc) json = argv[++i];
        else {
            std::fputs(
                "usage: call_cost [--check | --check-small] [--times] [--json FILE] [--trace NAME | --call NAME]\n",
                stderr);
            return 2;
        }
    }
    installHandlers();
    measureAllForms();
    measureFixedSizes();
    if (calledForm) {
        std::fprintf(stderr, "call_cost: %s is not counted\n", calledForm);
        return 2;
    }
    if (json && !writeJson(json)) {
        std::perror(json);
        return 2;
    }
    return tracedForm ? 0 : print(check);
}
