#include "Broadcast.h"

#include <algorithm>
#include <string>

namespace geomkitPython {

namespace {

/// The length of an axis, counted from the last one.
py::ssize_t _length(const Shape& shape, std::size_t fromLast) {
    return fromLast < shape.size() ? shape[shape.size() - 1 - fromLast] : 1;
}

/// Widens `shape` by one more; false when the two do not go together.
bool _widen(Shape& shape, const Shape& other) {
    if (other.size() > shape.size()) shape.insert(shape.begin(), other.size() - shape.size(), 1);
    for (std::size_t i = 0; i < other.size(); ++i) {
        py::ssize_t& length = shape[shape.size() - 1 - i];
        const py::ssize_t theirs = _length(other, i);
        if (length == 1) length = theirs;
        if (theirs != 1 && theirs != length) return false;
    }
    return true;
}

}  // namespace

Broadcast::Broadcast(std::initializer_list<Argument> arguments) {
    for (const Argument& argument : arguments) {
        const Shape before = shape_;
        if (_widen(shape_, *argument.leading)) continue;
        throw py::value_error(std::string(argument.name) + ": leading shape " +
                              shapeText(*argument.leading) + ", wanted one that goes with " +
                              shapeText(before));
    }
    Steps counts;
    counts.fill(1);
    for (std::size_t i = 0; i < shape_.size(); ++i) {
        Axis axis = {static_cast<std::size_t>(_length(shape_, i)), {}};
        std::size_t k = 0;
        for (const Argument& argument : arguments) {
            const py::ssize_t length = _length(*argument.leading, i);
            axis.steps[k] = length != 1 ? counts[k] : 0;
            counts[k++] *= length;
        }
        if (axis.length != 1) iAddAxis(axis, arguments.size());
    }
}

void Broadcast::iAddAxis(const Axis& outer, std::size_t arguments) {
    if (!axes_.empty()) {
        Axis& inner = axes_.back();
        const auto length = static_cast<std::ptrdiff_t>(inner.length);
        bool even = true;
        for (std::size_t k = 0; k < arguments; ++k)
            even = even && outer.steps[k] == inner.steps[k] * length;
        if (even) {
            inner.length *= outer.length;
            return;
        }
    }
    axes_.push_back(outer);
}

std::size_t Broadcast::count() const {
    std::size_t count = 1;
    for (const Axis& axis : axes_)
        count *= axis.length;
    return count;
}

Broadcast::Run Broadcast::runFrom(std::size_t item) const {
    Run run = {{}, {}, 1};
    if (axes_.empty()) return run;
    run.step = axes_[0].steps;
    run.count = axes_[0].length - item % axes_[0].length;
    for (const Axis& axis : axes_) {
        const auto index = static_cast<std::ptrdiff_t>(item % axis.length);
        item /= axis.length;
        for (std::size_t k = 0; k < kMostArguments; ++k)
            run.first[k] += index * axis.steps[k];
    }
    return run;
}

}  // namespace geomkitPython
