// Arrays of numbers that Python hands over.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

namespace geomkitPython {

namespace py = pybind11;

using Shape = std::vector<py::ssize_t>;

/// In a shape that is wanted: any length of an axis, and any number of leading axes.
constexpr py::ssize_t kAnyLength = -1;
constexpr py::ssize_t kAnyShape = -2;
/// As Python writes it: "(5, 3)", "(..., 2)", "(n,)".
std::string shapeText(const Shape& shape);

/// An argument as an array of `T` in C order. Contiguous arrays of `T` are not copied. Where the
/// argument is anything else than an array of the shape that is wanted, the error names it.
template <typename T>
class Numbers {
public:
    /// `wanted` may begin with `kAnyShape`.
    Numbers(const py::handle& argument, const char* name, const Shape& wanted);

    /// How many items there are, each of the lengths that are wanted by number.
    std::size_t count() const { return count_; }
    py::ssize_t length(int axis) const { return array_.shape(axis); }
    const T* data() const { return array_.data(); }
    const py::array& array() const { return array_; }
    /// As vectors of the library, which are numbers side by side.
    template <typename Vector>
    const Vector* as() const {
        static_assert(sizeof(Vector) % sizeof(T) == 0);
        return reinterpret_cast<const Vector*>(array_.data());
    }
    /// The lengths that stand for `kAnyShape`.
    const Shape& leading() const { return leading_; }
    /// The leading lengths followed by others.
    Shape shapeWith(std::initializer_list<py::ssize_t> trailing) const;

private:
    static constexpr int kFlags =
        py::array::c_style | py::array::forcecast | py::detail::npy_api::NPY_ARRAY_ALIGNED_;

    using Array = py::array_t<T, kFlags>;

    Array array_;
    Shape leading_;
    std::size_t count_ = 0;
};

/// The items of an array for answers, as vectors of the library.
template <typename Vector, typename T>
Vector* itemsOf(py::array_t<T>& array) {
    static_assert(sizeof(Vector) % sizeof(T) == 0);
    return reinterpret_cast<Vector*>(array.mutable_data());
}

/// A view of numbers that `owner` keeps alive. Python cannot write through it.
template <typename T>
py::array_t<T> readOnlyView(const Shape& shape, const T* data, const py::handle& owner) {
    py::array_t<T> view(shape, data, owner);
    view.attr("setflags")(py::arg("write") = false);
    return view;
}

}  // namespace geomkitPython
