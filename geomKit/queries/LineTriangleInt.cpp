#include "geomKit/queries/LineTriangleInt.h"

#include "geomKit/queries/LinePlaneInt.h"

namespace geomKit {

LineTriangleInt LineTriangleInt::iSolve(const Vector3& p, const UVector3& d, const Vector3& a,
                                        const Vector3& b, const Vector3& c, double tol) noexcept {
    LineTriangleInt out;
    // Assigned as a plain vector: it is normalised once, and a failure of that can be seen.
    UVector3 n;
    const Vector3 ab = b - a;
    const Vector3 ac = c - a;
    static_cast<Vector3&>(n) = ab % ac;
    if (!n.autoNormalize()) {
        out.status = kDegenerate;
        return out;
    }

    const LinePlaneInt hit(p, d, a, n, tol);
    if (hit.status != LinePlaneInt::kHit) {
        out.status = hit.status == LinePlaneInt::kInPlane ? kInPlane : kParallel;
        return out;
    }
    out.point = hit.point;
    out.param = hit.param;

    const Vector3 ax = out.point - a;
    const bool inB = (ax % ac) * n >= -tol;
    const bool inC = (ab % ax) * n >= -tol;
    const bool inA = ((out.point - c) % (b - c)) * n >= -tol;
    out.status = inA && inB && inC ? kHit : kMiss;
    return out;
}

}  // namespace geomKit
