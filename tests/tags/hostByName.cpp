// A host that uses nothing of the library but the name of a class in a document. The library is
// linked, or opened when its path is given.
#include <cstdio>

#include <dlfcn.h>

#include "geomKit/tags/loadDocument.h"

using namespace geomKit;

int main(int argc, char** argv) {
    constexpr const char* kDocument = "<MeshFunction2D/>";
    if (argc > 1) {
        if (loadDocumentText(kDocument)) {
            std::puts("registered before the library was opened");
            return 1;
        }
        if (dlopen(argv[1], RTLD_NOW) == nullptr) {
            std::puts(dlerror());
            return 1;
        }
    }
    const LoadedDocument loaded = loadDocumentText(kDocument);
    std::puts(loaded.text().c_str());
    return loaded ? 0 : 1;
}
