/// @file
/// Loading an object from a document.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <memory>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "geomKit/tags/LoadedDocument.h"
#include "geomKit/tags/Serializable.h"
#include "geomKit/tags/export.h"

namespace geomKit {

/// Makes the object whose class the root tag names, by the factory of that name, and loads it.
///
/// There is no object when the document cannot be read, is not well-formed (a truncated one is
/// not), names a class that is not registered, or one that is neither `T` nor derived from it.
/// Every other fault is reported and passed over: the object then has all that could be read.
/// Nothing is thrown but `std::bad_alloc`, whatever the document holds; exceptions of a class's own
/// `load` pass through. Memory is in proportion to the document. Safe from any number of threads.
///
/// This one reads a stream to its end, whatever the stream is set to throw.
template <typename T = Serializable>
[[nodiscard]] LoadedDocument<T> loadDocument(std::istream& document);

/// The same, for the file of that name.
template <typename T = Serializable>
[[nodiscard]] LoadedDocument<T> loadDocumentFile(const std::filesystem::path& path);

/// The same, for a document that is in memory already.
template <typename T = Serializable>
[[nodiscard]] LoadedDocument<T> loadDocumentText(std::string_view document);

namespace detail {

/// The class that the object of a document must have.
struct WantedClass {
    const std::type_info& type;
    /// Whether an object is of that class or of a derived one.
    bool (*fits)(const Serializable* object);
};

template <typename T>
WantedClass wantedClass() {
    static_assert(std::is_base_of_v<Serializable, T>, "only a Serializable can be loaded");
    return {typeid(T),
            [](const Serializable* object) { return dynamic_cast<const T*>(object) != nullptr; }};
}

/// What was loaded, by the class that its object is known to have.
template <typename T>
LoadedDocument<T> loadedAs(LoadedDocument<>&& loaded) {
    return {std::unique_ptr<T>(dynamic_cast<T*>(loaded.object.release())), std::move(loaded.report),
            std::move(loaded.file), loaded.reason};
}

GEOMKIT_TAGS_API LoadedDocument<> load(std::istream& document, const WantedClass& wanted);
GEOMKIT_TAGS_API LoadedDocument<> loadFile(const std::filesystem::path& path,
                                           const WantedClass& wanted);
GEOMKIT_TAGS_API LoadedDocument<> loadText(std::string_view document, const WantedClass& wanted);

}  // namespace detail

template <typename T>
LoadedDocument<T> loadDocument(std::istream& document) {
    return detail::loadedAs<T>(detail::load(document, detail::wantedClass<T>()));
}

template <typename T>
LoadedDocument<T> loadDocumentFile(const std::filesystem::path& path) {
    return detail::loadedAs<T>(detail::loadFile(path, detail::wantedClass<T>()));
}

template <typename T>
LoadedDocument<T> loadDocumentText(std::string_view document) {
    return detail::loadedAs<T>(detail::loadText(document, detail::wantedClass<T>()));
}

}  // namespace geomKit
