// A host that uses nothing of the library but the name of a class in a document. The library is
// linked, or opened when its path is given.
#include <cstdio>

#include <dlfcn.h>

#include "host/tags/loadDocument.h"

int main(int argc, char** argv) {
    constexpr const char* kDocument = "<MeshFunction2D/>";
    if (argc > 1) {
        if (loadDocument(kDocument).object != nullptr) {
            std::puts("registered before the library was opened");
            return 1;
        }
        if (dlopen(argv[1], RTLD_NOW) == nullptr) {
            std::puts(dlerror());
            return 1;
        }
    }
    const LoadedDocument loaded = loadDocument(kDocument);
    std::fputs(loaded.report.text().c_str(), stdout);
    return loaded.object == nullptr ? 1 : 0;
}
