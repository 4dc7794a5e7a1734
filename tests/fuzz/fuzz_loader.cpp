// Loads whatever the bytes are as a document, and asks the object everything that it can answer.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string_view>

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

    // What was saved loads again, with nothing amiss unless a vector is not finite.
    std::ostringstream saved;
    require(saveDocument(*copy, saved));
    const LoadedDocument again = loadDocument(saved.str());
    require(again.object != nullptr);
    const auto fault = copy->check().fault;
    require(again.report.isClean() || fault != MeshFunction2DCheck::Fault::None);
    return 0;
}
