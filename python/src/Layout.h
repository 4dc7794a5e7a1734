// How the library's types lie in NumPy's arrays.
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

#include "Numbers.h"
#include "geomKit/meshFunc2d/vect2.h"
#include "geomKit/transforms/BoneTransform.h"
#include "geomKit/transforms/Matrix.h"
#include "geomKit/transforms/Transform.h"
#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomkitPython {

/// The numbers of a `T` one after the other, and the lengths of the axes that they fill.
template <typename T>
struct Layout {
    static_assert(std::is_arithmetic_v<T>);
    using Number = T;
    static Shape lengths() { return {}; }
};

template <>
struct Layout<ktNM::vect2<double>> {
    using Number = double;
    static Shape lengths() { return {2}; }
};

template <>
struct Layout<geomKit::Vector3> {
    using Number = double;
    static Shape lengths() { return {3}; }
};

template <>
struct Layout<geomKit::Matrix3> {
    using Number = double;
    static Shape lengths() { return {3, 3}; }
};

template <>
struct Layout<geomKit::UVector3> : Layout<geomKit::Vector3> {};

template <>
struct Layout<geomKit::Matrix> {
    using Number = double;
    static Shape lengths() { return {4, 4}; }
};

template <>
struct Layout<geomKit::BoneTransform> {
    using Number = double;
    static Shape lengths() { return {12}; }
};

template <>
struct Layout<geomKit::Transform> {
    using Number = double;
    static Shape lengths() { return {13}; }
};

template <typename T, std::size_t count>
struct Layout<std::array<T, count>> {
    using Number = typename Layout<T>::Number;
    static Shape lengths() {
        Shape lengths = Layout<T>::lengths();
        lengths.insert(lengths.begin(), static_cast<py::ssize_t>(count));
        return lengths;
    }
};

/// An argument of shape (..., lengths of `T`).
template <typename T>
class Input {
public:
    Input(const char* name, const py::handle& argument)
        : name_(name), numbers_(argument, name, iWanted()) {}

    const char* name() const { return name_; }
    const Numbers<typename Layout<T>::Number>& numbers() const { return numbers_; }
    const T* items() const { return numbers_.template as<T>(); }

private:
    static const Shape& iWanted() {
        static const Shape shape = [] {
            Shape lengths = Layout<T>::lengths();
            lengths.insert(lengths.begin(), kAnyShape);
            return lengths;
        }();
        return shape;
    }

    const char* name_;
    Numbers<typename Layout<T>::Number> numbers_;
};

/// A new array for answers, of shape `leading` and then the lengths of `T`.
template <typename T>
class Output {
public:
    explicit Output(Shape leading) : array_(iAppend(leading)), items_(itemsOf<T>(array_)) {}

    const py::array& array() const { return array_; }
    T* items() const { return items_; }

private:
    static Shape& iAppend(Shape& leading) {
        const Shape lengths = Layout<T>::lengths();
        leading.insert(leading.end(), lengths.begin(), lengths.end());
        return leading;
    }

    py::array_t<typename Layout<T>::Number> array_;
    T* items_;
};

}  // namespace geomkitPython
