// Loads whatever the bytes are as a document, and asks the object everything that it can answer.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/tags/SerializableFactory.h"
#include "geomKit/tags/loadDocument.h"
#include "geomKit/tags/saveDocument.h"

using namespace geomKit;

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

void query(const MeshFunction2D& function) {
    using Point = MeshFunction2D::Point;
    const double infinity = HUGE_VAL;
    const Point around[] = {function.boxMin, function.boxMax, {0.5, 0.5},
                            {-1e9, 1e300},   {infinity, 0.0}, {infinity - infinity, -infinity}};
    for (const Point& p : around) {
        Point value;
        float number = 0.0f;
        function.evaluate(p, &value, &number);
        function.extrapolate(p, &value, &number);
        function.extrapolateOld(p, &value, &number);
    }
    for (const Point& p : function.params) {
        const bool inside = function.evaluate(p, nullptr, nullptr);
        require(!inside || !function.extrapolateFlag || function.extrapolate(p, nullptr, nullptr));
    }
}

/// Finite, and not so near to the largest number that its 15 digits are rounded to beyond it.
bool loadsBack(double x) {
    return std::abs(x) < 1.797693134862315e308;
}

bool loadsBack(const std::vector<MeshFunction2D::Point>& points) {
    return std::all_of(points.begin(), points.end(),
                       [](const auto& p) { return loadsBack(p.u) && loadsBack(p.v); });
}

/// A class that no mesh function is.
class Other : public Serializable {};

const SerializableFactory<Other> kFactory("Other");

/// Saves by both ways, to memory and to a stream, which must agree.
std::string saved(const Serializable& object) {
    SavedDocumentText result = saveDocumentText(object);
    require(static_cast<bool>(result));
    std::ostringstream document;
    require(static_cast<bool>(saveDocument(object, document)));
    require(document.str() == result.document);
    return std::move(result.document);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const LoadedDocument any = loadDocumentText(text);
    require(any || !any.report.isClean());
    std::istringstream stream{std::string(text)};
    const LoadedDocument loaded = loadDocument<MeshFunction2D>(stream);
    require(loaded || !loaded.report.isClean());
    static_cast<void>(loaded.text());
    const bool isFunction = dynamic_cast<const MeshFunction2D*>(any.object.get()) != nullptr;
    require(isFunction == (loaded.object != nullptr));
    if (!loaded) return 0;
    const MeshFunction2D& function = *loaded.object;
    query(function);
    static_cast<void>(function.check().text());
    const std::unique_ptr<MeshFunction2D> copy(function.copy());
    query(*copy);

    const std::string document = saved(*copy);
    const LoadedDocument again = loadDocumentText<MeshFunction2D>(document);
    require(static_cast<bool>(again));
    if (loadsBack(copy->params) && loadsBack(copy->values)) {
        require(again.report.isClean());
        require(saved(*again.object) == document);
    }
    return 0;
}
