/// @file
/// `SimpleTypeHandler`, the handler of types without parts that a document would name.
#pragma once

#include <type_traits>

#include "host/tags/InTag.h"
#include "host/tags/OutTag.h"
#include "host/tags/TypeHandler.h"

/// Values as the text of their tag: `int`, `float` and `bool`. Other types specialise it.
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
