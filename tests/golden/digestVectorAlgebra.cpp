#include "geomKit/vAlgebra/eigensystem.h"
#include "geomKit/vAlgebra/vectorUtils.h"
#include "tests/golden/Digest.h"

namespace {

constexpr int kSamples = 2000;

void digestVectors() {
    InputSource in(1);
    Digest digest("Vector3");
    for (int i = 0; i < kSamples; ++i) {
        const Vector3 a = in.vector(10.0);
        const Vector3 b = in.vector(10.0);
        const Vector3 c = in.vector(10.0);
        const double s = in.uniform(-3.0, 3.0);
        digest.add((a + b) % (a - c * s));
        digest.add(a / s);
        digest.add(a.normalize());
        digest.add(a.reflect(b, c));
        digest.add(a.isParallel(b, s));
        digest.add(a.isNormal(b, 0.3));
        const Vector3 basis[2] = {b, c};
        Vector3 coords;
        digest.add(a.pullBack(basis, &coords));
        digest.add(coords);
        digest.add(Vector3(0.1 * a.x, 0.1 * a.y, 0.0).isInTriangle(a, b, c));
    }
}

void digestUtilities() {
    InputSource in(2);
    Digest ieee("vectorUtils");
    Digest angles("getAngleBetween", Digest::Arithmetic::MathLibrary);
    for (int i = 0; i < kSamples; ++i) {
        const Vector3 a = in.vector(2.0);
        const Vector3 b = in.vector(2.0);
        const Vector3 c = in.vector(2.0);
        double t = 0.0;
        ieee.add(distSqToLineSegment(a, b, c, &t));
        ieee.add(t);
        ieee.add(dist(a, b));
        ieee.add(projectOnPlane(a, b, c));
        ieee.add(projectOnLine(a, b, c));
        Vector3 e1;
        Vector3 e2;
        getBasis(a.normalize(), e1, e2);
        ieee.add(e1);
        ieee.add(e2);
        ieee.add(samePlane(a, b, a + e1 * 1e-4, b));
        ieee.add(calcCurvature(a, b));
        const Vector3 first[2] = {a, b};
        const Vector3 second[3] = {c, a % b, b % c};
        double curvatures[2] = {0.0, 0.0};
        ieee.add(principalCurvatures(first, second, &curvatures[0], &curvatures[1]));
        ieee.add(curvatures[0]);
        ieee.add(curvatures[1]);
        angles.add(getAngleBetween(a, b, c));
    }
}

void digestMatrices() {
    InputSource in(3);
    Digest ieee("Matrix3");
    Digest rotations("Matrix3 rotations", Digest::Arithmetic::MathLibrary);
    for (int i = 0; i < kSamples; ++i) {
        const Matrix3 m = in.matrix(1.0);
        const Matrix3 n = in.matrix(1.0);
        ieee.add(m * n + m.transpose() * 0.3);
        ieee.add(m.inverse());
        ieee.add(m * in.vector(5.0));
        UVector3 null[3];
        ieee.add(Matrix3(m.column(0), m.column(1), m.column(0) * 2.0).getNullspace(null, false));
        for (const UVector3& v : null)
            ieee.add(v);
        const double eigs[] = {in.uniform(-1.0, 1.0), in.uniform(-1.0, 1.0), 0.5};
        const Vector3 vecs[3] = {n.column(0), n.column(1), n.column(2)};
        ieee.add(Matrix3::getMatrixFromEigs(eigs, vecs));
        double values[3];
        UVector3 axes[3];
        ieee.add(jacobiMethod(m, values, axes));
        for (int k = 0; k < 3; ++k) {
            ieee.add(values[k]);
            ieee.add(axes[k]);
        }
        const UVector3 from = in.vector(1.0);
        const UVector3 to = in.vector(1.0);
        const Matrix3 rotation = Matrix3::rotationMatrix(from, in.uniform(-4.0, 4.0));
        rotations.add(rotation);
        rotations.add(Matrix3::rotationMatrix(from, to));
        rotations.add(rotation.getRotationAxis());
        rotations.add(rotation.getRotationAngle(nullptr));
    }
}

}  // namespace

void digestVectorAlgebra() {
    digestVectors();
    digestUtilities();
    digestMatrices();
}
