#include "examples/meshFunction/saveAndLoad.h"

#include <algorithm>
#include <cmath>

#include <host/tags/loadDocument.h>
#include <host/tags/saveDocument.h>

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
    if (!saveDocumentFile(function, path, error)) {
        *error = path.string() + ": " + *error;
        return nullptr;
    }
    LoadedDocument loaded = loadDocumentFile(path);
    auto* copy = dynamic_cast<MeshFunction2D*>(loaded.object.get());
    if (copy == nullptr || !loaded.report.isClean()) {
        *error = path.string() + ": " + loaded.report.text();
        return nullptr;
    }
    static_cast<void>(loaded.object.release());
    return std::unique_ptr<MeshFunction2D>(copy);
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
