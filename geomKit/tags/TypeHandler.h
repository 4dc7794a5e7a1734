/// @file
/// `TypeHandler`, how the values of a type are written and read.
#pragma once

namespace geomKit {

class InTag;
class OutTag;

/// The saved form of values of type `T`. A handler writes the whole of the tag that it is given,
/// and reads a tag to its end. Handlers have no state that changes.
template <typename T>
class TypeHandler {
public:
    using Value = T;

    virtual ~TypeHandler() = default;
    virtual void save(const T& value, OutTag& tag) const = 0;
    virtual void load(T& value, InTag& tag) const = 0;
};

}  // namespace geomKit
