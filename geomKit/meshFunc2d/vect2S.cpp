#include "geomKit/meshFunc2d/vect2S.h"

namespace geomKit {

using Vect2 = ktNM::vect2<double>;

const std::array<std::string, 2> SimpleTypeHandler<Vect2>::_attrs = {"u", "v"};

void SimpleTypeHandler<Vect2>::save(const Vect2& value, OutTag& tag) const {
    tag.setAttr(_attrs[0], value.u);
    tag.setAttr(_attrs[1], value.v);
    tag.writeSingleTag();
}

void SimpleTypeHandler<Vect2>::load(Vect2& value, InTag& tag) const {
    tag.readAttr(_attrs[0], value.u);
    tag.readAttr(_attrs[1], value.v);
    tag.readBody(nullptr, {});
}

}  // namespace geomKit
