/// @file
/// A host's own vector, of the name that the library's has in its namespace.
#pragma once

#include <cmath>

struct Vector3 {
    float x;
    float y;
    float z;

    float length() const { return std::sqrt(x * x + y * y + z * z); }
    bool operator==(const Vector3& v) const { return x == v.x && y == v.y && z == v.z; }
};

float hostLength(const Vector3& v);
double libraryLength(double x, double y, double z);
