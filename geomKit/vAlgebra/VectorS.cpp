#include "geomKit/vAlgebra/VectorS.h"

namespace geomKit {

const std::array<std::string, 3> SimpleTypeHandler<Vector3>::_attrs = {"x", "y", "z"};

void SimpleTypeHandler<Vector3>::save(const Vector3& value, OutTag& tag) const {
    tag.setAttr(_attrs[0], value.x);
    tag.setAttr(_attrs[1], value.y);
    tag.setAttr(_attrs[2], value.z);
    tag.writeSingleTag();
}

void SimpleTypeHandler<Vector3>::load(Vector3& value, InTag& tag) const {
    tag.readAttr(_attrs[0], value.x);
    tag.readAttr(_attrs[1], value.y);
    tag.readAttr(_attrs[2], value.z);
    tag.readBody(nullptr, {});
}

}  // namespace geomKit
