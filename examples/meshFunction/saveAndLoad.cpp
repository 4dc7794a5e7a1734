#include "examples/meshFunction/saveAndLoad.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <geomKit/tags/loadDocument.h>
#include <geomKit/tags/saveDocument.h>

using namespace geomKit;

namespace demo {
namespace {

bool agree(const FieldSample& a, const FieldSample& b) {
    constexpr double kTolerance = 1e-6;
    if (a.isKnown != b.isKnown) return false;
    return std::abs(a.value.u - b.value.u) <= kTolerance &&
           std::abs(a.value.v - b.value.v) <= kTolerance &&
           std::abs(static_cast<double>(a.number) - static_cast<double>(b.number)) <= kTolerance;
}

}  // namespace

std::unique_ptr<MeshFunction2D> saveAndLoad(const MeshFunction2D& function,
                                            const std::filesystem::path& path, std::string* error) {
    const SavedDocument saved = saveDocumentFile(function, path);
    if (!saved) {
        *error = saved.text();
        return nullptr;
    }
    LoadedDocument loaded = loadDocumentFile<MeshFunction2D>(path);
    if (!loaded || !loaded.report.isClean()) {
        *error = loaded.text();
        return nullptr;
    }
    return std::move(loaded.object);
}

std::size_t differingAnswers(const Field& a, const Field& b) {
    if (a.samples.size() != b.samples.size()) return std::max(a.samples.size(), b.samples.size());
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.samples.size(); ++i) {
        count += agree(a.samples[i], b.samples[i]) ? 0 : 1;
    }
    return count;
}

}  // namespace demo
