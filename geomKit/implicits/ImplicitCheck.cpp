#include "geomKit/implicits/ImplicitCheck.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>
#include <vector>

#include "geomKit/implicits/Implicit.h"
#include "geomKit/internal/isFinite.h"

namespace geomKit {

namespace {

using Fault = ImplicitCheck::Fault;

/// The first sample whose centre has come before, with the first that has it; none if all differ.
ImplicitCheck _findRepeated(const std::vector<Vector3>& centers) {
    std::vector<std::size_t> order(centers.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&centers](std::size_t i, std::size_t j) {
        const Vector3& a = centers[i];
        const Vector3& b = centers[j];
        return std::tie(a.x, a.y, a.z, i) < std::tie(b.x, b.y, b.z, j);
    });
    ImplicitCheck found;
    std::size_t first = 0;  // of the run of equal centres
    for (std::size_t k = 1; k < order.size(); ++k) {
        if (!centers[order[k]].equalsExactly(centers[order[first]])) {
            first = k;
        } else if (found || order[k] < found.other) {
            found = {Fault::RepeatedSample, order[first], order[k]};
        }
    }
    return found;
}

bool _isFinite(const Implicit& field) {
    return std::isfinite(field.offset) && detail::isFinite(field.linear) &&
           std::all_of(field.weights.begin(), field.weights.end(),
                       [](double weight) { return std::isfinite(weight); });
}

}  // namespace

std::string ImplicitCheck::text() const {
    const std::string sample = std::to_string(index);
    switch (fault) {
        case Fault::NotFinite:
            return "the centre of sample " + sample + " is not finite";
        case Fault::RepeatedSample:
            return "samples " + sample + " and " + std::to_string(other) + " have the same centre";
        case Fault::TooFewSamples:
            return "there are only " + sample + " samples, and a field takes at least 4";
        case Fault::ZeroPivot:
            return "the samples do not determine a field: they lie in a plane or nearly so";
        case Fault::FieldNotFinite:
            return "the field is not finite: a value is not, or distances overflow";
        case Fault::None:
            break;
    }
    return "no fault";
}

ImplicitCheck Implicit::check() const {
    for (std::size_t i = 0; i < centers.size(); ++i) {
        if (!detail::isFinite(centers[i])) return {Fault::NotFinite, i, 0};
    }
    if (const ImplicitCheck repeated = _findRepeated(centers); !repeated) return repeated;
    if (centers.size() < 4) return {Fault::TooFewSamples, centers.size(), 0};
    if (metZeroPivot_) return {Fault::ZeroPivot, 0, 0};
    if (!_isFinite(*this)) return {Fault::FieldNotFinite, 0, 0};
    return {};
}

}  // namespace geomKit
