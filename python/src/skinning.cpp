// Skinning: vertices moved by bones.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Numbers.h"
#include "families.h"
#include "geomKit/transforms/BoneTransformVector.h"
#include "inPieces.h"

namespace geomkitPython {

namespace {

using geomKit::BoneTransform;
using geomKit::BoneTransformVector;
using geomKit::FlatInfluences;
using geomKit::UVector3;
using geomKit::Vector3;

/// Some hundred microseconds of work.
constexpr std::size_t kPiece = 2048;

void checkLength(const char* name, std::size_t length, std::size_t vertices) {
    if (length == vertices) return;
    throw py::value_error(std::string(name) + ": length " + std::to_string(length) +
                          ", wanted that of positions, " + std::to_string(vertices));
}

/// The bones and weights of all vertices, `perVertex` of each.
struct Table {
    Numbers<std::int64_t> bones;
    Numbers<double> weights;
    std::size_t perVertex;

    Table(const py::object& boneArgument, const py::object& weightArgument, std::size_t vertices)
        : bones(boneArgument, "bones", {kAnyLength, kAnyLength}),
          weights(weightArgument, "weights", {kAnyLength, kAnyLength}),
          perVertex(static_cast<std::size_t>(bones.length(1))) {
        checkLength("bones", static_cast<std::size_t>(bones.length(0)), vertices);
        checkLength("weights", static_cast<std::size_t>(weights.length(0)), vertices);
        if (bones.length(1) == weights.length(1)) return;
        throw py::value_error("weights: " + std::to_string(weights.length(1)) +
                              " a vertex, wanted as many as bones, " + std::to_string(perVertex));
    }

    /// Every bone must be there whose weight is not 0.
    void check(std::size_t boneCount) const {
        for (std::size_t i = 0; i < bones.count(); ++i) {
            const std::int64_t bone = bones.data()[i];
            // One test for both ends: unsigned, a negative number is a huge one.
            if (static_cast<std::uint64_t>(bone) < boneCount || weights.data()[i] == 0.0) continue;
            throw py::value_error("bones: vertex " + std::to_string(i / perVertex) + " has bone " +
                                  std::to_string(bone) + " of " + std::to_string(boneCount));
        }
    }

    /// Those of some vertices: few enough to stay in the cache until they are used. Without copies
    /// of all, another thread of Python may write meanwhile; a bone that is not there by now counts
    /// as the identity.
    FlatInfluences influences(std::size_t first, std::size_t last) const {
        const std::int64_t* const from = bones.data() + first * perVertex;
        std::vector<std::int32_t> numbers((last - first) * perVertex);
        for (std::size_t i = 0; i < numbers.size(); ++i)
            numbers[i] = static_cast<std::int32_t>(from[i]);
        return FlatInfluences::fromTable(numbers.data(), weights.data() + first * perVertex,
                                         perVertex, last - first);
    }
};

py::tuple skin(const py::object& positions, const py::object& bones, const py::object& weights,
               const py::object& transforms, const py::object& normals, int workers) {
    const std::size_t threads = workerCount(workers);
    const Numbers<double> points(positions, "positions", {kAnyLength, 3});
    const Numbers<double> boneMaps(transforms, "transforms", {kAnyLength, 12});
    const std::size_t count = points.count();
    const Table table(bones, weights, count);
    table.check(boneMaps.count());
    BoneTransformVector skeleton;
    skeleton.bones.assign(boneMaps.as<BoneTransform>(),
                          boneMaps.as<BoneTransform>() + boneMaps.count());

    const Shape shape = {static_cast<py::ssize_t>(count), 3};
    const Vector3* const from = points.as<Vector3>();
    py::array_t<double> moved(shape);
    Vector3* const to = itemsOf<Vector3>(moved);
    if (normals.is_none()) {
        inPieces(count, kPiece, threads, [&](std::size_t first, std::size_t last) {
            skeleton.transformVertices(table.influences(first, last), from + first, 0, last - first,
                                       to + first);
        });
        return py::make_tuple(moved, py::none());
    }

    const Numbers<double> directions(normals, "normals", {kAnyLength, 3});
    checkLength("normals", directions.count(), count);
    py::array_t<double> turned(shape);
    const Vector3* const rest = directions.as<Vector3>();
    UVector3* const units = itemsOf<UVector3>(turned);
    inPieces(count, kPiece, threads, [&](std::size_t first, std::size_t last) {
        for (std::size_t i = first; i < last; ++i)
            units[i] = UVector3(rest[i]);
        skeleton.transformVertices(table.influences(first, last), from + first, units + first, 0,
                                   last - first, to + first, units + first);
    });
    return py::make_tuple(moved, turned);
}

}  // namespace

void addSkinning(py::module_& module) {
    module.def("skin", &skin, py::arg("positions"), py::arg("bones"), py::arg("weights"),
               py::arg("transforms"), py::arg("normals"), py::arg("workers"));
}

}  // namespace geomkitPython
