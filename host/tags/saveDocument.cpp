#include "host/tags/saveDocument.h"

#include <fstream>
#include <ios>
#include <ostream>
#include <random>
#include <system_error>
#include <typeinfo>

#include "host/tags/FactoryByTypeID.h"
#include "host/tags/OutTag.h"

namespace fs = std::filesystem;

namespace {

/// Of the same folder, so that renaming does not copy, and of a name that no one else has.
fs::path _temporaryName(const fs::path& path) {
    std::random_device random;
    const std::string number = std::to_string(random()) + std::to_string(random());
    return path.parent_path() / (".saving-" + number);
}

/// A device or a pipe cannot be replaced by a file, and a link that leads to nothing should not.
bool _isWrittenInPlace(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(path, error);
    return fs::is_symlink(status) || fs::is_other(status);
}

bool _writeFile(const Serializable& object, const fs::path& path) {
    std::ofstream file(path, std::ios::binary);
    const bool saved = file.is_open() && saveDocument(object, file);
    file.close();
    return saved && !file.fail();
}

}  // namespace

bool saveDocument(const Serializable& object, std::ostream& document) {
    const FactoryByTypeID* factory = FactoryByTypeID::_reg.find(typeid(object).name());
    if (factory == nullptr) return false;
    {
        OutTag root(document, factory->className());
        object.save(root);
    }
    return !document.fail();
}

bool saveDocumentFile(const Serializable& object, const fs::path& path, std::string* problem) {
    const auto fail = [problem](const char* reason) {
        if (problem != nullptr) *problem = reason;
        return false;
    };
    if (FactoryByTypeID::_reg.find(typeid(object).name()) == nullptr) {
        return fail("the object's class is not registered");
    }
    std::error_code error;
    const fs::path resolved = fs::weakly_canonical(path, error);
    const fs::path target = error ? path : resolved;
    if (_isWrittenInPlace(target)) {
        return _writeFile(object, target) || fail("the file could not be written");
    }
    const fs::path temporary = _temporaryName(target);
    if (!_writeFile(object, temporary)) {
        fs::remove(temporary, error);
        return fail("the file could not be written");
    }
    const fs::file_status old = fs::status(target, error);
    if (fs::exists(old)) fs::permissions(temporary, old.permissions(), error);
    fs::rename(temporary, target, error);
    if (error) {
        fs::remove(temporary, error);
        return fail("the written file could not take the place of the old one");
    }
    return true;
}
