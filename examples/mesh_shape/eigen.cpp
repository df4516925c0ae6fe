// The peer's side of both jobs, object by object, in types that need no memory from the heap.
#include <Eigen/Dense>

#include "curvature.h"
#include "normals.h"

namespace example {

void solveWithEigen(const std::vector<QuadricProblems>& problems, std::vector<Quadric>& quadrics) {
    using Matrix = Eigen::Matrix<float, Eigen::Dynamic, coefficients, 0, mostRows, coefficients>;
    using Vector = Eigen::Matrix<float, Eigen::Dynamic, 1, 0, mostRows, 1>;
    using Rows = Eigen::Matrix<float, Eigen::Dynamic, coefficients, Eigen::RowMajor>;
    for (const QuadricProblems& p : problems) {
        for (std::size_t k = 0; k < p.vertices.size(); ++k) {
            const auto height = static_cast<std::size_t>(p.height);
            const Eigen::Map<const Rows> matrix(&p.matrices[k * height * coefficients], p.height, coefficients);
            const Eigen::Map<const Eigen::VectorXf> rightSide(&p.rightSides[k * height], p.height);
            const Eigen::HouseholderQR<Matrix> decomposition(matrix);
            Eigen::Map<Eigen::Matrix<float, coefficients, 1>>(quadrics[p.vertices[k]].data()) =
                decomposition.solve(Vector(rightSide));
        }
    }
}

namespace {

template <class Compute>
void solveEach(const std::vector<Covariance>& covariances, std::vector<Axes>& axes, std::vector<Point>& lengths,
               const Compute& compute) {
    Eigen::SelfAdjointEigenSolver<Eigen::Matrix3f> solver;
    for (std::size_t k = 0; k < covariances.size(); ++k) {
        compute(solver, Eigen::Map<const Eigen::Matrix3f>(covariances[k].data()));
        // Eigen's values ascend.
        for (int i = 0; i < 3; ++i) {
            lengths[k][static_cast<std::size_t>(i)] = solver.eigenvalues()[2 - i];
            for (int j = 0; j < 3; ++j) axes[k][static_cast<std::size_t>(3 * i + j)] = solver.eigenvectors()(i, 2 - j);
        }
    }
}

}  // namespace

void solveByIteration(const std::vector<Covariance>& covariances, std::vector<Axes>& axes,
                      std::vector<Point>& lengths) {
    solveEach(covariances, axes, lengths, [](auto& solver, const auto& matrix) { solver.compute(matrix); });
}

void solveInClosedForm(const std::vector<Covariance>& covariances, std::vector<Axes>& axes,
                       std::vector<Point>& lengths) {
    solveEach(covariances, axes, lengths, [](auto& solver, const auto& matrix) { solver.computeDirect(matrix); });
}

}  // namespace example
