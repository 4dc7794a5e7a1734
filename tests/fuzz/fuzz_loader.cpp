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
#include <vector>

#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "host/tags/loadDocument.h"
#include "host/tags/saveDocument.h"

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

std::string saved(const Serializable& object) {
    std::ostringstream document;
    require(saveDocument(object, document));
    return document.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const LoadedDocument loaded =
        loadDocument(std::string_view(reinterpret_cast<const char*>(data), size));
    require(loaded.object != nullptr || !loaded.report.isClean());
    loaded.report.text();
    const auto* function = dynamic_cast<const MeshFunction2D*>(loaded.object.get());
    if (function == nullptr) return 0;
    query(*function);
    function->check().text();
    const std::unique_ptr<MeshFunction2D> copy(function->copy());
    query(*copy);

    const std::string document = saved(*copy);
    const LoadedDocument again = loadDocument(document);
    require(again.object != nullptr);
    if (loadsBack(copy->params) && loadsBack(copy->values)) {
        require(again.report.isClean());
        require(saved(*again.object) == document);
    }
    return 0;
}
