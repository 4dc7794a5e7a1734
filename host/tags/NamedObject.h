/// @file
/// `NamedObject`, objects that are found by name throughout the process.
#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <utility>

/// Base of the class `T` whose objects can be registered and found by name.
///
/// The registry is a chain through the objects themselves: it needs neither memory nor an
/// initialiser of its own, so objects may be registered before any other code of the process runs,
/// and it may be used from any number of threads. A registered object must be removed before it
/// dies.
template <typename T, typename Pointer>
class NamedObject {
public:
    class Registry {
    public:
        /// Of several objects of one name, the one that was added last is found.
        void add(Pointer object);
        /// Nothing happens if the object is not there.
        void remove(Pointer object);
        /// Null if there is none.
        Pointer find(std::string_view name) const;

    private:
        mutable std::mutex mutex_;
        Pointer first_ = nullptr;
    };

    static Registry _reg;

    NamedObject(const NamedObject&) = delete;
    NamedObject& operator=(const NamedObject&) = delete;

    const std::string& name() const { return name_; }

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
void NamedObject<T, Pointer>::Registry::add(Pointer object) {
    const std::lock_guard<std::mutex> lock(mutex_);
    object->NamedObject::next_ = first_;
    first_ = object;
}

template <typename T, typename Pointer>
void NamedObject<T, Pointer>::Registry::remove(Pointer object) {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (Pointer* link = &first_; *link != nullptr; link = &(*link)->NamedObject::next_) {
        if (*link == object) {
            *link = object->NamedObject::next_;
            return;
        }
    }
}

template <typename T, typename Pointer>
Pointer NamedObject<T, Pointer>::Registry::find(std::string_view name) const {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (Pointer object = first_; object != nullptr; object = object->NamedObject::next_) {
        if (object->NamedObject::name() == name) return object;
    }
    return nullptr;
}
