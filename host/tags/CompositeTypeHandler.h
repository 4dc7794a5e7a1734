/// @file
/// `CompositeTypeHandler`, the handler of members that are serializable objects themselves.
#pragma once

#include <type_traits>

#include "host/tags/Serializable.h"
#include "host/tags/TypeHandler.h"

/// An object within an object, as the child tags of its own fields. Its own `load` is called, so
/// that its derived data are rebuilt.
template <typename T>
class CompositeTypeHandler final : public TypeHandler<T> {
public:
    static_assert(std::is_base_of_v<Serializable, T>, "the member must describe its own fields");

    void save(const T& value, OutTag& tag) const override { value.save(tag); }
    void load(T& value, InTag& tag) const override { value.load(tag, nullptr); }
};
