#include "geomKit/debugDraw/gkFuncBinder.h"

namespace {

constexpr double kDefaultVectorScale = 0.1;

}  // namespace

gkFuncBinder* gkFuncBinder::iGet() {
    // Constant-initialised: all slots are null before any other code of the process runs, so a
    // host's own static initialiser may register callbacks without losing them.
    static gkFuncBinder instance;
    return &instance;
}

void gkFuncBinder::iReset() {
    *this = gkFuncBinder();
}

void gkFuncBinder::registerDrawVector(DrawVector fn) {
    iGet()->drawVector_ = fn;
}

void gkFuncBinder::registerDrawPoint(DrawPoint fn) {
    iGet()->drawPoint_ = fn;
}

void gkFuncBinder::registerDrawPoints(DrawPoints fn) {
    iGet()->drawPoints_ = fn;
}

void gkFuncBinder::registerClear(Clear fn) {
    iGet()->clear_ = fn;
}

void gkFuncBinder::drawVector(const Vector3& a, const Vector3& b, int colour, double scale) {
    if (const DrawVector fn = iGet()->drawVector_) fn(a, b, colour, scale);
}

void gkFuncBinder::drawPoint(const Vector3& p, int colour) {
    if (const DrawPoint fn = iGet()->drawPoint_) fn(p, colour);
}

void gkFuncBinder::drawPoints(const std::vector<Vector3>& pts, int colour, int style) {
    const gkFuncBinder& binder = *iGet();
    if (binder.drawPoint_ != nullptr && binder.drawPoints_ != nullptr) {
        binder.drawPoints_(pts, colour, style);
    }
}

void gkFuncBinder::clear() {
    if (const Clear fn = iGet()->clear_) fn();
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
