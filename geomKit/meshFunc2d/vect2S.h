/// @file
/// The saved form of `ktNM::vect2<double>`. The S in the file's name stands for serialization.
#pragma once

#include <array>
#include <string>

#include "geomKit/export.h"
#include "geomKit/meshFunc2d/vect2.h"
#include "geomKit/tags/SimpleTypeHandler.h"

namespace geomKit {

/// A vector as one empty tag with the attributes "u" and "v", under the rules of
/// `SimpleTypeHandler<Vector3>`.
template <>
class GEOMKIT_API SimpleTypeHandler<ktNM::vect2<double>> final
    : public TypeHandler<ktNM::vect2<double>> {
public:
    static const std::array<std::string, 2> _attrs;  // NOLINT(readability-identifier-naming)

    void save(const ktNM::vect2<double>& value, OutTag& tag) const override;
    void load(ktNM::vect2<double>& value, InTag& tag) const override;
};

}  // namespace geomKit
