/// @file
/// `ClassDescBase` and `ClassDesc`, the description of a class by its fields.
#pragma once

#include <string>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "geomKit/tags/Field.h"
#include "geomKit/tags/export.h"

namespace geomKit {

/// An ordered list of fields.
class GEOMKIT_TAGS_API ClassDescBase {
public:
    /// Appends a field. Names must differ.
    void add(boost::intrusive_ptr<Field> field);

    [[nodiscard]] const std::vector<boost::intrusive_ptr<Field>>& fields() const noexcept {
        return fields_;
    }

private:
    std::vector<boost::intrusive_ptr<Field>> fields_;
};

/// The fields of a class, and the name under which the class appears in documents. Copies share
/// their fields.
class GEOMKIT_TAGS_API ClassDesc : public ClassDescBase {
public:
    explicit ClassDesc(std::string className);

    [[nodiscard]] const std::string& className() const noexcept { return className_; }

private:
    std::string className_;
};

}  // namespace geomKit
