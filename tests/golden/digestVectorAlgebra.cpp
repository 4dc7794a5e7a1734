#include "tests/golden/Digest.h"

using namespace geomKit;

namespace {

void addVectors(Digest& digest, InputSource& in, int /*i*/) {
    const auto [a, b, c] = in.vectors<3>(10.0);
    const double s = in.uniform(-3.0, 3.0);
    digest.add((a + b) % (a - c * s), a / s, a.normalize(), a.reflect(b, c), a.isParallel(b, s),
               a.isNormal(b, 0.3));
    const Vector3 basis[2] = {b, c};
    Vector3 coords;
    digest.add(a.pullBack(basis, &coords), coords,
               Vector3(0.1 * a.x, 0.1 * a.y, 0.0).isInTriangle(a, b, c));
}

void addUtilities(Digest& digest, InputSource& in, int /*i*/) {
    const auto [a, b, c] = in.vectors<3>(2.0);
    double t = 0.0;
    digest.add(distSqToLineSegment(a, b, c, &t), t, dist(a, b), projectOnPlane(a, b, c),
               projectOnLine(a, b, c));
    Vector3 e1, e2;
    getBasis(a.normalize(), e1, e2);
    digest.add(e1, e2, samePlane(a, b, a + e1 * 1e-4, b), calcCurvature(a, b));
    const Vector3 first[2] = {a, b}, second[3] = {c, a % b, b % c};
    double k[2] = {0.0, 0.0};
    digest.add(principalCurvatures(first, second, &k[0], &k[1]), k);
    digest.addMath(getAngleBetween(a, b, c));
}

void addMatrices(Digest& digest, InputSource& in, int /*i*/) {
    const Matrix3 m = in.matrix(1.0), n = in.matrix(1.0);
    digest.add(m * n + m.transpose() * 0.3, m.inverse(), m * in.vector(5.0));
    UVector3 null[3];
    const Matrix3 flat(m.column(0), m.column(1), m.column(0) * 2.0);
    digest.add(flat.getNullspace(null, false), null);
    const double eigs[] = {in.uniform(-1.0, 1.0), in.uniform(-1.0, 1.0), 0.5};
    const Vector3 vecs[3] = {n.column(0), n.column(1), n.column(2)};
    digest.add(Matrix3::getMatrixFromEigs(eigs, vecs));
    double values[3];
    UVector3 axes[3];
    digest.add(jacobiMethod(m, values, axes));
    for (int k = 0; k < 3; ++k)
        digest.add(values[k], axes[k]);
    const UVector3 from = in.vector(1.0), to = in.vector(1.0);
    const Matrix3 rotation = Matrix3::rotationMatrix(from, in.uniform(-4.0, 4.0));
    digest.addMath(rotation, Matrix3::rotationMatrix(from, to), rotation.getRotationAxis(),
                   rotation.getRotationAngle(nullptr));
}

}  // namespace

void digestVectorAlgebra() {
    sample("Vector3", 1, 2000, addVectors);
    sample("vectorUtils", 2, 2000, addUtilities);
    sample("Matrix3", 3, 2000, addMatrices);
}
