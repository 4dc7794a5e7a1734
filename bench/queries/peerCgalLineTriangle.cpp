#include <CGAL/Simple_cartesian.h>
#include <CGAL/intersections.h>

#include "bench/queries/lineTriangleScene.h"

using namespace geomKit;

namespace lineTriangle {

namespace {

using Kernel = CGAL::Simple_cartesian<double>;

struct CgalScene {
    std::vector<Kernel::Line_3> lines;
    std::vector<Kernel::Triangle_3> triangles;
};

CgalScene cgalScene(const Scene& scene) {
    const auto convert = [](const Vector3& v) { return Kernel::Point_3(v.x, v.y, v.z); };
    CgalScene out;
    for (const Vector3& p : scene.starts)
        out.lines.emplace_back(convert(p), convert(p + scene.d));
    for (const Triangle& t : scene.triangles)
        out.triangles.emplace_back(convert(t.a), convert(t.b), convert(t.c));
    return out;
}

void cgalDoIntersect(benchmark::State& state) {
    const CgalScene scene = cgalScene(sceneOf(static_cast<int>(state.range(0))));
    measure(
        state,
        [&](std::size_t line) {
            Answer answer;
            for (const Kernel::Triangle_3& t : scene.triangles)
                answer.hits += CGAL::do_intersect(scene.lines[line], t);
            return answer;
        },
        false);
}

void cgalIntersection(benchmark::State& state) {
    const CgalScene scene = cgalScene(sceneOf(static_cast<int>(state.range(0))));
    const Kernel::Vector_3 d = scene.lines[0].to_vector();
    measure(state, [&](std::size_t line) {
        Answer answer;
        for (const Kernel::Triangle_3& t : scene.triangles) {
            const auto hit = CGAL::intersection(scene.lines[line], t);
            if (!hit) continue;
            ++answer.hits;
            if (const Kernel::Point_3* point = boost::get<Kernel::Point_3>(&*hit))
                answer.paramSum += (*point - scene.lines[line].point(0)) * d;
        }
        return answer;
    });
}

BENCHMARK(cgalDoIntersect)->Name("LineTriangle/CgalDoIntersect")->Arg(1)->Arg(50);
BENCHMARK(cgalIntersection)->Name("LineTriangle/CgalIntersection")->Arg(1)->Arg(50);

}  // namespace

}  // namespace lineTriangle
