// Which rows there are: for each form its sizes, layouts and places, and who competes in them.
#pragma once

#include <string>
#include <utility>

#include "measure.h"
#include "peer_eigen.h"
#include "peer_loops.h"

namespace bench {

template <class Form, Layout layout, class T, int rows, int columns>
std::span<const Contender<T>> contendersOf() {
    constexpr Shape shape = Form::shape;
    constexpr Contender<T> korm{"korm", callKorm<Form, layout, T>};
    constexpr Contender<T> loop{"loop", plainLoop<Form, layout, T, rows, columns>};
    if constexpr (entryOf(layout) == Entry::pointer) {
        if constexpr (shape.isArray()) {
            static constexpr Contender<T> all[] = {korm,
                                                   loop,
                                                   {"streamLoop", streamLoop<Form, layout, T, rows, columns>},
                                                   {"eigenFlat", eigenStreams<Form, layout, T, rows, columns>}};
            return all;
        } else {
            static constexpr Contender<T> all[] = {korm, loop};
            return all;
        }
    } else {
        constexpr Contender<T> eigen{"eigen", eigenFixed<Form, layout, T, rows, columns>};
        if constexpr (layout == Layout::packed && shape.isArray() && !shape.transposes()) {
            constexpr Contender<T> flat{"eigenFlat", eigenFlat<Form, T, rows, columns>};
            if constexpr (shape.firstIsArray) {
                static constexpr Contender<T> all[] = {korm, loop, eigen, flat, {"copy", copyLoop<T>, true}};
                return all;
            } else {
                static constexpr Contender<T> all[] = {korm, loop, eigen, flat};
                return all;
            }
        } else if constexpr (layout == Layout::packed && shape.isVector() && columns >= 1000) {
            static constexpr Contender<T> all[] = {korm, loop, eigen, {"copy", copyLoop<T>, true}};
            return all;
        } else {
            static constexpr Contender<T> all[] = {korm, loop, eigen};
            return all;
        }
    }
}

template <class Form, Layout layout, class T, int rows, int columns>
void addRow(const Place& place) {
    std::string name(Form::name);
    name += sizeof(T) == 4 ? "_32f/" : "_64f/";
    name += std::to_string(columns) + "/" + std::string(nameOf(layout)) + "/" + place.name;
    benchmark::RegisterBenchmark(name.c_str(),
                                 [place](benchmark::State& state) {
                                     measureRow<T>(state, Form::shape, layout, columns, rows, place,
                                                   contendersOf<Form, layout, T, rows, columns>());
                                 })
        ->Iterations(1)
        ->UseManualTime()
        ->Unit(benchmark::kNanosecond);
}

// Out of cache every kind of kernel waits for memory, so only packed objects are measured there for all
// forms, and the other layouts for those which stand for the rest.
template <class Form, Layout layout, class T, int rows, int columns>
void addRowsOfSize(bool representative) {
    constexpr bool isLong = columns > 100000;
    if constexpr (!isLong) {
        const bool quickSize = columns == 3 || columns == 4 || columns == 1000;
        if (!settings.quick || quickSize) addRow<Form, layout, T, rows, columns>(inCache);
    }
    if constexpr (Form::shape.isArray()) {
        const bool wanted = settings.quick ? layout == Layout::packed && columns == 4 && representative
                                           : settings.all || representative || layout == Layout::packed;
        if (wanted) addRow<Form, layout, T, rows, columns>(outOfCache);
    } else if constexpr (isLong && layout == Layout::packed) {
        addRow<Form, layout, T, rows, columns>(outOfCache);
    }
}

template <class Form, Layout layout, class T, int... sizes>
void addRowsOfLayout(bool representative, std::integer_sequence<int, sizes...>) {
    (addRowsOfSize < Form, layout, T, Form::shape.isVector() ? 1 : sizes, sizes > (representative), ...);
}

using Orders = std::integer_sequence<int, 3, 4, 5, 6, 10>;
using Lengths = std::integer_sequence<int, 3, 4, 5, 6, 16, 1000>;
using LongLengths = std::integer_sequence<int, 4000000>;

template <class Form, class Sizes>
void addForm(bool representative = false) {
    const auto add = [&]<Layout layout>() {
        addRowsOfLayout<Form, layout, float>(representative, Sizes());
        addRowsOfLayout<Form, layout, double>(representative, Sizes());
    };
    add.template operator()<Layout::packed>();
    if constexpr (!std::is_same_v<Sizes, LongLengths>) {
        add.template operator()<Layout::padded>();
        add.template operator()<Layout::strided>();
        if constexpr (Form::shape.isArray()) {
            add.template operator()<Layout::list>();
            add.template operator()<Layout::stridedList>();
            add.template operator()<Layout::streams>();
        }
        add.template operator()<Layout::pointers>();
        if constexpr (Form::shape.isArray()) add.template operator()<Layout::stridedPointers>();
    }
}

// One for each file in rows/.
void addMatrixSums();
void addTransposedSums();
void addScaledMatrices();
void addVectorSums();
void addConstants();
void addConstantsFirst();
void addSingles();

}  // namespace bench
