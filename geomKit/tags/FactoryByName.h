/// @file
/// `FactoryByName`, makes the object when its class name is met in a document.
#pragma once

#include <memory>
#include <string>

#include "geomKit/tags/NamedObject.h"
#include "geomKit/tags/Serializable.h"
#include "geomKit/tags/export.h"

namespace geomKit {

class GEOMKIT_TAGS_API FactoryByName;
extern template class GEOMKIT_TAGS_API NamedObject<FactoryByName, FactoryByName*>;

/// A factory that is found by the name of its class.
class GEOMKIT_TAGS_API FactoryByName : public NamedObject<FactoryByName, FactoryByName*> {
public:
    /// A new object, never null.
    [[nodiscard]] virtual std::unique_ptr<Serializable> create() const = 0;

protected:
    explicit FactoryByName(const std::string& className);
    ~FactoryByName();
};

}  // namespace geomKit
