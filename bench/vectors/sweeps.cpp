// All small lengths, in every layout, beside plain loops that are told the length when they run.
#include "../harness/operands.h"
#include "rows.h"

namespace bench {
namespace {

// An array of vectors as a call of its layout takes it.
template <Entry entry, class T>
auto arrayOf(const Operand<T>& operand) {
    if constexpr (entry == Entry::standard)
        return std::tuple(operand.base, operand.objectStride, operand.elementStride);
    else if constexpr (entry == Entry::list) return std::tuple(operand.table, operand.offset, operand.elementStride);
    else return std::tuple(operand.table, operand.offset, operand.objectStride);
}

template <Entry entry, class Standard, class List, class Table>
auto choose(Standard standard, List list, Table table) {
    if constexpr (entry == Entry::standard) return standard;
    else if constexpr (entry == Entry::list) return list;
    else return table;
}

// Element j of object k.
template <Entry entry, class T>
T& element(const Operand<T>& operand, std::ptrdiff_t k, std::ptrdiff_t j) {
    if constexpr (entry == Entry::pointer) return operand.table[j][k * operand.objectStep()];
    else if constexpr (entry == Entry::list) return operand.table[k][j * operand.elementStep()];
    else return operand.base[k * operand.objectStep() + j * operand.elementStep()];
}

template <class T>
struct Sweep {
    Operand<T> a, b, to;
    T* numbers;  // of reductions
    std::int32_t length, count;
};

template <class T, class F>
[[gnu::noinline]] void forObjects(const Sweep<T>& all, const F& f) {
    for (std::ptrdiff_t k = 0; k < all.count; ++k) f(k);
}

template <Layout layout, class T>
void sweepLength(std::int32_t length) {
    constexpr Entry entry = entryOf(layout);
    const std::size_t object = objectSpan<T>(layout, 1, length);
    const std::size_t count = inCache.bytes / sizeof(T) / (3 * object + 1);
    const Sweep<T> all{place<T>(0, layout, 1, length, count),
                       place<T>(1, layout, 1, length, count),
                       place<T>(2, layout, 1, length, count),
                       memoryOf<T>(3, count),
                       length,
                       static_cast<std::int32_t>(count)};
    constexpr T factor = T(0.75), other = T(-1.25);
    const auto sweepRow = [&](const std::string& form, bool isReduction, auto korm, auto loop) {
        const std::string name =
            "sweep/" + form + suffix<T> + "/" + std::to_string(length) + "/" + std::string(nameOf(layout));
        if (!isWanted(name)) return;
        Row row(name, static_cast<double>(count));
        if (isReduction) row.results(all.numbers, count, tolerance<T>(length));
        else row.results(all.to.base, all.to.span, tolerance<T>(1));
        row.korm(korm);
        row.peer("plain loop, length at run time",
                 [all, loop] { forObjects(all, [&](std::ptrdiff_t k) { loop(all, k); }); });
        row.measure();
    };
    const auto sizes = std::tuple(all.length, all.count);
    sweepRow(
        "Saxpy_vava", false,
        [=] {
            std::apply(choose<entry>(pick<T>(kormSaxpy_vava_32f, kormSaxpy_vava_64f),
                                     pick<T>(kormSaxpy_vava_32f_L, kormSaxpy_vava_64f_L),
                                     pick<T>(kormSaxpy_vava_32f_P, kormSaxpy_vava_64f_P)),
                       std::tuple_cat(arrayOf<entry>(all.a), std::tuple(factor), arrayOf<entry>(all.b),
                                      arrayOf<entry>(all.to), sizes));
        },
        [](const Sweep<T>& s, std::ptrdiff_t k) {
            for (std::ptrdiff_t j = 0; j < s.length; ++j)
                element<entry>(s.to, k, j) = element<entry>(s.a, k, j) * factor + element<entry>(s.b, k, j);
        });
    sweepRow(
        "LComb_vava", false,
        [=] {
            std::apply(choose<entry>(pick<T>(kormLComb_vava_32f, kormLComb_vava_64f),
                                     pick<T>(kormLComb_vava_32f_L, kormLComb_vava_64f_L),
                                     pick<T>(kormLComb_vava_32f_P, kormLComb_vava_64f_P)),
                       std::tuple_cat(arrayOf<entry>(all.a), std::tuple(factor), arrayOf<entry>(all.b),
                                      std::tuple(other), arrayOf<entry>(all.to), sizes));
        },
        [](const Sweep<T>& s, std::ptrdiff_t k) {
            for (std::ptrdiff_t j = 0; j < s.length; ++j)
                element<entry>(s.to, k, j) = element<entry>(s.a, k, j) * factor + element<entry>(s.b, k, j) * other;
        });
    sweepRow(
        "DotProduct_vava", true,
        [=] {
            std::apply(choose<entry>(pick<T>(kormDotProduct_vava_32f, kormDotProduct_vava_64f),
                                     pick<T>(kormDotProduct_vava_32f_L, kormDotProduct_vava_64f_L),
                                     pick<T>(kormDotProduct_vava_32f_P, kormDotProduct_vava_64f_P)),
                       std::tuple_cat(arrayOf<entry>(all.a), arrayOf<entry>(all.b), std::tuple(all.numbers), sizes));
        },
        [](const Sweep<T>& s, std::ptrdiff_t k) {
            T sum = 0;
            for (std::ptrdiff_t j = 0; j < s.length; ++j) sum += element<entry>(s.a, k, j) * element<entry>(s.b, k, j);
            s.numbers[k] = sum;
        });
    sweepRow(
        "L2Norm_va", true,
        [=] {
            std::apply(choose<entry>(pick<T>(kormL2Norm_va_32f, kormL2Norm_va_64f),
                                     pick<T>(kormL2Norm_va_32f_L, kormL2Norm_va_64f_L),
                                     pick<T>(kormL2Norm_va_32f_P, kormL2Norm_va_64f_P)),
                       std::tuple_cat(arrayOf<entry>(all.a), std::tuple(all.numbers), sizes));
        },
        [](const Sweep<T>& s, std::ptrdiff_t k) {
            T sum = 0;
            for (std::ptrdiff_t j = 0; j < s.length; ++j) sum += element<entry>(s.a, k, j) * element<entry>(s.a, k, j);
            s.numbers[k] = std::sqrt(sum);
        });
    if constexpr (entry == Entry::standard) {
        sweepRow(
            "Saxpy_vav", false,
            [=] {
                pick<T>(kormSaxpy_vav_32f, kormSaxpy_vav_64f)(
                    all.a.base, all.a.objectStride, all.a.elementStride, factor, all.b.base, all.b.elementStride,
                    all.to.base, all.to.objectStride, all.to.elementStride, all.length, all.count);
            },
            [](const Sweep<T>& s, std::ptrdiff_t k) {
                for (std::ptrdiff_t j = 0; j < s.length; ++j)
                    element<entry>(s.to, k, j) = element<entry>(s.a, k, j) * factor + element<entry>(s.b, 0, j);
            });
        sweepRow(
            "DotProduct_vav", true,
            [=] {
                pick<T>(kormDotProduct_vav_32f, kormDotProduct_vav_64f)(
                    all.a.base, all.a.objectStride, all.a.elementStride, all.b.base, all.b.elementStride, all.numbers,
                    all.length, all.count);
            },
            [](const Sweep<T>& s, std::ptrdiff_t k) {
                T sum = 0;
                for (std::ptrdiff_t j = 0; j < s.length; ++j)
                    sum += element<entry>(s.a, k, j) * element<entry>(s.b, 0, j);
                s.numbers[k] = sum;
            });
    }
}

template <class T, Layout... layouts>
void sweepLayouts() {
    for (std::int32_t length = 1; length <= 16; ++length) (sweepLength<layouts, T>(length), ...);
}

}  // namespace

void measureSweeps() {
    using enum Layout;
    sweepLayouts<float, packed, padded, strided, list, stridedList, streams, pointers, stridedPointers>();
    sweepLayouts<double, packed, padded, strided, list, stridedList, streams, pointers, stridedPointers>();
}

}  // namespace bench
