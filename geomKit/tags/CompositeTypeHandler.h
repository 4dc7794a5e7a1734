/// @file
/// `CompositeTypeHandler`, the handler of members that are serializable objects themselves.
#pragma once

#include <type_traits>

#include "geomKit/tags/Serializable.h"
#include "geomKit/tags/TypeHandler.h"

namespace geomKit {

/// A member that is an object itself: its tag holds the tags of its own fields. Its own `load` is
/// called, so that its derived data are rebuilt.
template <typename T>
class CompositeTypeHandler final : public TypeHandler<T> {
public:
    static_assert(std::is_base_of_v<Serializable, T>, "the member must describe its own fields");

    void save(const T& value, OutTag& tag) const override { value.save(tag); }
    void load(T& value, InTag& tag) const override { value.load(tag, nullptr); }
};

}  // namespace geomKit
