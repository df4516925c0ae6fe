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
    for (int width = 1; width <= 16; ++width) {
        copyRow<T, Layout::packed, Layout::streams>("sweep", width, 1, inCache);
        copyRow<T, Layout::streams, Layout::packed>("sweep", width, 1, inCache);
        copyRow<T, Layout::packed, Layout::packed>("sweep", width, 1, inCache);
        copyRow<T, Layout::padded, Layout::packed>("sweep", width, 1, inCache);
        copyRow<T, Layout::list, Layout::packed>("sweep", width, 1, inCache);
    }
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
    row.korm([=] {
        pick<T>(kormTranspose_ma_32f, kormTranspose_ma_64f)(a.base, object, line, size, order, order, b.base, object,
                                                            line, size, static_cast<std::int32_t>(count));
    });
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
}

}  // namespace bench
