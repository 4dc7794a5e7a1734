#include "geomKit/vAlgebra/eigensystem.h"

#include <utility>

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

/// The rotation that annihilates `apq` between the diagonal entries `app` and `aqq`; false when
/// there is nothing to rotate.
bool annihilate(double app, double aqq, double apq, Rotation& rot) {
    const double diff = aqq - app;
    if (std::abs(diff) < kNullComponentTol && std::abs(2.0 * apq) < kNullComponentTol) return false;
    const double theta = diff / (2.0 * apq);
    const double absTheta = std::abs(theta);
    if (absTheta > kHugeTheta) {
        rot.t = apq / diff;
    } else {
        const double root = absTheta + std::sqrt(theta * theta + 1.0);
        rot.t = theta > 0.0 ? 1.0 / root : -1.0 / root;
    }
    rot.c = 1.0 / std::sqrt(rot.t * rot.t + 1.0);
    rot.s = rot.t * rot.c;
    rot.tau = rot.s / (rot.c + 1.0);
    return true;
}

/// A symmetric matrix as it is rotated: the diagonal and, at index k, the off-diagonal entry that
/// lies in neither row nor column k. Half the work of a full matrix and the same values.
struct Symmetric {
    double diag[3];
    double off[3];

    /// The index that the pivot's row p and column q leave over: 0 for (2,1), 1 for (2,0), 2 for
    /// (1,0). Greater-or-equal, so the later of equal entries wins and NaN never does.
    int pivot() const {
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

    void rotate(int p, int q, int r, const Rotation& rot) {
        const double apq = off[r];
        const double arp = off[q];
        const double arq = off[p];
        diag[p] -= rot.t * apq;
        diag[q] += rot.t * apq;
        off[r] = 0.0;
        off[q] = arp - rot.s * (arq + rot.tau * arp);
        off[p] = arq + rot.s * (arp - rot.tau * arq);
    }

    double offDiagonalSum() const { return std::abs(off[2]) + std::abs(off[1]) + std::abs(off[0]); }
};

constexpr int kPivotRow[3] = {2, 2, 1};
constexpr int kPivotColumn[3] = {1, 0, 0};

}  // namespace

bool jacobiRotation(const Matrix3& S, int& p, int& q, double& c, double& s, double& t,
                    double& tau) {
    const Symmetric lower = {{S(0, 0), S(1, 1), S(2, 2)}, {S(2, 1), S(2, 0), S(1, 0)}};
    const int r = lower.pivot();
    p = kPivotRow[r];
    q = kPivotColumn[r];
    Rotation rot;
    if (!annihilate(lower.diag[p], lower.diag[q], lower.off[r], rot)) return false;
    c = rot.c;
    s = rot.s;
    t = rot.t;
    tau = rot.tau;
    return true;
}

bool jacobiMethod(const Matrix3& A, double* eigs, UVector3* vecs) {
    Symmetric S = {
        {(A(0, 0) + A(0, 0)) * 0.5, (A(1, 1) + A(1, 1)) * 0.5, (A(2, 2) + A(2, 2)) * 0.5},
        {(A(2, 1) + A(1, 2)) * 0.5, (A(2, 0) + A(0, 2)) * 0.5, (A(1, 0) + A(0, 1)) * 0.5}};
    Vector3 V[3] = {Vector3(1.0, 0.0, 0.0), Vector3(0.0, 1.0, 0.0), Vector3(0.0, 0.0, 1.0)};

    bool converged = false;
    for (int rotations = 0; !converged && rotations < kMaxRotations; ++rotations) {
        const int r = S.pivot();
        const int p = kPivotRow[r];
        const int q = kPivotColumn[r];
        Rotation rot;
        if (!annihilate(S.diag[p], S.diag[q], S.off[r], rot)) {
            converged = true;
            break;
        }
        S.rotate(p, q, r, rot);
        const Vector3 vp = V[p];
        const Vector3 vq = V[q];
        V[p] = vp * rot.c - vq * rot.s;
        V[q] = vp * rot.s + vq * rot.c;
        converged = !(S.offDiagonalSum() > kOffDiagonalTol);
    }

    const auto order = [&S, &V](int i, int j) {
        if (S.diag[i] > S.diag[j]) {
            std::swap(S.diag[i], S.diag[j]);
            std::swap(V[i], V[j]);
        }
    };
    for (int pass = 0; pass < 3; ++pass) {
        order(0, 1);
        order(1, 2);
    }
    for (int k = 0; k < 3; ++k) {
        if (eigs != nullptr) eigs[k] = S.diag[k];
        if (vecs != nullptr) vecs[k] = UVector3(V[k]);
    }
    return converged;
}
