// The saved form of mesh functions.
#include <memory>
#include <string>

#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/vect2S.h"
#include "host/tags/MemberField.h"
#include "host/tags/SequenceTypeHandler.h"
#include "host/tags/SerializableFactory.h"
#include "host/tags/SimpleTypeHandler.h"
#include "host/tags/getSingularName.h"

namespace {

const std::string kClassName = "MeshFunction2D";

boost::intrusive_ptr<Field> scalar(const std::string& name, bool MeshFunction2D::*member) {
    using Accessor = MemberAccessor<MeshFunction2D, bool>;
    return new MemberField<MeshFunction2D, bool>(name, Accessor(member), SimpleTypeHandler<bool>());
}

template <typename T>
boost::intrusive_ptr<Field> sequence(const std::string& name,
                                     std::vector<T> MeshFunction2D::*member) {
    using Accessor = MemberAccessor<MeshFunction2D, std::vector<T>>;
    using Handler = SequenceTypeHandler<SimpleTypeHandler<T>>;
    return new MemberField<MeshFunction2D, std::vector<T>>(name, Accessor(member),
                                                           Handler(getSingularName(name)));
}

ClassDesc describe(const ClassDesc& base) {
    ClassDesc desc(kClassName);
    desc.add(new CompositeField("super", base));
    desc.add(sequence("params", &MeshFunction2D::params));
    desc.add(sequence("values", &MeshFunction2D::values));
    desc.add(sequence("normaldots", &MeshFunction2D::normaldots));
    desc.add(sequence("facets", &MeshFunction2D::facets));
    desc.add(scalar("extrapolateFlag", &MeshFunction2D::extrapolateFlag));
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
        new CompositeField(kClassName, describe(Serializable::classField()->desc())));
    return field;
}

void MeshFunction2D::load(InTag& tag, boost::intrusive_ptr<Field> field) {
    Serializable::load(tag, field);
    initEvaluatorHelper();
}
