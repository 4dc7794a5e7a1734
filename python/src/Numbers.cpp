#include "Numbers.h"

#include <cstdint>
#include <string_view>
#include <type_traits>

namespace geomkitPython {

namespace {

/// The kinds of NumPy's types that become a `T`, and what to call them.
struct Kinds {
    const char* letters;
    const char* name;
};

template <typename T>
constexpr Kinds kKindsOf =
    std::is_floating_point_v<T> ? Kinds{"fiub", "real numbers"} : Kinds{"iu", "integers"};
template <>
constexpr Kinds kKindsOf<bool> = {"b", "truth values"};

/// Whether an object is an array of `T` that can be read as it is.
template <typename T>
bool _isReady(const py::handle& object, int flags) {
    if (!py::isinstance<py::array>(object)) return false;
    const py::dtype type = py::reinterpret_borrow<py::array>(object).dtype();
    return type.num() == py::detail::npy_format_descriptor<T>::value &&
           (type.byteorder() == '=' || type.byteorder() == '|') &&
           py::detail::check_flags(object.ptr(), flags);
}

/// NumPy takes several times as long for a number of Python's.
py::array _arrayOf(const py::handle& object) {
    if (!PyFloat_CheckExact(object.ptr())) return py::array::ensure(object);
    py::array number = py::array_t<double>(Shape{});
    *static_cast<double*>(number.mutable_data()) = PyFloat_AS_DOUBLE(object.ptr());
    return number;
}

/// Whether the last lengths of a shape are those wanted.
bool _endsWith(const Shape& shape, const Shape& wanted, std::size_t trailing) {
    if (shape.size() < trailing) return false;
    for (std::size_t i = 1; i <= trailing; ++i) {
        const py::ssize_t length = wanted[wanted.size() - i];
        if (length != kAnyLength && length != shape[shape.size() - i]) return false;
    }
    return true;
}

}  // namespace

std::string shapeText(const Shape& shape) {
    std::string text;
    const char* anyLength = "n";
    for (const py::ssize_t length : shape) {
        if (!text.empty()) text += ", ";
        text += length == kAnyShape    ? "..."
                : length == kAnyLength ? anyLength
                                       : std::to_string(length);
        if (length == kAnyLength) anyLength = "k";
    }
    return "(" + text + (shape.size() == 1 ? ",)" : ")");
}

template <typename T>
Numbers<T>::Numbers(const py::handle& argument, const char* name, const Shape& wanted)
    : array_(py::reinterpret_steal<Array>(py::handle())) {
    const bool isReady = _isReady<T>(argument, kFlags & ~py::array::forcecast);
    const py::array given =
        isReady ? py::reinterpret_borrow<py::array>(argument) : _arrayOf(argument);
    if (!given) throw py::type_error(std::string(name) + ": no array can be made of it");
    const Shape shape(given.shape(), given.shape() + given.ndim());
    const bool anyShape = !wanted.empty() && wanted[0] == kAnyShape;
    const std::size_t trailing = wanted.size() - (anyShape ? 1 : 0);
    if (!_endsWith(shape, wanted, trailing) || (!anyShape && shape.size() != trailing)) {
        throw py::value_error(std::string(name) + ": shape " + shapeText(shape) + ", wanted " +
                              shapeText(wanted));
    }
    // An empty list gets a type of NumPy's choice, which says nothing.
    const std::string_view kinds = kKindsOf<T>.letters;
    if (given.size() > 0 && kinds.find(given.dtype().kind()) == std::string_view::npos) {
        throw py::type_error(std::string(name) + ": dtype " + std::string(py::str(given.dtype())) +
                             ", wanted " + kKindsOf<T>.name);
    }
    array_ = isReady ? py::reinterpret_borrow<Array>(given) : Array::ensure(given);
    if (!array_) throw py::error_already_set();
    leading_.assign(shape.begin(), shape.end() - static_cast<std::ptrdiff_t>(trailing));
    py::ssize_t numbersPerItem = 1;
    for (const py::ssize_t length : wanted)
        numbersPerItem *= length > 0 ? length : 1;
    count_ = static_cast<std::size_t>(array_.size() / numbersPerItem);
}

template <typename T>
Shape Numbers<T>::shapeWith(std::initializer_list<py::ssize_t> trailing) const {
    Shape shape = leading_;
    shape.insert(shape.end(), trailing);
    return shape;
}

template class Numbers<double>;
template class Numbers<float>;
template class Numbers<std::int64_t>;
template class Numbers<bool>;

}  // namespace geomkitPython
