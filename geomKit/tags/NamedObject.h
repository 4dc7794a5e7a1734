/// @file
/// `NamedObject`, objects that are found by name throughout the process.
#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace geomKit {

/// Base of the class `T` whose objects can be registered and found by name.
///
/// The registry is a linked list through the objects themselves. It needs no memory and no
/// initialiser, so objects in static storage may register themselves in any order. Safe from any
/// number of threads. A registered object must be removed before it dies.
template <typename T, typename Pointer>
class NamedObject {
public:
    class Registry {
    public:
        /// Of several objects of one name, the one that was added last is found.
        void add(Pointer object) noexcept;
        /// Nothing happens if the object is not there.
        void remove(Pointer object) noexcept;
        /// Null if there is none.
        [[nodiscard]] Pointer find(std::string_view name) const noexcept;

    private:
        mutable std::mutex mutex_;  // one that is not locked twice by a thread cannot fail
        Pointer first_ = nullptr;
    };

    static Registry _reg;

    NamedObject(const NamedObject&) = delete;
    NamedObject& operator=(const NamedObject&) = delete;

    [[nodiscard]] const std::string& name() const noexcept { return name_; }

protected:
    explicit NamedObject(std::string name) : name_(std::move(name)) {}
    ~NamedObject() = default;

private:
    std::string name_;
    Pointer next_ = nullptr;
};

template <typename T, typename Pointer>
typename NamedObject<T, Pointer>::Registry NamedObject<T, Pointer>::_reg;

template <typename T, typename Pointer>
void NamedObject<T, Pointer>::Registry::add(Pointer object) noexcept {
    const std::lock_guard<std::mutex> lock(mutex_);
    object->NamedObject::next_ = first_;
    first_ = object;
}

template <typename T, typename Pointer>
void NamedObject<T, Pointer>::Registry::remove(Pointer object) noexcept {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (Pointer* link = &first_; *link != nullptr; link = &(*link)->NamedObject::next_) {
        if (*link == object) {
            *link = object->NamedObject::next_;
            return;
        }
    }
}

template <typename T, typename Pointer>
Pointer NamedObject<T, Pointer>::Registry::find(std::string_view name) const noexcept {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (Pointer object = first_; object != nullptr; object = object->NamedObject::next_) {
        if (object->NamedObject::name() == name) return object;
    }
    return nullptr;
}

}  // namespace geomKit
