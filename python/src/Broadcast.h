// How arrays of several shapes are stepped through together, by NumPy's rules.
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <vector>

#include "Numbers.h"

namespace geomkitPython {

/// The leading shape that those of some arguments broadcast to, and where the arguments' items for
/// each item of it are.
class Broadcast {
public:
    static constexpr std::size_t kMostArguments = 8;
    /// A number for each argument, in items of it.
    using Steps = std::array<std::ptrdiff_t, kMostArguments>;

    struct Argument {
        const char* name;
        const Shape* leading;
    };
    /// Items of the result that follow each other, for which each argument has one step.
    struct Run {
        Steps first;
        Steps step;
        std::size_t count;
    };

    /// Where the shapes do not go together, the error names the first argument at fault.
    explicit Broadcast(std::initializer_list<Argument> arguments);

    const Shape& shape() const { return shape_; }
    /// How many items the result has. Only for a shape of which there is an array.
    std::size_t count() const;
    /// The longest run that begins with item `item` of the result.
    Run runFrom(std::size_t item) const;

private:
    struct Axis {
        std::size_t length;
        Steps steps;
    };

    void iAddAxis(const Axis& outer, std::size_t arguments);

    Shape shape_;
    /// From the last to the first. Those through which all arguments step evenly are merged.
    std::vector<Axis> axes_;
};

}  // namespace geomkitPython
