#include "view.h"

#include <algorithm>
#include <cstdint>

namespace korm::python {

Index Loops::count() const {
    Index count = 1;
    for (int i = 0; i < axes; ++i) count *= shape[i];
    return count;
}

Index View::objectStride() const {
    if (!list.empty()) return -1;
    Index stride = 0, next = 0;
    bool found = false;
    for (int i = loops.axes; i-- > 0;) {
        if (loops.shape[i] == 1) continue;
        if (!found) {
            stride = loopStride[i];
            found = true;
        } else if (loopStride[i] != next) {
            return -1;
        }
        next = loopStride[i] * loops.shape[i];
    }
    return found ? stride : 0;
}

namespace {

bool isStride(Index stride, Index itemSize) {
    return stride >= itemSize && stride % itemSize == 0 && stride <= INT32_MAX;
}

}

unsigned View::layouts(Index itemSize) const {
    constexpr unsigned inStandard = 1U << standardLayout, inList = 1U << listLayout, inPointer = 1U << pointerLayout;
    const Index between = single ? itemSize : objectStride();
    const bool oneObject = single || loops.count() == 1;
    const bool regular = list.empty() && (oneObject || isStride(between, itemSize));
    if (packed) return regular && (oneObject || between == itemSize) ? inStandard | inList | inPointer : 0;
    bool inner = true;
    for (int i = 0; i < axes; ++i) inner = inner && (shape[i] == 1 || isStride(stride[i], itemSize));
    if (single) return inner ? inStandard | inList | inPointer : inPointer;
    return (regular && inner ? inStandard : 0) | (inner ? inList : 0) | (regular ? inPointer : 0);
}

bool View::streams(Index itemSize) const {
    if (single || packed || axes == 0 || elements() == 1 || objectStride() != itemSize) return false;
    return shape[axes - 1] == 1 || stride[axes - 1] != itemSize;
}

View View::transposed() const {
    View turned = *this;
    std::swap(turned.shape[0], turned.shape[1]);
    std::swap(turned.stride[0], turned.stride[1]);
    return turned;
}

std::pair<const std::byte*, const std::byte*> View::bounds(Index itemSize) const {
    Index low = 0, high = itemSize;
    const auto widen = [&](Index count, Index step) {
        if (count > 1) (step < 0 ? low : high) += (count - 1) * step;
    };
    for (int i = 0; i < axes; ++i) widen(shape[i], stride[i]);
    if (!list.empty()) {
        const auto [first, last] = std::minmax_element(list.begin(), list.end());
        return {*first + low, *last + high};
    }
    for (int i = 0; i < loops.axes; ++i) widen(loops.shape[i], loopStride[i]);
    return {data + low, data + high};
}

bool View::operator==(const View& other) const {
    if (data != other.data || list != other.list || axes != other.axes || single != other.single) return false;
    for (int i = 0; i < axes; ++i)
        if (shape[i] != other.shape[i] || (shape[i] > 1 && stride[i] != other.stride[i])) return false;
    for (int i = 0; i < loops.axes; ++i)
        if (loops.shape[i] > 1 && loopStride[i] != other.loopStride[i]) return false;
    return true;
}

View viewOf(PyArrayObject* array, int axes) {
    View view;
    view.data = static_cast<std::byte*>(PyArray_DATA(array));
    view.axes = axes;
    view.loops.axes = PyArray_NDIM(array) - axes;
    for (int i = 0; i < view.loops.axes; ++i) {
        view.loops.shape[i] = PyArray_DIM(array, i);
        view.loopStride[i] = PyArray_STRIDE(array, i);
    }
    for (int i = 0; i < axes; ++i) {
        view.shape[i] = PyArray_DIM(array, view.loops.axes + i);
        view.stride[i] = PyArray_STRIDE(array, view.loops.axes + i);
    }
    return view;
}

std::byte** Addresses::take(Index count) {
    if (used + count <= static_cast<Index>(std::size(few))) {
        used += count;
        return few + used - count;
    }
    return more.emplace_back(static_cast<std::size_t>(count)).data();
}

void listObjects(std::byte** list, const View& view, Index first, Index count) {
    if (!view.list.empty() || view.single) {
        for (Index k = 0; k < count; ++k)
            list[k] = view.single ? view.data : view.list[static_cast<std::size_t>(first + k)];
        return;
    }
    Index at[maxLoops] = {}, rest = first;
    std::byte* object = view.data;
    for (int i = view.loops.axes; i-- > 0; rest /= view.loops.shape[i]) {
        at[i] = rest % view.loops.shape[i];
        object += at[i] * view.loopStride[i];
    }
    for (Index k = 0; k < count; ++k) {
        list[k] = object;
        for (int i = view.loops.axes; i-- > 0;) {
            object += view.loopStride[i];
            if (++at[i] < view.loops.shape[i]) break;
            object -= view.loops.shape[i] * view.loopStride[i];
            at[i] = 0;
        }
    }
}

void describe(Place& place, const View& view, Layout layout, Index first, Index count, Index itemSize,
              Addresses& addresses) {
    const Index between = view.single || count == 1 ? itemSize : view.objectStride();
    const Index begin = view.single ? 0 : first * view.objectStride();
    const auto inner = [&](int axis) {  // strides that nothing depends on may be anything
        return static_cast<std::int32_t>(axis < 0 || view.shape[axis] == 1 ? itemSize : view.stride[axis]);
    };
    place.offset = 0;
    place.objectStride = static_cast<std::int32_t>(between);
    place.rowStride = inner(view.axes == 2 ? 0 : -1);
    place.elementStride = inner(view.axes - 1);
    place.shape[0] = static_cast<std::int32_t>(view.shape[0]);
    place.shape[1] = static_cast<std::int32_t>(view.shape[1]);
    if (layout == listLayout && !view.single && !view.packed) {
        std::byte** list = addresses.take(count);
        listObjects(list, view, first, count);
        place.base = list;
    } else if (layout == pointerLayout && view.axes > 0 && !view.packed) {
        std::byte** table = addresses.take(view.elements());
        place.base = table;
        for (Index i = 0; i < view.shape[0]; ++i)
            for (Index j = 0; j < view.shape[1]; ++j)
                *table++ = view.data + begin + i * view.stride[0] + j * view.stride[1];
    } else {
        place.base = view.data + begin;
    }
}

}
