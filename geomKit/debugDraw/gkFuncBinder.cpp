#include "geomKit/debugDraw/gkFuncBinder.h"

namespace geomKit {

namespace {

constexpr double kDefaultVectorScale = 0.1;

}  // namespace

gkFuncBinder* gkFuncBinder::iGet() noexcept {
    // Constant-initialised: all slots are null before any other code of the process runs, so a
    // host's own static initialiser may register callbacks without losing them.
    static gkFuncBinder instance;
    return &instance;
}

void gkFuncBinder::iReset() noexcept {
    *this = gkFuncBinder();
}

void gkFuncBinder::registerDrawVector(DrawVector fn) noexcept {
    iGet()->drawVector_ = {fn, nullptr, nullptr};
}

void gkFuncBinder::registerDrawPoint(DrawPoint fn) noexcept {
    iGet()->drawPoint_ = {fn, nullptr, nullptr};
}

void gkFuncBinder::registerDrawPoints(DrawPoints fn) noexcept {
    iGet()->drawPoints_ = {fn, nullptr, nullptr};
}

void gkFuncBinder::registerClear(Clear fn) noexcept {
    iGet()->clear_ = {fn, nullptr, nullptr};
}

void gkFuncBinder::registerDrawVector(DrawVectorIn fn, void* context) noexcept {
    iGet()->drawVector_ = {nullptr, fn, context};
}

void gkFuncBinder::registerDrawPoint(DrawPointIn fn, void* context) noexcept {
    iGet()->drawPoint_ = {nullptr, fn, context};
}

void gkFuncBinder::registerDrawPoints(DrawPointsIn fn, void* context) noexcept {
    iGet()->drawPoints_ = {nullptr, fn, context};
}

void gkFuncBinder::registerClear(ClearIn fn, void* context) noexcept {
    iGet()->clear_ = {nullptr, fn, context};
}

void gkFuncBinder::drawVector(const Vector3& a, const Vector3& b, int colour, double scale) {
    iGet()->drawVector_.call(a, b, colour, scale);
}

void gkFuncBinder::drawPoint(const Vector3& p, int colour) {
    iGet()->drawPoint_.call(p, colour);
}

void gkFuncBinder::drawPoints(const std::vector<Vector3>& pts, int colour, int style) {
    if (!iGet()->drawPoint_.isNull()) iGet()->drawPoints_.call(pts, colour, style);
}

void gkFuncBinder::clear() {
    iGet()->clear_.call();
}

void dVec(Vector3& origin, Vector3& v, int colour) {
    gkFuncBinder::drawVector(origin, v, colour, kDefaultVectorScale);
}

void dVecSc(Vector3& origin, Vector3& v, int colour, double scale) {
    gkFuncBinder::drawVector(origin, v, colour, scale);
}

void dPnt(Vector3& p, int colour) {
    gkFuncBinder::drawPoint(p, colour);
}

void cl() {
    gkFuncBinder::clear();
}

void dVec(const Vector3& origin, const Vector3& v, int colour) {
    gkFuncBinder::drawVector(origin, v, colour, kDefaultVectorScale);
}

void dVecSc(const Vector3& origin, const Vector3& v, int colour, double scale) {
    gkFuncBinder::drawVector(origin, v, colour, scale);
}

void dPnt(const Vector3& p, int colour) {
    gkFuncBinder::drawPoint(p, colour);
}

}  // namespace geomKit
