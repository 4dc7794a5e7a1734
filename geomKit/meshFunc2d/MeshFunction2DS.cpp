// The saved form of mesh functions. The S in the file's name stands for serialization.
#include <memory>
#include <string>

#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/vect2S.h"
#include "geomKit/tags/MemberField.h"
#include "geomKit/tags/SequenceTypeHandler.h"
#include "geomKit/tags/SerializableFactory.h"
#include "geomKit/tags/SimpleTypeHandler.h"
#include "geomKit/tags/getSingularName.h"

namespace geomKit {

namespace {

const std::string kClassName = "MeshFunction2D";

/// The field of a sequence, its elements named with the singular of its name.
template <typename T>
boost::intrusive_ptr<Field> _sequence(const std::string& name,
                                      std::vector<T> MeshFunction2D::*member) {
    using Handler = SequenceTypeHandler<SimpleTypeHandler<T>>;
    return new MemberField(name, MemberAccessor(member), Handler(getSingularName(name)));
}

ClassDesc _describe(const ClassDesc& base) {
    const MemberAccessor flag(&MeshFunction2D::extrapolateFlag);
    ClassDesc desc(kClassName);
    desc.add(new CompositeField("super", base));
    desc.add(_sequence("params", &MeshFunction2D::params));
    desc.add(_sequence("values", &MeshFunction2D::values));
    desc.add(_sequence("normaldots", &MeshFunction2D::normaldots));
    desc.add(_sequence("facets", &MeshFunction2D::facets));
    desc.add(new MemberField("extrapolateFlag", flag, SimpleTypeHandler<bool>()));
    return desc;
}

}  // namespace

template <>
std::unique_ptr<Serializable> SerializableFactory<MeshFunction2D>::create() const {
    return std::make_unique<MeshFunction2D>(false);
}

namespace {

/// Registers the class when the library is loaded.
const SerializableFactory<MeshFunction2D> kFactory(kClassName);

}  // namespace

const boost::intrusive_ptr<CompositeField>& MeshFunction2D::classField() const {
    static const boost::intrusive_ptr<CompositeField> field(
        new CompositeField(kClassName, _describe(Serializable::classField()->desc())));
    return field;
}

void MeshFunction2D::load(InTag& tag, boost::intrusive_ptr<Field> field) {
    Serializable::load(tag, field);
    initEvaluatorHelper();
}

}  // namespace geomKit
