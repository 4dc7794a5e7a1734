#include "geomKit/tags/FactoryByName.h"
#include "geomKit/tags/FactoryByTypeID.h"

namespace geomKit {

template class NamedObject<FactoryByName, FactoryByName*>;
template class NamedObject<FactoryByTypeID, FactoryByTypeID*>;

FactoryByName::FactoryByName(const std::string& className) : NamedObject(className) {}

FactoryByName::~FactoryByName() = default;

FactoryByTypeID::FactoryByTypeID(const std::type_info& type, const std::string& className)
    : NamedObject(type.name()), className_(className) {}

FactoryByTypeID::~FactoryByTypeID() = default;

}  // namespace geomKit
