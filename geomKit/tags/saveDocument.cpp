#include "geomKit/tags/saveDocument.h"

#include <new>
#include <ostream>
#include <streambuf>
#include <string>
#include <system_error>
#include <typeinfo>

#include "geomKit/tags/FactoryByTypeID.h"
#include "geomKit/tags/File.h"
#include "geomKit/tags/FileReplacement.h"
#include "geomKit/tags/OutTag.h"

namespace geomKit {

namespace fs = std::filesystem;

namespace {

using detail::File;
using detail::FileReplacement;
using Fault = SavedDocument::Fault;

/// Appends all that is written to a string.
class StringBuffer final : public std::streambuf {
public:
    explicit StringBuffer(std::string& text) : text_(text) {}

private:
    std::streamsize xsputn(const char* data, std::streamsize size) override {
        text_.append(data, static_cast<std::size_t>(size));
        return size;
    }

    std::string& text_;
};

/// Hands all that is written on to a file.
class FileBuffer final : public std::streambuf {
public:
    explicit FileBuffer(File& file) : file_(file) {}

private:
    std::streamsize xsputn(const char* data, std::streamsize size) override {
        return static_cast<std::streamsize>(file_.write(data, static_cast<std::size_t>(size)));
    }

    File& file_;
};

/// Writes an open file and closes it.
void _writeFile(const Serializable& object, File& file, SavedDocument& result) {
    FileBuffer buffer(file);
    std::ostream stream(&buffer);
    const bool isWritten = static_cast<bool>(saveDocument(object, stream));
    file.close();
    if (!isWritten || file.error()) {
        result.fault = Fault::FileNotWritten;
        result.reason = file.error();
    }
}

/// A device or a pipe cannot be replaced by a file, and a link that leads to nothing should not. A
/// folder cannot be written in place either, but then it is the system that says so.
bool _isWrittenInPlace(const fs::path& path) {
    std::error_code ignored;
    const fs::file_status status = fs::symlink_status(path, ignored);
    return fs::is_symlink(status) || fs::is_other(status) || fs::is_directory(status);
}

void _writeInPlace(const Serializable& object, const fs::path& target, SavedDocument& result) {
    File file;
    file.open(target, File::Mode::Overwrite);
    if (!file.error()) {
        _writeFile(object, file, result);
    } else {
        result.fault = Fault::FileNotOpened;
        result.reason = file.error();
    }
}

void _replace(const Serializable& object, const fs::path& target, SavedDocument& result) {
    FileReplacement replacement(target);
    if (const std::error_code reason = replacement.file().error()) {
        result.fault = Fault::TemporaryNotCreated;
        result.reason = reason;
        return;
    }
    _writeFile(object, replacement.file(), result);
    if (!result) return;
    result.reason = replacement.replace();
    if (result.reason) result.fault = Fault::FileNotRenamed;
}

/// The file that a path leads to, through links.
fs::path _resolved(const fs::path& path) {
    std::error_code error;
    fs::path result = fs::weakly_canonical(path, error);
    if (error == std::errc::not_enough_memory) throw std::bad_alloc();
    return error ? path : result;
}

const FactoryByTypeID* _factoryOf(const Serializable& object) {
    return FactoryByTypeID::_reg.find(typeid(object).name());
}

}  // namespace

SavedDocument saveDocument(const Serializable& object, std::ostream& document) {
    const FactoryByTypeID* factory = _factoryOf(object);
    if (factory == nullptr) return {Fault::ClassNotRegistered, {}, {}};
    {
        OutTag root(document, factory->className());
        object.save(root);
    }
    return {document.fail() ? Fault::StreamFailed : Fault::None, {}, {}};
}

SavedDocumentText saveDocumentText(const Serializable& object) {
    SavedDocumentText result;
    StringBuffer buffer(result.document);
    std::ostream stream(&buffer);
    static_cast<SavedDocument&>(result) = saveDocument(object, stream);
    // A string fails to grow for one reason only, which the stream does not pass on.
    if (result.fault == Fault::StreamFailed) throw std::bad_alloc();
    return result;
}

SavedDocument saveDocumentFile(const Serializable& object, const fs::path& path) {
    // Complete before the file is replaced: nothing can be thrown afterwards.
    SavedDocument result{Fault::None, path, {}};
    const fs::path target = _resolved(path);
    if (_factoryOf(object) == nullptr) {
        result.fault = Fault::ClassNotRegistered;
    } else if (_isWrittenInPlace(target)) {
        _writeInPlace(object, target, result);
    } else {
        _replace(object, target, result);
    }
    return result;
}

}  // namespace geomKit
