// Transforms and matrices: each is a row of numbers, and leading axes broadcast.
#include <type_traits>

#include <pybind11/stl.h>

#include "Operand.h"
#include "families.h"

namespace geomkitPython {

namespace {

using geomKit::BoneTransform;
using geomKit::Matrix;
using geomKit::Matrix3;
using geomKit::Transform;
using geomKit::UVector3;
using geomKit::Vector3;
using Object = py::object;

/// What `Transform` and `BoneTransform` have in common; `T` is one of them.
template <typename T>
struct Loops {
    static py::array_t<double> multiply(const Object& a, const Object& b) {
        return forEach<T>(
            1, [](const T& x, const T& y) { return x * y; }, Operand<T>(a, "a"),
            Operand<T>(b, "b"));
    }
    static py::array_t<double> inverse(const Object& a) {
        return forEach<T>(
            1, [](const T& x) { return x.inverse(); }, Operand<T>(a, "a"));
    }
    static py::array_t<double> matrix(const Object& a) {
        return forEach<Matrix>(
            1, [](const T& x) { return x.getMatrix(); }, Operand<T>(a, "a"));
    }
    static py::array_t<double> points(const Object& a, const Object& points, int workers) {
        return forEach<Vector3>(
            workers, [](const T& x, const Vector3& p) { return x.transformPoint(p); },
            Operand<T>(a, "a"), Operand<Vector3>(points, "points"));
    }
    static py::array_t<double> directions(const Object& a, const Object& directions, int workers) {
        return forEach<Vector3>(
            workers, [](const T& x, const Vector3& d) { return x.transformDirection(d); },
            Operand<T>(a, "a"), Operand<Vector3>(directions, "directions"));
    }
    static py::array_t<double> interpolate(const Object& a, const Object& b, const Object& t,
                                           int workers) {
        const Operand<T> start(a, "a");
        const Operand<T> end(b, "b");
        const Operand<double> way(t, "t");
        if constexpr (std::is_same_v<T, Transform>) {
            if (start.isOne() && end.isOne()) return alongOneWay(start[0], end[0], way, workers);
        }
        return forEach<T>(
            workers, [](const T& x, const T& y, double s) { return T::interpolate(x, y, s); },
            start, end, way);
    }

    static void add(py::module_& module, const char* name) {
        py::class_<Loops>(module, name)
            .def_static("multiply", &multiply, py::arg("a"), py::arg("b"))
            .def_static("inverse", &inverse, py::arg("a"))
            .def_static("matrix", &matrix, py::arg("a"))
            .def_static("points", &points, py::arg("a"), py::arg("points"), py::arg("workers"))
            .def_static("directions", &directions, py::arg("a"), py::arg("directions"),
                        py::arg("workers"))
            .def_static("interpolate", &interpolate, py::arg("a"), py::arg("b"), py::arg("t"),
                        py::arg("workers"));
    }

private:
    /// The axis and the angle are found once.
    static py::array_t<double> alongOneWay(const T& a, const T& b, const Operand<double>& t,
                                           int workers) {
        constexpr std::size_t kPiece = 4096;
        const std::size_t threads = workerCount(workers);
        py::array_t<double> answers = answersOf<T>(t.leading());
        T* const out = itemsOf<T>(answers);
        inPieces(countOf(t.leading()), kPiece, threads, [&](std::size_t first, std::size_t last) {
            T::interpolate(a, b, t.first() + first, last - first, out + first);
        });
        return answers;
    }
};

/// The argument as an array of doubles whose last axes are `item`.
py::array numbers(const Object& argument, const char* name, Shape item) {
    item.insert(item.begin(), kAnyShape);
    return Numbers<double>(argument, name, item).array();
}

py::array_t<double> rotate(const Object& start, const Object& end) {
    return forEach<Transform>(
        1, [](const Vector3& from, const Vector3& to) { return Transform::rotate(from, to); },
        Operand<Vector3>(start, "start"), Operand<Vector3>(end, "end"));
}

py::array_t<double> reflection(const Object& point, const Object& normal) {
    return forEach<Transform>(
        1, [](const Vector3& p, const Vector3& n) { return Transform::reflection(p, n); },
        Operand<Vector3>(point, "point"), Operand<Vector3>(normal, "normal"));
}

/// A bone from where it starts and ends.
py::array_t<double> bones(const Object& restStart, const Object& restEnd, const Object& poseStart,
                          const Object& poseEnd, const Object& twist) {
    return forEach<BoneTransform>(
        1,
        [](const Vector3& r0, const Vector3& r1, const Vector3& p0, const Vector3& p1,
           double angle) { return BoneTransform(r0, r1, p0, p1, angle); },
        Operand<Vector3>(restStart, "rest"), Operand<Vector3>(restEnd, "rest"),
        Operand<Vector3>(poseStart, "pose"), Operand<Vector3>(poseEnd, "pose"),
        Operand<double>(twist, "twist"));
}

py::array_t<double> bonesOfMatrices(const Object& matrix) {
    return forEach<BoneTransform>(
        1, [](const Matrix& m) { return BoneTransform(m); }, Operand<Matrix>(matrix, "matrix"));
}

py::array_t<double> rotationMatrix(const Object& axis, const Object& angle) {
    return forEach<Matrix3>(
        1, [](const Vector3& a, double phi) { return Matrix3::rotationMatrix(UVector3(a), phi); },
        Operand<Vector3>(axis, "axis"), Operand<double>(angle, "angle"));
}

py::array_t<double> rotationBetween(const Object& start, const Object& end) {
    return forEach<Matrix3>(
        1,
        [](const Vector3& a, const Vector3& b) {
            return Matrix3::rotationMatrix(UVector3(a), UVector3(b));
        },
        Operand<Vector3>(start, "start"), Operand<Vector3>(end, "end"));
}

py::tuple rotationAxisAngle(const Object& matrix) {
    const Operand<Matrix3> matrices(matrix, "matrix");
    const py::array_t<double> axes = forEach<UVector3>(
        1, [](const Matrix3& m) { return m.getRotationAxis(); }, matrices);
    const py::array_t<double> angles = forEach<double>(
        1, [](const Matrix3& m) { return m.getRotationAngle(nullptr); }, matrices);
    return py::make_tuple(axes, angles);
}

py::array_t<double> rigidMatrix(const Object& p0, const Object& d0, const Object& p1,
                                const Object& d1) {
    return forEach<Matrix>(
        1,
        [](const Vector3& q0, const Vector3& e0, const Vector3& q1, const Vector3& e1) {
            return Matrix::rigidTransform(q0, e0, q1, e1);
        },
        Operand<Vector3>(p0, "start"), Operand<Vector3>(d0, "start_direction"),
        Operand<Vector3>(p1, "end"), Operand<Vector3>(d1, "end_direction"));
}

py::array_t<double> inverse3(const Object& matrix) {
    return forEach<Matrix3>(
        1, [](const Matrix3& m) { return m.inverse(); }, Operand<Matrix3>(matrix, "matrix"));
}

py::array_t<double> inverse4(const Object& matrix) {
    return forEach<Matrix>(
        1, [](const Matrix& m) { return m.inverse(); }, Operand<Matrix>(matrix, "matrix"));
}

py::array_t<double> interpolateMatrices(const Object& a, const Object& b, const Object& t,
                                        int workers) {
    return forEach<Matrix>(
        workers,
        [](const Matrix& x, const Matrix& y, double s) { return Matrix::interpolate(x, y, s); },
        Operand<Matrix>(a, "a"), Operand<Matrix>(b, "b"), Operand<double>(t, "t"));
}

}  // namespace

void addTransforms(py::module_& module) {
    Loops<Transform>::add(module, "TransformLoops");
    Loops<BoneTransform>::add(module, "BoneTransformLoops");
    module.def("numbers", &numbers, py::arg("argument"), py::arg("name"), py::arg("item"));
    module.def("rotate", &rotate, py::arg("start"), py::arg("end"));
    module.def("reflection", &reflection, py::arg("point"), py::arg("normal"));
    module.def("bones", &bones, py::arg("rest_start"), py::arg("rest_end"), py::arg("pose_start"),
               py::arg("pose_end"), py::arg("twist"));
    module.def("bones_of_matrices", &bonesOfMatrices, py::arg("matrix"));
    module.def("rotation_matrix", &rotationMatrix, py::arg("axis"), py::arg("angle"));
    module.def("rotation_between", &rotationBetween, py::arg("start"), py::arg("end"));
    module.def("rotation_axis_angle", &rotationAxisAngle, py::arg("matrix"));
    module.def("rigid_matrix", &rigidMatrix, py::arg("start"), py::arg("start_direction"),
               py::arg("end"), py::arg("end_direction"));
    module.def("inverse3", &inverse3, py::arg("matrix"));
    module.def("inverse4", &inverse4, py::arg("matrix"));
    module.def("interpolate_matrices", &interpolateMatrices, py::arg("a"), py::arg("b"),
               py::arg("t"), py::arg("workers"));
}

}  // namespace geomkitPython
