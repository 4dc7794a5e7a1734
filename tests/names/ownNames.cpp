// A host with classes of the library's names, declared before its header or, with INCLUDED_FIRST,
// after it.
#ifdef INCLUDED_FIRST
#include <geomKit/geomKit.h>
#endif

struct Vector3 {
    float x, y, z;
};
struct Matrix {
    float entries[16];
};
struct Transform {
    Matrix matrix;
};
struct Field {
    int width;
};
struct Tag {
    const char* text;
};
inline double dist(const Vector3& a, const Vector3& b) {
    return static_cast<double>(b.x - a.x);
}

#ifndef INCLUDED_FIRST
#include <geomKit/geomKit.h>
#endif

int main() {
    const Vector3 host = {1.0F, 2.0F, 3.0F};
    const geomKit::Vector3 ours(host.x, host.y, host.z);
    const Transform hostTransform = {};
    const geomKit::Transform identity;
    const Field field = {1};
    const Tag tag = {"a"};
    const bool areApart = sizeof host != sizeof ours && sizeof hostTransform != sizeof identity &&
                          sizeof(Matrix) != sizeof(geomKit::Matrix) && field.width == 1 &&
                          tag.text[0] == 'a';
    return areApart && dist(host, {2.0F, 0.0F, 0.0F}) == 1.0 && dist(ours, ours) == 0.0 ? 0 : 1;
}
