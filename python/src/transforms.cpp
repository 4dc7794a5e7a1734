// Transforms and matrices: each is a row of numbers, and leading axes broadcast.
#include <type_traits>

#include <pybind11/stl.h>

#include "families.h"
#include "forEachItem.h"

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
    static py::object multiply(const Object& a, const Object& b) {
        return forEach<T>(
            1, [](const T& x, const T& y) { return x * y; }, Input<T>("a", a), Input<T>("b", b));
    }
    static py::object inverse(const Object& a) {
        return forEach<T>(
            1, [](const T& x) { return x.inverse(); }, Input<T>("a", a));
    }
    static py::object matrix(const Object& a) {
        return forEach<Matrix>(
            1, [](const T& x) { return x.getMatrix(); }, Input<T>("a", a));
    }
    static py::object points(const Object& a, const Object& points, int workers) {
        return forEach<Vector3>(
            workers, [](const T& x, const Vector3& p) { return x.transformPoint(p); },
            Input<T>("a", a), Input<Vector3>("points", points));
    }
    static py::object directions(const Object& a, const Object& directions, int workers) {
        return forEach<Vector3>(
            workers, [](const T& x, const Vector3& d) { return x.transformDirection(d); },
            Input<T>("a", a), Input<Vector3>("directions", directions));
    }
    static py::object interpolate(const Object& a, const Object& b, const Object& t, int workers) {
        const Input<T> start("a", a);
        const Input<T> end("b", b);
        const Input<double> way("t", t);
        if constexpr (std::is_same_v<T, Transform>) {
            const bool isOneWay =
                start.numbers().leading().empty() && end.numbers().leading().empty();
            if (isOneWay) return alongOneWay(*start.items(), *end.items(), way, workers);
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
    static py::object alongOneWay(const T& a, const T& b, const Input<double>& t, int workers) {
        constexpr std::size_t kPiece = 4096;
        const std::size_t threads = workerCount(workers);
        const Output<T> answers(t.numbers().leading());
        inPieces(t.numbers().count(), kPiece, threads, [&](std::size_t first, std::size_t last) {
            T::interpolate(a, b, t.items() + first, last - first, answers.items() + first);
        });
        return answers.array();
    }
};

/// The argument as an array of doubles whose last axes are `item`.
py::array numbers(const Object& argument, const char* name, Shape item) {
    item.insert(item.begin(), kAnyShape);
    return Numbers<double>(argument, name, item).array();
}

py::object rotate(const Object& start, const Object& end) {
    return forEach<Transform>(
        1, [](const Vector3& from, const Vector3& to) { return Transform::rotate(from, to); },
        Input<Vector3>("start", start), Input<Vector3>("end", end));
}

py::object reflection(const Object& point, const Object& normal) {
    return forEach<Transform>(
        1, [](const Vector3& p, const Vector3& n) { return Transform::reflection(p, n); },
        Input<Vector3>("point", point), Input<Vector3>("normal", normal));
}

/// A bone from where it starts and ends.
py::object bones(const Object& restStart, const Object& restEnd, const Object& poseStart,
                 const Object& poseEnd, const Object& twist) {
    return forEach<BoneTransform>(
        1,
        [](const Vector3& r0, const Vector3& r1, const Vector3& p0, const Vector3& p1,
           double angle) { return BoneTransform(r0, r1, p0, p1, angle); },
        Input<Vector3>("rest", restStart), Input<Vector3>("rest", restEnd),
        Input<Vector3>("pose", poseStart), Input<Vector3>("pose", poseEnd),
        Input<double>("twist", twist));
}

py::object bonesOfMatrices(const Object& matrix) {
    return forEach<BoneTransform>(
        1, [](const Matrix& m) { return BoneTransform(m); }, Input<Matrix>("matrix", matrix));
}

py::object rotationMatrix(const Object& axis, const Object& angle) {
    return forEach<Matrix3>(
        1, [](const Vector3& a, double phi) { return Matrix3::rotationMatrix(UVector3(a), phi); },
        Input<Vector3>("axis", axis), Input<double>("angle", angle));
}

py::object rotationBetween(const Object& start, const Object& end) {
    return forEach<Matrix3>(
        1,
        [](const Vector3& a, const Vector3& b) {
            return Matrix3::rotationMatrix(UVector3(a), UVector3(b));
        },
        Input<Vector3>("start", start), Input<Vector3>("end", end));
}

py::tuple rotationAxisAngle(const Object& matrix) {
    const Input<Matrix3> matrices("matrix", matrix);
    const py::object axes = forEach<UVector3>(
        1, [](const Matrix3& m) { return m.getRotationAxis(); }, matrices);
    const py::object angles = forEach<double>(
        1, [](const Matrix3& m) { return m.getRotationAngle(nullptr); }, matrices);
    return py::make_tuple(axes, angles);
}

py::object rigidMatrix(const Object& p0, const Object& d0, const Object& p1, const Object& d1) {
    return forEach<Matrix>(
        1,
        [](const Vector3& q0, const Vector3& e0, const Vector3& q1, const Vector3& e1) {
            return Matrix::rigidTransform(q0, e0, q1, e1);
        },
        Input<Vector3>("start", p0), Input<Vector3>("start_direction", d0),
        Input<Vector3>("end", p1), Input<Vector3>("end_direction", d1));
}

py::object inverse3(const Object& matrix) {
    return forEach<Matrix3>(
        1, [](const Matrix3& m) { return m.inverse(); }, Input<Matrix3>("matrix", matrix));
}

py::object inverse4(const Object& matrix) {
    return forEach<Matrix>(
        1, [](const Matrix& m) { return m.inverse(); }, Input<Matrix>("matrix", matrix));
}

py::object interpolateMatrices(const Object& a, const Object& b, const Object& t, int workers) {
    return forEach<Matrix>(
        workers,
        [](const Matrix& x, const Matrix& y, double s) { return Matrix::interpolate(x, y, s); },
        Input<Matrix>("a", a), Input<Matrix>("b", b), Input<double>("t", t));
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
