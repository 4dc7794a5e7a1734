/// @file
/// `MeshFunction2DCheck`, whether the data of a mesh function hold together.
#pragma once

#include <cstddef>
#include <string>

#include "geomKit/export.h"

namespace geomKit {

/// What is wrong with the data of a mesh function; converts to true when nothing is.
struct MeshFunction2DCheck {
    /// In the order in which they are looked for.
    enum class Fault {
        None,
        /// `values` is not as long as `params`; `index` is the length of the shorter one.
        LengthsDiffer,
        /// The length of `facets` is no multiple of 3; `index` is where the last, partial triple
        /// starts.
        PartialTriple,
        /// `facets[index]` is not a vertex.
        IndexOutOfRange,
        /// A component of `params[index]` is infinite or NaN.
        ParamNotFinite,
        /// A component of `values[index]` is infinite or NaN.
        ValueNotFinite,
        /// `count` facets have a determinant, twice their area, strictly below 1e-8 in absolute
        /// value and therefore answer no query; facet `index` is the first of them.
        TooSmall,
    };

    Fault fault = Fault::None;
    std::size_t index = 0;
    /// How many facets are too small; 0 for other faults, of which only the first is looked for.
    std::size_t count = 0;

    [[nodiscard]] explicit operator bool() const noexcept { return fault == Fault::None; }
    /// What a user can be told, such as "facets[7] is not the index of a vertex".
    [[nodiscard]] GEOMKIT_API std::string text() const;
};

}  // namespace geomKit
