/// @file
/// `MemberAccessor`, the way from an object to one of its members.
#pragma once

namespace geomKit {

class Serializable;

/// Finds the member of type `T` in objects of class `Class`. That an object is of this class is not
/// checked: the description of a class is only used for its own objects.
template <typename Class, typename T>
class MemberAccessor {
public:
    explicit MemberAccessor(T Class::*member) noexcept : member_(member) {}

    [[nodiscard]] const T& operator()(const Serializable& object) const noexcept {
        return static_cast<const Class&>(object).*member_;
    }
    [[nodiscard]] T& operator()(Serializable& object) const noexcept {
        return static_cast<Class&>(object).*member_;
    }

private:
    T Class::*member_;
};

}  // namespace geomKit
