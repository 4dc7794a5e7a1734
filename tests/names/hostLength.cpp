#include "tests/names/hostVector.h"

float hostLength(const Vector3& v) {
    return v.length();
}
