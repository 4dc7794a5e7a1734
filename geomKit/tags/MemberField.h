/// @file
/// `MemberField`, a field that is a member of the object.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "geomKit/tags/Field.h"
#include "geomKit/tags/InTag.h"
#include "geomKit/tags/MemberAccessor.h"
#include "geomKit/tags/OutTag.h"
#include "geomKit/tags/TypeHandler.h"

namespace geomKit {

/// The member of type `T` of class `Class`. A type handler writes and reads its tag.
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

}  // namespace geomKit
