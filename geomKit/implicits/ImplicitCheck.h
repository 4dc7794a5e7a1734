/// @file
/// `ImplicitCheck`, whether samples determine an implicit field.
#pragma once

#include <cstddef>
#include <string>

#include "geomKit/export.h"

namespace geomKit {

/// What is wrong with the samples of an `Implicit`; converts to true when nothing is.
struct ImplicitCheck {
    /// In the order in which they are looked for.
    enum class Fault {
        None,
        /// The centre of sample `index` is infinite or NaN.
        NotFinite,
        /// Samples `index` and `other`, index < other, have the same centre. Of several pairs the
        /// one with the least `other`.
        RepeatedSample,
        /// There are `index` samples, and a field takes four.
        TooFewSamples,
        /// The fit met a pivot of exactly 0: the samples lie in a plane, for example.
        ZeroPivot,
        /// A weight or a coefficient is infinite or NaN: a value was, or distances overflowed.
        FieldNotFinite,
    };

    Fault fault = Fault::None;
    std::size_t index = 0;
    std::size_t other = 0;

    [[nodiscard]] explicit operator bool() const noexcept { return fault == Fault::None; }
    /// What a user can be told, such as "samples 3 and 7 have the same centre".
    [[nodiscard]] GEOMKIT_API std::string text() const;
};

}  // namespace geomKit
