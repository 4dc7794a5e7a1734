/// @file
/// `MeshFunction2DCheck`, whether the data of a mesh function hold together.
#pragma once

#include <cstddef>
#include <string>

#include "geomKit/export.h"

namespace geomKit {

/// The first fault of a mesh function's data, or none.
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
    };

    Fault fault = Fault::None;
    std::size_t index = 0;

    bool isValid() const { return fault == Fault::None; }
    /// What a user can be told, such as "facets[7] is not the index of a vertex".
    GEOMKIT_API std::string text() const;
};

}  // namespace geomKit
