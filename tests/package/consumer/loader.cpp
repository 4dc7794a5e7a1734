// A class that is only named here must register itself from a static library too, and the parser
// must be linked.
#include <geomKit/geomKit.h>

int main() {
    const auto loaded = geomKit::loadDocumentText<geomKit::MeshFunction2D>(
        "<MeshFunction2D><params><param u='0.5' v='2'/></params></MeshFunction2D>");
    return loaded && loaded.object->params.size() == 1 ? 0 : 1;
}
