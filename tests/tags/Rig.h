/// @file
/// Classes of a host: a recursive one, and one derived from it that holds objects of other kinds.
#pragma once

#include <vector>

#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/vAlgebra/VectorS.h"
#include "host/tags/CompositeTypeHandler.h"
#include "host/tags/MemberField.h"
#include "host/tags/SequenceTypeHandler.h"
#include "host/tags/SerializableFactory.h"
#include "host/tags/SimpleTypeHandler.h"
#include "host/tags/getSingularName.h"

/// A field whose class and member type follow from the member.
template <typename Class, typename T, typename Handler>
boost::intrusive_ptr<Field> makeField(const char* name, T Class::*member, Handler handler) {
    return new MemberField<Class, T>(name, MemberAccessor<Class, T>(member), handler);
}

class Bone : public Serializable {
public:
    Vector3 tip;
    std::vector<Bone> children;

    const boost::intrusive_ptr<CompositeField>& classField() const override {
        static const boost::intrusive_ptr<CompositeField> field = [] {
            using Children = SequenceTypeHandler<CompositeTypeHandler<Bone>>;
            ClassDesc desc("Bone");
            desc.add(makeField("tip", &Bone::tip, SimpleTypeHandler<Vector3>()));
            desc.add(makeField("children", &Bone::children, Children(getSingularName("children"))));
            return new CompositeField("Bone", desc);
        }();
        return field;
    }
};

class Rig : public Bone {
public:
    std::vector<Vector3> path;
    MeshFunction2D shape{false};
    float weight = 0.5f;
    int count = 1;

    const boost::intrusive_ptr<CompositeField>& classField() const override {
        static const boost::intrusive_ptr<CompositeField> field(
            new CompositeField("Rig", describe(Bone::classField()->desc())));
        return field;
    }

private:
    static ClassDesc describe(const ClassDesc& base) {
        using Path = SequenceTypeHandler<SimpleTypeHandler<Vector3>>;
        ClassDesc desc("Rig");
        desc.add(new CompositeField("super", base));
        desc.add(makeField("path", &Rig::path, Path("point")));
        desc.add(makeField("shape", &Rig::shape, CompositeTypeHandler<MeshFunction2D>()));
        desc.add(makeField("weight", &Rig::weight, SimpleTypeHandler<float>()));
        desc.add(makeField("count", &Rig::count, SimpleTypeHandler<int>()));
        return desc;
    }
};

inline const SerializableFactory<Bone> kBoneFactory("Bone");
inline const SerializableFactory<Rig> kRigFactory("Rig");
