// The best-fit plane of 10,000 and of 100 points.
#include <cmath>
#include <vector>

#include <CGAL/Simple_cartesian.h>
#include <CGAL/linear_least_squares_fitting_3.h>
#include <Eigen/Dense>
#include <benchmark/benchmark.h>

#include "geomKit/queries/pointFitting.h"
#include "tests/reference/InputSource.h"

using namespace geomKit;

namespace {

using Kernel = CGAL::Simple_cartesian<double>;

/// A thick tilted disc, another one for each seed.
std::vector<Vector3> cloud(int count, std::uint64_t seed) {
    InputSource in(seed);
    const Matrix3 frame = in.matrix(1.0);
    const Vector3 center = in.vector(20.0);
    std::vector<Vector3> pts;
    for (int i = 0; i < count; ++i) {
        const Vector3 v = in.vector(1.0);
        pts.push_back(center + frame * Vector3(5.0 * v.x, 3.0 * v.y, 0.3 * v.z));
    }
    return pts;
}

/// Runs over clouds of 320,000 points together, so that no branch of an eigensolver is learnt.
template <typename Cloud, typename Fit>
void measure(benchmark::State& state, Cloud convert, Fit fit) {
    const auto count = static_cast<int>(state.range(0));
    std::vector<decltype(convert(std::vector<Vector3>()))> clouds;
    for (int i = 0; i < 320000 / count; ++i) {
        const std::vector<Vector3> pts = cloud(count, static_cast<std::uint64_t>(i));
        clouds.push_back(convert(pts));
        UVector3 normal;
        bestFitPlane(pts, nullptr, &normal);
        if (!(std::abs(std::abs(normal * fit(clouds.back())) - 1.0) < 1e-9)) {
            state.SkipWithError("peers disagree");
        }
    }
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(fit(clouds[next]));
        next = next + 1 < clouds.size() ? next + 1 : 0;
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void geomKit(benchmark::State& state) {
    measure(
        state, [](const std::vector<Vector3>& pts) { return pts; },
        [](const std::vector<Vector3>& pts) {
            Vector3 center;
            UVector3 normal;
            bestFitPlane(pts, &center, &normal);
            benchmark::DoNotOptimize(center);
            return Vector3(normal);
        });
}

void cgal(benchmark::State& state) {
    measure(
        state,
        [](const std::vector<Vector3>& pts) {
            std::vector<Kernel::Point_3> out;
            for (const Vector3& p : pts)
                out.emplace_back(p.x, p.y, p.z);
            return out;
        },
        [](const std::vector<Kernel::Point_3>& pts) {
            Kernel::Plane_3 plane;
            Kernel::Point_3 center;
            CGAL::linear_least_squares_fitting_3(pts.begin(), pts.end(), plane, center,
                                                 CGAL::Dimension_tag<0>());
            benchmark::DoNotOptimize(center);
            const Kernel::Vector_3 n = plane.orthogonal_vector();
            return Vector3(n.x(), n.y(), n.z()) * (1.0 / std::sqrt(n.squared_length()));
        });
}

void eigen(benchmark::State& state) {
    measure(
        state,
        [](const std::vector<Vector3>& pts) {
            Eigen::Matrix3Xd out(3, pts.size());
            for (std::size_t i = 0; i < pts.size(); ++i)
                out.col(static_cast<Eigen::Index>(i)) << pts[i].x, pts[i].y, pts[i].z;
            return out;
        },
        [](const Eigen::Matrix3Xd& pts) {
            const Eigen::Vector3d center = pts.rowwise().mean();
            const Eigen::Matrix3Xd centered = pts.colwise() - center;
            const Eigen::Matrix3d covariance =
                centered * centered.transpose() / static_cast<double>(pts.cols());
            Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver;
            solver.computeDirect(covariance);
            const Eigen::Vector3d n = solver.eigenvectors().col(0);
            return Vector3(n.x(), n.y(), n.z());
        });
}

BENCHMARK(geomKit)->Name("bestFitPlane/geomKit")->Arg(10000)->Arg(100);
BENCHMARK(cgal)->Name("bestFitPlane/CGAL")->Arg(10000)->Arg(100);
BENCHMARK(eigen)->Name("bestFitPlane/Eigen")->Arg(10000)->Arg(100);

}  // namespace
