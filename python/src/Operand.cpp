#include "Operand.h"

#include <string>

namespace geomkitPython {

Shape commonShape(const Shape& before, const Shape& leading, const char* name) {
    Shape common = before.size() >= leading.size() ? before : leading;
    const Shape& other = before.size() >= leading.size() ? leading : before;
    for (std::size_t i = 1; i <= other.size(); ++i) {
        py::ssize_t& length = common[common.size() - i];
        const py::ssize_t with = other[other.size() - i];
        if (length == 1) length = with;
        if (with == 1 || with == length) continue;
        throw py::value_error(std::string(name) + ": leading shape " + shapeText(leading) +
                              ", wanted one that goes with " + shapeText(before));
    }
    return common;
}

Repeats::Repeats(const Shape& own, const Shape& common) {
    std::size_t below = 1;
    std::size_t step = 1;
    for (std::size_t i = 1; i <= own.size(); ++i) {
        const auto length = static_cast<std::size_t>(own[own.size() - i]);
        if (length > 1) axes_.push_back({below, length, step});
        below *= static_cast<std::size_t>(common[common.size() - i]);
        step *= length;
    }
    // One item along every axis: the first, always.
    if (axes_.empty()) axes_.push_back({1, 1, 0});
}

template <>
Shape itemShape<double>() {
    return {};
}
template <>
Shape itemShape<geomKit::Vector3>() {
    return {3};
}
template <>
Shape itemShape<geomKit::UVector3>() {
    return {3};
}
template <>
Shape itemShape<geomKit::Matrix3>() {
    return {3, 3};
}
template <>
Shape itemShape<geomKit::Matrix>() {
    return {4, 4};
}
template <>
Shape itemShape<geomKit::BoneTransform>() {
    return {12};
}
template <>
Shape itemShape<geomKit::Transform>() {
    return {13};
}

}  // namespace geomkitPython
