#include "geomKit/tags/SavedDocument.h"

namespace geomKit {

namespace {

using Fault = SavedDocument::Fault;

const char* _what(Fault fault) {
    switch (fault) {
        case Fault::ClassNotRegistered:
            return "the object's class is not registered";
        case Fault::StreamFailed:
            return "the stream failed";
        case Fault::FileNotOpened:
            return "the file could not be opened";
        case Fault::TemporaryNotCreated:
            return "no temporary file could be made in its folder";
        case Fault::FileNotWritten:
            return "the file could not be written";
        case Fault::FileNotRenamed:
            return "the temporary file could not be renamed";
        case Fault::None:
            break;
    }
    return "saved";
}

}  // namespace

std::string SavedDocument::text() const {
    std::string result = _what(fault);
    if (!file.empty()) result = file.u8string() + ": " + result;
    if (reason) result += ": " + reason.message();
    return result;
}

}  // namespace geomKit
