// Movement: between layouts, into packed blocks, transposition of arrays.
#include "move.h"

#include <cstring>

#include "../harness/eigen.h"

namespace bench {
namespace {

// --- Copies -------------------------------------------------------------------------------------

// An operand's arguments, as a call of its layout takes them.
template <Entry entry, class T>
auto descriptor(const Operand<T>& operand) {
    if constexpr (entry == Entry::standard)
        return std::tuple(operand.base, operand.objectStride, operand.rowStride, operand.elementStride);
    else if constexpr (entry == Entry::list)
        return std::tuple(operand.table, operand.offset, operand.rowStride, operand.elementStride);
    else return std::tuple(operand.table, operand.offset, operand.objectStride);
}

template <Entry from, Entry to, class T>
constexpr auto copyFunction() {
    using enum Entry;
    if constexpr (from == standard && to == standard) return pick<T>(kormCopy_ma_32f_SS, kormCopy_ma_64f_SS);
    else if constexpr (from == standard && to == list) return pick<T>(kormCopy_ma_32f_SL, kormCopy_ma_64f_SL);
    else if constexpr (from == standard) return pick<T>(kormCopy_ma_32f_SP, kormCopy_ma_64f_SP);
    else if constexpr (from == list && to == standard) return pick<T>(kormCopy_ma_32f_LS, kormCopy_ma_64f_LS);
    else if constexpr (from == list && to == list) return pick<T>(kormCopy_ma_32f_LL, kormCopy_ma_64f_LL);
    else if constexpr (from == list) return pick<T>(kormCopy_ma_32f_LP, kormCopy_ma_64f_LP);
    else if constexpr (to == standard) return pick<T>(kormCopy_ma_32f_PS, kormCopy_ma_64f_PS);
    else if constexpr (to == list) return pick<T>(kormCopy_ma_32f_PL, kormCopy_ma_64f_PL);
    else return pick<T>(kormCopy_ma_32f_PP, kormCopy_ma_64f_PP);
}

constexpr char letterOf(Entry entry) { return entry == Entry::standard ? 'S' : entry == Entry::list ? 'L' : 'P'; }

// Element (i, j) of object k.
template <Entry entry, class T>
T& element(const Operand<T>& operand, int width, std::ptrdiff_t k, std::ptrdiff_t i, std::ptrdiff_t j) {
    if constexpr (entry == Entry::pointer) return operand.table[i * width + j][k * operand.objectStep()];
    else {
        T* const object = entry == Entry::list ? operand.table[k] : operand.base + k * operand.objectStep();
        return object[i * operand.rowStep() + j * operand.elementStep()];
    }
}

template <Entry from, Entry to, class T>
[[gnu::noinline]] void copyLoop(const Operand<T>& source, const Operand<T>& result, int width, int height,
                                std::size_t count) {
    for (std::ptrdiff_t k = 0; k < static_cast<std::ptrdiff_t>(count); ++k)
        for (std::ptrdiff_t i = 0; i < height; ++i)
            for (std::ptrdiff_t j = 0; j < width; ++j)
                element<to>(result, width, k, i, j) = element<from>(source, width, k, i, j);
}

template <class T, Layout from, Layout to>
void copyRow(const std::string& section, int width, int height, const Place& where) {
    constexpr Entry source = entryOf(from), result = entryOf(to);
    const std::size_t elements = objectSpan<T>(from, height, width) + objectSpan<T>(to, height, width);
    const std::size_t count = where.bytes / sizeof(T) / elements;
    std::string size = std::to_string(width);
    if (height > 1) size = std::to_string(height) + "x" + size;
    const std::string form = std::string("Copy_ma") + suffix<T> + "_" + letterOf(source) + letterOf(result);
    const std::string name = section + "/" + form + "/" + size + "/" + std::string(nameOf(from)) + " to " +
                             std::string(nameOf(to)) + " " + where.name;
    if (!isWanted(name)) return;
    const Operand<T> a = place<T>(0, from, height, width, count), b = place<T>(1, to, height, width, count);
    Row row(name, static_cast<double>(count));
    row.results(b.base, b.span, 0);
    row.korm([=] {
        std::apply(copyFunction<source, result, T>(),
                   std::tuple_cat(descriptor<source>(a), descriptor<result>(b),
                                  std::tuple(width, height, static_cast<std::int32_t>(count))));
    });
    if (from == Layout::packed && to == Layout::packed)
        row.peer("memcpy", [=] { std::memcpy(b.base, a.base, a.span * sizeof(T)); });
    row.peer("plain loop", [=] { copyLoop<source, result>(a, b, width, height, count); });
    row.measure();
}

template <class T>
void copyRows() {
    for (const Place& where : {inCache, outOfCache}) {
        for (const auto& [height, width] : {std::pair(1, 3), {1, 4}, {1, 6}, {3, 3}, {4, 4}, {6, 6}, {1, 100}}) {
            copyRow<T, Layout::packed, Layout::packed>("blocks", width, height, where);
            if (width > 6) continue;
            copyRow<T, Layout::packed, Layout::streams>("structures", width, height, where);
            copyRow<T, Layout::streams, Layout::packed>("structures", width, height, where);
            copyRow<T, Layout::list, Layout::streams>("structures", width, height, where);
            copyRow<T, Layout::streams, Layout::list>("structures", width, height, where);
            copyRow<T, Layout::padded, Layout::packed>("pairs", width, height, where);
            copyRow<T, Layout::strided, Layout::packed>("pairs", width, height, where);
            copyRow<T, Layout::packed, Layout::strided>("pairs", width, height, where);
            copyRow<T, Layout::list, Layout::packed>("pairs", width, height, where);
            copyRow<T, Layout::packed, Layout::list>("pairs", width, height, where);
            copyRow<T, Layout::list, Layout::list>("pairs", width, height, where);
            copyRow<T, Layout::streams, Layout::streams>("pairs", width, height, where);
            copyRow<T, Layout::pointers, Layout::packed>("pairs", width, height, where);
            copyRow<T, Layout::stridedPointers, Layout::streams>("pairs", width, height, where);
        }
    }
}

// All small lengths and shapes.
template <class T, Layout from, Layout to>
void sweepCopies() {
    for (int length = 1; length <= 16; ++length) copyRow<T, from, to>("sweep", length, 1, inCache);
    for (int height = 2; height <= 8; ++height)
        for (int width = 1; width <= 8; ++width) copyRow<T, from, to>("sweep", width, height, inCache);
}

template <class T, Layout... others>
void sweepPackedWith() {
    (sweepCopies<T, Layout::packed, others>(), ...);
    (sweepCopies<T, others, Layout::packed>(), ...);
}

template <class T>
void sweepRows() {
    using enum Layout;
    sweepPackedWith<T, padded, strided, list, stridedList, streams, pointers, stridedPointers>();
    sweepCopies<T, list, list>();
    sweepCopies<T, list, streams>();
    sweepCopies<T, streams, list>();
    sweepCopies<T, streams, streams>();
    sweepCopies<T, stridedPointers, streams>();
}

// --- Transposition ------------------------------------------------------------------------------

template <class T, int order>
void transposeRow(const Place& where) {
    const std::string name =
        std::string("arrays/Transpose_ma") + suffix<T> + "/" + std::to_string(order) + "/" + where.name;
    if (!isWanted(name)) return;
    constexpr std::int32_t size = sizeof(T), line = order * size, object = order * line;
    const std::size_t count = where.bytes / (2 * object);
    const Operand<T> a = place<T>(0, Layout::packed, order, order, count),
                     b = place<T>(1, Layout::packed, order, order, count);
    Row row(name, static_cast<double>(count));
    row.results(b.base, b.span, 0);
    const auto korm = [=](std::int32_t objects) {
        pick<T>(kormTranspose_ma_32f, kormTranspose_ma_64f)(a.base, object, line, size, order, order, b.base, object,
                                                            line, size, objects);
    };
    row.kormWithCall(korm, static_cast<std::int32_t>(count));
    row.peer("Eigen", [=] {
        using Matrix = Eigen::Matrix<T, order, order, Eigen::RowMajor>;
        for (std::size_t k = 0; k < count; ++k)
            Eigen::Map<Matrix>(b.base + k * order * order) =
                Eigen::Map<const Matrix>(a.base + k * order * order).transpose();
    });
    row.peer("plain loop", [=] {
        const T* from = a.base;
        T* to = b.base;
        for (std::size_t k = 0; k < count; ++k, from += order * order, to += order * order)
            for (int i = 0; i < order; ++i)
                for (int j = 0; j < order; ++j) to[j * order + i] = from[i * order + j];
    });
    row.measure();
}

template <class T>
void sweepTransposes() {
    for (int height = 1; height <= 16; ++height)
        for (int width = 1; width <= 16; ++width) {
            const std::string name = std::string("sweep/Transpose_ma") + suffix<T> + "/" + std::to_string(height) +
                                     "x" + std::to_string(width) + "/packed";
            if (!isWanted(name)) continue;
            constexpr std::int32_t size = sizeof(T);
            const std::int32_t elements = height * width, object = elements * size;
            const std::int32_t count = static_cast<std::int32_t>(inCache.bytes) / (2 * object);
            const auto all = static_cast<std::size_t>(count);
            const Operand<T> a = place<T>(0, Layout::packed, height, width, all),
                             b = place<T>(1, Layout::packed, width, height, all);
            Row row(name, count);
            row.results(b.base, b.span, 0);
            row.korm([=] {
                pick<T>(kormTranspose_ma_32f, kormTranspose_ma_64f)(a.base, object, width * size, size, width, height,
                                                                    b.base, object, height * size, size, count);
            });
            row.peer("plain loop, sizes at run time", [=] {
                for (std::ptrdiff_t k = 0; k < count; ++k)
                    for (std::ptrdiff_t i = 0; i < height; ++i)
                        for (std::ptrdiff_t j = 0; j < width; ++j)
                            b.base[k * elements + j * height + i] = a.base[k * elements + i * width + j];
            });
            row.measure();
        }
}

// --- Packed blocks and identities -----------------------------------------------------------------

template <class T, Layout layout>
void extractRow(int order, const Place& where) {
    constexpr Entry entry = entryOf(layout);
    const std::size_t count =
        where.bytes / sizeof(T) / (objectSpan<T>(layout, order, order) + static_cast<std::size_t>(order * order));
    const std::string name = std::string("extract/Extract_ma") + suffix<T> + "/" + std::to_string(order) + "/" +
                             std::string(nameOf(layout)) + " " + where.name;
    if (!isWanted(name)) return;
    const Operand<T> a = place<T>(0, layout, order, order, count), b = place<T>(1, Layout::packed, order, order, count);
    const auto objects = static_cast<std::int32_t>(count);
    Row row(name, static_cast<double>(count));
    row.results(b.base, b.span, 0);
    row.korm([=] {
        if constexpr (entry == Entry::standard)
            pick<T>(kormExtract_ma_32f, kormExtract_ma_64f)(a.base, a.objectStride, a.rowStride, a.elementStride,
                                                            b.base, order, order, objects);
        else if constexpr (entry == Entry::list)
            pick<T>(kormExtract_ma_32f_L, kormExtract_ma_64f_L)(a.table, a.offset, a.rowStride, a.elementStride, b.base,
                                                                order, order, objects);
        else
            pick<T>(kormExtract_ma_32f_P, kormExtract_ma_64f_P)(a.table, a.offset, a.objectStride, b.base, order, order,
                                                                objects);
    });
    if (layout == Layout::packed) row.peer("memcpy", [=] { std::memcpy(b.base, a.base, a.span * sizeof(T)); });
    row.peer("plain loop", [=] { copyLoop<entry, Entry::standard>(a, b, order, order, count); });
    row.measure();
}

template <class T>
void identityRow(int order, const Place& where) {
    const std::string name =
        std::string("identities/LoadIdentity_ma") + suffix<T> + "/" + std::to_string(order) + "/" + where.name;
    if (!isWanted(name)) return;
    constexpr std::int32_t size = sizeof(T);
    const std::int32_t elements = order * order;
    const std::size_t count = where.bytes / static_cast<std::size_t>(elements * size);
    const Operand<T> b = place<T>(1, Layout::packed, order, order, count);
    Row row(name, static_cast<double>(count));
    row.results(b.base, b.span, 0);
    row.korm([=] {
        pick<T>(kormLoadIdentity_ma_32f, kormLoadIdentity_ma_64f)(b.base, elements * size, order * size, size, order,
                                                                  order, static_cast<std::int32_t>(count));
    });
    row.peer("memset and a loop", [=] {
        std::memset(b.base, 0, b.span * sizeof(T));
        T* object = b.base;
        for (std::size_t k = 0; k < count; ++k, object += elements)
            for (int i = 0; i < order; ++i) object[i * order + i] = 1;
    });
    row.peer("plain loop", [=] {
        T* object = b.base;
        for (std::size_t k = 0; k < count; ++k, object += elements)
            for (int i = 0; i < order; ++i)
                for (int j = 0; j < order; ++j) object[i * order + j] = i == j ? T(1) : T(0);
    });
    row.measure();
}

template <class T>
void blockRows() {
    for (const Place& where : {inCache, outOfCache})
        for (const int order : {3, 4, 6, 16}) {
            extractRow<T, Layout::packed>(order, where);
            extractRow<T, Layout::padded>(order, where);
            extractRow<T, Layout::strided>(order, where);
            extractRow<T, Layout::list>(order, where);
            extractRow<T, Layout::streams>(order, where);
            identityRow<T>(order, where);
        }
}

}  // namespace

void measureRows() {
    copyRows<float>();
    copyRows<double>();
    for (const Place& where : {inCache, outOfCache}) {
        transposeRow<float, 3>(where);
        transposeRow<float, 4>(where);
        transposeRow<float, 5>(where);
        transposeRow<float, 6>(where);
        transposeRow<double, 3>(where);
        transposeRow<double, 4>(where);
        transposeRow<double, 5>(where);
        transposeRow<double, 6>(where);
    }
    measureMatrices();
    blockRows<float>();
    blockRows<double>();
    sweepRows<float>();
    sweepRows<double>();
    sweepTransposes<float>();
    sweepTransposes<double>();
}

}  // namespace bench
