/// @file
/// `MemberField`, a field that is a member of the object.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "host/tags/Field.h"
#include "host/tags/InTag.h"
#include "host/tags/MemberAccessor.h"
#include "host/tags/OutTag.h"
#include "host/tags/TypeHandler.h"

/// The member of type `T` of class `Class`, in the form that its type handler gives it.
template <typename Class, typename T>
class MemberField final : public Field {
public:
    template <typename Handler>
    MemberField(std::string name, MemberAccessor<Class, T> accessor, Handler handler)
        : Field(std::move(name)),
          accessor_(accessor),
          handler_(std::make_unique<Handler>(std::move(handler))) {}

    void save(const Serializable& object, OutTag& parent) const override {
        OutTag tag(parent, name());
        handler_->save(accessor_(object), tag);
    }
    void load(Serializable& object, InTag& tag) const override {
        handler_->load(accessor_(object), tag);
    }

private:
    MemberAccessor<Class, T> accessor_;
    std::unique_ptr<const TypeHandler<T>> handler_;
};
