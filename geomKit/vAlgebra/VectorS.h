/// @file
/// The saved form of `Vector3`. The S in the file's name stands for serialization.
#pragma once

#include <array>
#include <string>

#include "geomKit/export.h"
#include "geomKit/tags/SimpleTypeHandler.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// A vector as one empty tag with the attributes "x", "y" and "z".
///
/// The numbers have 15 significant digits: what loads back is equal to so many, not bit for bit.
/// Infinities and NaN are written ("inf", "-inf", "nan", "-nan") but are malformed numbers to the
/// reader, which reports them and stores 0. A missing attribute is reported and leaves its
/// component as it was.
template <>
class GEOMKIT_API SimpleTypeHandler<Vector3> final : public TypeHandler<Vector3> {
public:
    static const std::array<std::string, 3> _attrs;  // NOLINT(readability-identifier-naming)

    void save(const Vector3& value, OutTag& tag) const override;
    void load(Vector3& value, InTag& tag) const override;
};

}  // namespace geomKit
