// Which eigenvectors are called left, and which right: not what most expect.
//
// The names belong to the transpose of the caller's matrix A. `Left` gives vectors y with A y = w y, which others call right
// eigenvectors; `Right` gives those with y^T A = w y^T. This program computes both and holds each against its equation. Its
// matrix has a real eigenvalue and a pair of conjugate ones.

#include <cmath>
#include <complex>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "korm.h"

namespace {

constexpr int n = 3;
constexpr double a[n][n] = {{4, -2, 1}, {3, 1, 0}, {0, 1, -2}};
constexpr std::int32_t row = sizeof a[0], element = sizeof(double);

using Complex = std::complex<double>;

// Column j belongs to eigenvalue j. A pair of conjugate eigenvalues stands side by side, the one with the positive imaginary
// part first: its vector's real part is the first column, its imaginary part the second. The other's vector is the conjugate.
Complex entry(const double (&vectors)[n][n], const double (&im)[n], int i, int j) {
    if (im[j] == 0) return vectors[i][j];
    return im[j] > 0 ? Complex{vectors[i][j], vectors[i][j + 1]} : Complex{vectors[i][j - 1], -vectors[i][j]};
}

// The greatest element of A y - w y, or of y^T A - w y^T.
double residual(const double (&vectors)[n][n], const double (&re)[n], const double (&im)[n], int j, bool fromLeft) {
    double greatest = 0;
    for (int i = 0; i < n; ++i) {
        Complex difference = -Complex{re[j], im[j]} * entry(vectors, im, i, j);
        for (int k = 0; k < n; ++k) difference += (fromLeft ? a[k][i] : a[i][k]) * entry(vectors, im, k, j);
        greatest = std::fmax(greatest, std::abs(difference));
    }
    return greatest;
}

}  // namespace

int main() {
    std::uint32_t bytes = 0;
    if (kormEigenValuesVectorsGetBufSize_64f(n, &bytes) != korStatusOk) return EXIT_FAILURE;
    std::vector<double> buffer(bytes / sizeof(double));

    double right[n][n], left[n][n], re[n], im[n];
    const std::int32_t status = kormEigenValuesVectors_m_64f(a[0], row, element, right[0], row, element, left[0], row,
                                                             element, re, im, n, buffer.data());
    if (status != korStatusOk) {
        std::printf("no eigenvectors: status %d\n", static_cast<int>(status));
        return EXIT_FAILURE;
    }
    bool satisfied = true;
    for (int j = 0; j < n; ++j) {
        const double ofLeft = residual(left, re, im, j, false), ofRight = residual(right, re, im, j, true);
        std::printf("w = %8.5f %+8.5f i:  left |A y - w y| = %.0e,  right |y^T A - w y^T| = %.0e\n", re[j], im[j],
                    ofLeft, ofRight);
        satisfied = satisfied && ofLeft < 1e-13 && ofRight < 1e-13;
    }
    std::puts(satisfied ? "every vector satisfies its equation" : "a vector doesn't satisfy its equation");
    return satisfied ? EXIT_SUCCESS : EXIT_FAILURE;
}
