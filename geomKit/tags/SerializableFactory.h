/// @file
/// `SerializableFactory`, registers a class with the framework.
#pragma once

#include <memory>
#include <string>
#include <typeinfo>

#include "geomKit/tags/FactoryByName.h"
#include "geomKit/tags/FactoryByTypeID.h"
#include "geomKit/tags/Serializable.h"

namespace geomKit {

/// Makes new objects of the class `T`, and is registered by class name and by type as long as it
/// lives. Define one in static storage beside the class: the class is then registered when its
/// program or library is loaded. For a class without a default constructor, specialise `create`.
template <typename T>
class SerializableFactory final : public FactoryByName, public FactoryByTypeID {
public:
    explicit SerializableFactory(const std::string& className);
    ~SerializableFactory();

    [[nodiscard]] std::unique_ptr<Serializable> create() const override;
};

template <typename T>
SerializableFactory<T>::SerializableFactory(const std::string& className)
    : FactoryByName(className), FactoryByTypeID(typeid(T), className) {
    FactoryByName::_reg.add(this);
    FactoryByTypeID::_reg.add(this);
}

template <typename T>
SerializableFactory<T>::~SerializableFactory() {
    FactoryByTypeID::_reg.remove(this);
    FactoryByName::_reg.remove(this);
}

template <typename T>
std::unique_ptr<Serializable> SerializableFactory<T>::create() const {
    return std::make_unique<T>();
}

}  // namespace geomKit
