#include "geomKit/vAlgebra/eigensystem.h"

#include <utility>

namespace geomKit {

namespace {

constexpr int kMaxRotations = 51;
constexpr double kOffDiagonalTol = 1e-8;
constexpr double kHugeTheta = 1e13;

struct Rotation {
    double c;
    double s;
    double t;
    double tau;
};

/// The rotation of the axes p and q that annihilates `apq` between the diagonal entries `app` and
/// `aqq`; false when there is nothing to rotate. Exchanging the axes turns the other way, but for
/// equal diagonal entries: these turn by -45 degrees, seen with p the later axis.
bool _annihilate(double app, double aqq, double apq, bool pIsLater, Rotation& rot) {
    const double diff = aqq - app;
    if (std::abs(diff) < kNullComponentTol && std::abs(2.0 * apq) < kNullComponentTol) return false;
    const double theta = diff / (2.0 * apq);
    const double absTheta = std::abs(theta);
    double t = 0.0;  // without its sign: the cosine need not wait for that
    if (absTheta > kHugeTheta) {
        t = std::abs(apq / diff);
    } else {
        t = 1.0 / (absTheta + std::sqrt(theta * theta + 1.0));
    }
    rot.c = 1.0 / std::sqrt(t * t + 1.0);
    rot.t = std::copysign(t, theta);
    if (theta == 0.0) rot.t = pIsLater ? -t : t;
    rot.s = rot.t * rot.c;
    rot.tau = rot.s / (rot.c + 1.0);
    return true;
}

/// The index that the pivot's row p and column q leave over, where `off[k]` is the entry that lies
/// in neither row nor column k. Greater-or-equal, so the later of equal entries wins and NaN never
/// does.
int _pivotComplement(const double off[3]) {
    int r = 0;
    double largest = 0.0;
    for (int k = 2; k >= 0; --k) {
        const double entry = std::abs(off[k]);
        if (entry >= largest) {
            largest = entry;
            r = k;
        }
    }
    return r;
}

constexpr int kPivotRow[3] = {2, 2, 1};
constexpr int kPivotColumn[3] = {1, 0, 0};

}  // namespace

bool jacobiRotation(const Matrix3& S, int& p, int& q, double& c, double& s, double& t,
                    double& tau) noexcept {
    const double off[3] = {S(2, 1), S(2, 0), S(1, 0)};
    const int r = _pivotComplement(off);
    p = kPivotRow[r];
    q = kPivotColumn[r];
    Rotation rot;
    if (!_annihilate(S(p, p), S(q, q), off[r], true, rot)) return false;
    c = rot.c;
    s = rot.s;
    t = rot.t;
    tau = rot.tau;
    return true;
}

bool jacobiMethod(const Matrix3& A, double* eigs, UVector3* vecs) noexcept {
    double diag[3] = {(A(0, 0) + A(0, 0)) * 0.5, (A(1, 1) + A(1, 1)) * 0.5,
                      (A(2, 2) + A(2, 2)) * 0.5};
    const double off[3] = {(A(2, 1) + A(1, 2)) * 0.5, (A(2, 0) + A(0, 2)) * 0.5,
                           (A(1, 0) + A(0, 1)) * 0.5};
    Vector3 V[3] = {Vector3(1.0, 0.0, 0.0), Vector3(0.0, 1.0, 0.0), Vector3(0.0, 0.0, 1.0)};

    // The pivot lies in row p and column q, in either order; r is the third index.
    int r = _pivotComplement(off);
    int p = kPivotRow[r];
    int q = kPivotColumn[r];
    double apq = off[r];
    double arp = off[q];
    double arq = off[p];
    bool converged = false;
    for (int rotations = 0; rotations < kMaxRotations; ++rotations) {
        Rotation rot;
        if (!_annihilate(diag[p], diag[q], apq, p > q, rot)) {
            converged = true;
            break;
        }
        diag[p] -= rot.t * apq;
        diag[q] += rot.t * apq;
        // arq is zero after the first rotation. Adding it then would change nothing, and would make
        // every rotation longer: each operation of this loop waits for the one before.
        const double turned = rot.tau * arp;
        const double rp = arp - rot.s * (rotations == 0 ? arq + turned : turned);
        const double rq = arq + rot.s * (arp - rot.tau * arq);
        const Vector3 vp = V[p];
        const Vector3 vq = V[q];
        V[p] = vp * rot.c - vq * rot.s;
        V[q] = vp * rot.s + vq * rot.c;

        const double sizeRp = std::abs(rp);
        const double sizeRq = std::abs(rq);
        if (!(sizeRp + sizeRq > kOffDiagonalTol)) {
            converged = true;
            break;
        }
        // The rotation has made the entry (p, q) zero, so the next pivot is the larger of the other
        // two. Of equal ones it is the later, which leaves the smaller index over. From the second
        // rotation on, the new entries are the cosine and the sine times one value, so that the
        // pivots go round in turn and the processor predicts the branch.
        const bool pivotIsRp = sizeRp > sizeRq || (sizeRp == sizeRq && q < p);
        arq = 0.0;
        if (pivotIsRp) {
            apq = rp;
            arp = rq;
            const int oldQ = q;
            q = p;
            p = r;
            r = oldQ;
        } else {
            apq = rq;
            arp = rp;
            std::swap(p, r);
        }
    }

    // A stable ascending sort by counting. It has no branches, since their outcome would depend on
    // the data at random. As in a sort that exchanges neighbours, a NaN in the middle leaves the
    // outer two where they are.
    const int swap01 = diag[0] > diag[1] ? 1 : 0;
    const int swap12 = diag[1] > diag[2] ? 1 : 0;
    const int swap02 = (diag[0] > diag[2] ? 1 : 0) & (swap01 | swap12);
    const int rank[3] = {swap01 + swap02, 1 - swap01 + swap12, 2 - swap02 - swap12};
    for (int k = 0; k < 3; ++k) {
        if (eigs != nullptr) eigs[rank[k]] = diag[k];
        if (vecs != nullptr) vecs[rank[k]] = UVector3(V[k]);
    }
    return converged;
}

}  // namespace geomKit
