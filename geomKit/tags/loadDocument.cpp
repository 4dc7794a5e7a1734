#include "geomKit/tags/loadDocument.h"

#include <istream>
#include <new>
#include <string>
#include <utility>

#include "geomKit/tags/FactoryByName.h"
#include "geomKit/tags/FactoryByTypeID.h"
#include "geomKit/tags/File.h"
#include "geomKit/tags/NoThrow.h"
#include "geomKit/tags/XmlInTag.h"
#include "geomKit/tags/XmlSource.h"

namespace geomKit::detail {

namespace {

constexpr std::size_t kPieceSize = std::size_t{1} << 20;
constexpr const char* kNothing = "nothing was loaded";

LoadedDocument<> _refuse(std::string what) {
    LoadedDocument<> result;
    result.report.problems.push_back({0, 0, {}, std::move(what), kNothing});
    return result;
}

/// All that `read` gives. It stores bytes and returns how many: as many as asked for, except at the
/// end.
template <typename Read>
std::string _readAll(const Read& read) {
    std::string text;
    std::size_t size = 0;
    std::size_t count = 0;
    do {
        if (text.max_size() - size < kPieceSize) throw std::bad_alloc();
        text.resize(size + kPieceSize);
        count = read(&text[size], kPieceSize);
        size += count;
    } while (count == kPieceSize);
    text.resize(size);
    return text;
}

/// The name of a class in documents, or what the compiler calls it if it has none.
std::string _nameOf(const std::type_info& type) {
    const FactoryByTypeID* factory = FactoryByTypeID::_reg.find(type.name());
    return factory == nullptr ? type.name() : factory->className();
}

LoadedDocument<> _load(std::string_view document, const WantedClass& wanted) {
    LoadedDocument<> result;
    XmlSource source(document, result.report);
    const pugi::xml_node root = source.root();
    if (!root) return result;
    XmlInTag tag(source, root, nullptr);
    const FactoryByName* factory = FactoryByName::_reg.find(tag.name());
    if (factory == nullptr) {
        tag.report("unknown class \"" + std::string(tag.name()) + "\"", kNothing);
        return result;
    }
    std::unique_ptr<Serializable> object = factory->create();
    if (!wanted.fits(object.get())) {
        tag.report("class \"" + std::string(tag.name()) + "\" was found where class \"" +
                       _nameOf(wanted.type) + "\" was wanted",
                   kNothing);
        return result;
    }
    object->load(tag, object->classField());
    result.object = std::move(object);
    return result;
}

}  // namespace

LoadedDocument<> load(std::istream& document, const WantedClass& wanted) {
    const NoThrow noThrow(document);
    const bool isReadable = !document.fail();
    const std::string text = _readAll([&document](char* data, std::size_t size) {
        document.read(data, static_cast<std::streamsize>(size));
        return static_cast<std::size_t>(document.gcount());
    });
    if (!isReadable || document.bad()) return _refuse("the stream could not be read");
    return _load(text, wanted);
}

LoadedDocument<> loadFile(const std::filesystem::path& path, const WantedClass& wanted) {
    LoadedDocument<> result;
    File file;
    file.open(path, File::Mode::Read);
    if (file.error()) {
        result = _refuse("the file could not be opened: " + file.error().message());
    } else {
        const std::string text =
            _readAll([&file](char* data, std::size_t size) { return file.read(data, size); });
        result = file.error() ? _refuse("the file could not be read: " + file.error().message())
                              : _load(text, wanted);
    }
    result.file = path;
    result.reason = file.error();
    return result;
}

LoadedDocument<> loadText(std::string_view document, const WantedClass& wanted) {
    // In every encoding of documents the bracket of a tag has a byte of this value.
    if (document.find('<') == std::string_view::npos) {
        return _refuse(
            "the text is no document, as it has no tag (loadDocumentFile takes the name of a "
            "file)");
    }
    return _load(document, wanted);
}

}  // namespace geomKit::detail
