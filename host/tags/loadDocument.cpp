#include "host/tags/loadDocument.h"

#include <fstream>
#include <istream>
#include <string>
#include <utility>

#include "host/tags/FactoryByName.h"
#include "host/tags/NoThrow.h"
#include "host/tags/XmlInTag.h"
#include "host/tags/XmlSource.h"

namespace {

constexpr std::size_t kPieceSize = std::size_t{1} << 20;

LoadedDocument _refuse(std::string what) {
    LoadedDocument result;
    result.report.problems.push_back({0, 0, {}, std::move(what), "nothing was loaded"});
    return result;
}

}  // namespace

LoadedDocument loadDocument(std::string_view document) {
    LoadedDocument result;
    XmlSource source(document, result.report);
    const pugi::xml_node root = source.root();
    if (!root) return result;
    XmlInTag tag(source, root, nullptr);
    const FactoryByName* factory = FactoryByName::_reg.find(tag.name());
    if (factory == nullptr) {
        tag.report("unknown class \"" + std::string(tag.name()) + "\"", "nothing was loaded");
        return result;
    }
    result.object = factory->create();
    result.object->load(tag, result.object->classField());
    return result;
}

LoadedDocument loadDocument(std::istream& document) {
    const NoThrow noThrow(document);
    std::string text;
    std::size_t size = 0;
    do {
        text.resize(size + kPieceSize);
        document.read(&text[size], static_cast<std::streamsize>(kPieceSize));
        size += static_cast<std::size_t>(document.gcount());
    } while (document);
    text.resize(size);
    if (document.bad()) return _refuse("the stream could not be read");
    return loadDocument(text);
}

LoadedDocument loadDocumentFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open()) return _refuse("the file could not be opened");
    return loadDocument(file);
}
