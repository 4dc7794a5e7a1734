/// @file
/// `SimpleTypeHandler`, the handler of values that a single tag holds.
#pragma once

#include <type_traits>

#include "geomKit/tags/InTag.h"
#include "geomKit/tags/OutTag.h"
#include "geomKit/tags/TypeHandler.h"

namespace geomKit {

/// A value as the text of its tag, for `int`, `float` and `bool`. For another type, specialise it;
/// vectors, for example, are attributes of their tag.
template <typename T>
class SimpleTypeHandler final : public TypeHandler<T> {
    static_assert(std::is_same_v<T, int> || std::is_same_v<T, float> || std::is_same_v<T, bool>,
                  "specialise SimpleTypeHandler for this type");

public:
    void save(const T& value, OutTag& tag) const override;
    void load(T& value, InTag& tag) const override;
};

template <typename T>
void SimpleTypeHandler<T>::save(const T& value, OutTag& tag) const {
    tag.writeOpenTag(false);
    tag.writeValue(value);
    tag.writeCloseTag(false);
}

template <typename T>
void SimpleTypeHandler<T>::load(T& value, InTag& tag) const {
    tag.readValue(value);
}

}  // namespace geomKit
