// Arguments whose leading axes go together as NumPy's broadcasting has it.
#pragma once

#include <cstddef>
#include <vector>

#include "Numbers.h"
#include "geomKit/transforms/BoneTransform.h"
#include "geomKit/transforms/Matrix.h"
#include "geomKit/transforms/Transform.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "inPieces.h"

namespace geomkitPython {

/// The shape that leading axes of one argument and of those before it have together.
Shape commonShape(const Shape& before, const Shape& leading, const char* name);

/// Where the items of an argument are that is repeated along some axes: item i of all is item at(i)
/// of its own.
class Repeats {
public:
    Repeats() = default;
    Repeats(const Shape& own, const Shape& common);

    bool isEmpty() const { return axes_.empty(); }
    std::size_t at(std::size_t i) const {
        std::size_t index = 0;
        for (const Axis& axis : axes_)
            index += i / axis.below % axis.length * axis.step;
        return index;
    }

private:
    struct Axis {
        std::size_t below;  ///< items of all that one step along the axis skips
        std::size_t length;
        std::size_t step;  ///< items of its own that one step skips
    };
    std::vector<Axis> axes_;
};

/// The axes of one item: those of a number, of a vector, of a matrix.
template <typename Item>
Shape itemShape();
template <>
Shape itemShape<double>();
template <>
Shape itemShape<geomKit::Vector3>();
template <>
Shape itemShape<geomKit::UVector3>();
template <>
Shape itemShape<geomKit::Matrix3>();
template <>
Shape itemShape<geomKit::Matrix>();
template <>
Shape itemShape<geomKit::BoneTransform>();
template <>
Shape itemShape<geomKit::Transform>();

/// An argument with one item for each answer, or one for all.
template <typename Item>
class Operand {
public:
    Operand(const py::object& argument, const char* name)
        : name_(name), numbers_(argument, name, iWanted()) {}

    const Shape& leading() const { return numbers_.leading(); }
    const char* name() const { return name_; }
    bool isOne() const { return numbers_.leading().empty(); }
    bool isOneForEach() const { return step_ == 1 && repeats_.isEmpty(); }
    const Item* first() const { return numbers_.template as<Item>(); }

    void fit(const Shape& common) {
        step_ = isOne() ? 0 : 1;
        if (!isOne() && leading() != common) repeats_ = Repeats(leading(), common);
    }
    const Item& operator[](std::size_t i) const {
        return first()[repeats_.isEmpty() ? step_ * i : repeats_.at(i)];
    }

private:
    static Shape iWanted() {
        Shape wanted = itemShape<Item>();
        wanted.insert(wanted.begin(), kAnyShape);
        return wanted;
    }

    const char* name_;
    Numbers<double> numbers_;
    std::size_t step_ = 1;
    Repeats repeats_;
};

/// Brings all operands to the shape that they have together, and returns it.
template <typename... Item>
Shape fitTogether(Operand<Item>&... operands) {
    Shape common;
    ((common = commonShape(common, operands.leading(), operands.name())), ...);
    (operands.fit(common), ...);
    return common;
}

/// An array for answers of type `Out`.
template <typename Out>
py::array_t<double> answersOf(Shape shape) {
    const Shape item = itemShape<Out>();
    shape.insert(shape.end(), item.begin(), item.end());
    return py::array_t<double>(shape);
}

inline std::size_t countOf(const Shape& shape) {
    std::size_t count = 1;
    for (const py::ssize_t length : shape)
        count *= static_cast<std::size_t>(length);
    return count;
}

/// The loops of `forEach`, from answer `first` to `last`: for items one by one, for a first operand
/// of one item, which stays in registers, and for any.
template <typename Out, typename Function, typename... Item>
void loopOverItems(Out* out, std::size_t first, std::size_t last, const Function& function,
                   const Item*... items) {
    for (std::size_t i = first; i < last; ++i)
        out[i] = function(items[i]...);
}
template <typename Out, typename Function, typename One, typename... Item>
void loopWithOne(Out* out, std::size_t first, std::size_t last, const Function& function,
                 const One one, const Item*... items) {
    for (std::size_t i = first; i < last; ++i)
        out[i] = function(one, items[i]...);
}
template <typename Out, typename Function, typename Head, typename... Tail>
void loop(Out* out, std::size_t first, std::size_t last, const Function& function,
          const Operand<Head>& head, const Operand<Tail>&... tail) {
    const bool plain = (tail.isOneForEach() && ...);
    if (plain && head.isOneForEach()) {
        loopOverItems(out, first, last, function, head.first(), tail.first()...);
    } else if (plain && head.isOne()) {
        loopWithOne(out, first, last, function, *head.first(), tail.first()...);
    } else {
        for (std::size_t i = first; i < last; ++i)
            out[i] = function(head[i], tail[i]...);
    }
}

/// function(a, b, ...) of the items of all operands that go together.
template <typename Out, typename Function, typename... Item>
py::array_t<double> forEach(int workers, const Function& function, Operand<Item>... operands) {
    /// Some hundred microseconds of work at the most.
    constexpr std::size_t kPiece = 1024;
    const std::size_t threads = workerCount(workers);
    const Shape shape = fitTogether(operands...);
    py::array_t<double> answers = answersOf<Out>(shape);
    Out* const out = itemsOf<Out>(answers);
    inPieces(countOf(shape), kPiece, threads, [&](std::size_t first, std::size_t last) {
        loop(out, first, last, function, operands...);
    });
    return answers;
}

}  // namespace geomkitPython
