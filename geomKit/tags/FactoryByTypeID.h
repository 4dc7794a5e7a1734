/// @file
/// `FactoryByTypeID`, tells the class name of an object that is to be saved.
#pragma once

#include <memory>
#include <string>
#include <typeinfo>

#include "geomKit/tags/NamedObject.h"
#include "geomKit/tags/Serializable.h"
#include "geomKit/tags/export.h"

namespace geomKit {

class GEOMKIT_TAGS_API FactoryByTypeID;
extern template class GEOMKIT_TAGS_API NamedObject<FactoryByTypeID, FactoryByTypeID*>;

/// A factory that is found by the type of the objects that it makes: its name in the registry is
/// `std::type_info::name()` of their dynamic type.
class GEOMKIT_TAGS_API FactoryByTypeID : public NamedObject<FactoryByTypeID, FactoryByTypeID*> {
public:
    /// A new object, never null.
    [[nodiscard]] virtual std::unique_ptr<Serializable> create() const = 0;

    /// The name of the root tag of their documents.
    [[nodiscard]] const std::string& className() const noexcept { return className_; }

protected:
    FactoryByTypeID(const std::type_info& type, const std::string& className);
    ~FactoryByTypeID();

private:
    std::string className_;
};

}  // namespace geomKit
