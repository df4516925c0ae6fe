// What the tests of this folder share.
#pragma once

#include <gtest/gtest.h>

#include <cstring>

#include "../reference/linalg/linalg.h"
#include "../reference/linalg/square.h"
#include "../support/dense_call.h"
#include "../support/each_form.h"
#include "../support/element_values.h"
#include "../support/status.h"
#include "../support/thread_number.h"

namespace kormtest {

// The forms of one operation, by their place among all forms.
inline std::vector<std::size_t> formsOf(const char* operation) {
    std::vector<std::size_t> result;
    for (const Form& form : allForms())
        if (form.operationWord == operation) result.push_back(form.index);
    return result;
}

// Every kind of element placing that the layout knows: adjacent elements, then spread ones.
inline std::vector<std::int32_t> spreadsOf(const Form& form) {
    return form.layout == Layout::pointer ? std::vector<std::int32_t>{1} : std::vector<std::int32_t>{1, 2};
}

inline Sizes squareSizes(std::int32_t order, std::int32_t count = 1) {
    Sizes sizes;
    sizes.order = order;
    sizes.count = count;
    return sizes;
}

template <class T>
void setMatrix(DenseCall& call, const char* operand, std::int32_t k, const Square<T>& a) {
    for (std::int32_t i = 0; i < a.order(); ++i)
        for (std::int32_t j = 0; j < a.order(); ++j) call.set<T>(operand, k, i, j, a(i, j));
}

template <class T>
Square<T> getMatrix(const DenseCall& call, const char* operand, std::int32_t k) {
    Square<T> a(call.sizes().order);
    for (std::int32_t i = 0; i < a.order(); ++i)
        for (std::int32_t j = 0; j < a.order(); ++j) a(i, j) = call.get<T>(operand, k, i, j);
    return a;
}

template <class T>
Square<T> identity(std::int32_t n, T scale = 1) {
    Square<T> a(n);
    for (std::int32_t i = 0; i < n; ++i) a(i, i) = scale;
    return a;
}

template <class T>
Square<T> integers(std::int32_t n, std::int32_t reach, Random& random) {
    Square<T> a(n);
    for (std::size_t at = 0; at < a.size(); ++at) a.data()[at] = static_cast<T>(random.between(-reach, reach));
    return a;
}

// Numbers around 1 of both signs.
template <class T>
Square<T> ordinary(std::int32_t n, Random& random) {
    Square<T> a(n);
    for (std::size_t at = 0; at < a.size(); ++at) {
        const std::uint64_t bits = randomElement(sizeof(T) == 4 ? Type::f32 : Type::f64, Mood::ordinary, false, random);
        std::memcpy(a.data() + at, &bits, sizeof(T));
    }
    return a;
}

template <class T>
bool sameBits(T a, T b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Runs a test written for both element types.
template <class Body>
void byType(const Form& form, const Body& body) {
    if (form.type == Type::f32) body(float{});
    else body(double{});
}

class LinalgForm : public testing::TestWithParam<std::size_t> {
protected:
    void SetUp() override { scriptThreadNumbers({1}); }
    const Form& form() const { return allForms()[GetParam()]; }
    std::int32_t count(std::int32_t wanted) const { return form().array ? wanted : 1; }
};

}  // namespace kormtest
