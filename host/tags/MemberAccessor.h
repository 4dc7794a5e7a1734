/// @file
/// `MemberAccessor`, the way from an object to one of its members.
#pragma once

class Serializable;

/// Finds a member of type `T` in objects of class `Class`. The objects are those of the class that
/// the description was made for: the type is not checked.
template <typename Class, typename T>
class MemberAccessor {
public:
    explicit MemberAccessor(T Class::*member) : member_(member) {}

    const T& operator()(const Serializable& object) const {
        return static_cast<const Class&>(object).*member_;
    }
    T& operator()(Serializable& object) const { return static_cast<Class&>(object).*member_; }

private:
    T Class::*member_;
};
