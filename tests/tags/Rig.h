/// @file
/// Classes of a host: a recursive one, and one derived from it that holds objects of other kinds.
#pragma once

#include <vector>

#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/tags/CompositeTypeHandler.h"
#include "geomKit/tags/MemberField.h"
#include "geomKit/tags/SequenceTypeHandler.h"
#include "geomKit/tags/SerializableFactory.h"
#include "geomKit/tags/SimpleTypeHandler.h"
#include "geomKit/vAlgebra/VectorS.h"

namespace geomKit {

class Bone : public Serializable {
public:
    Vector3 tip;
    std::vector<Bone> children;

    const boost::intrusive_ptr<CompositeField>& classField() const override {
        static const boost::intrusive_ptr<CompositeField> field = [] {
            const MemberAccessor childrenOf(&Bone::children);
            const SequenceTypeHandler<CompositeTypeHandler<Bone>> list("child");
            ClassDesc desc("Bone");
            desc.add(
                new MemberField("tip", MemberAccessor(&Bone::tip), SimpleTypeHandler<Vector3>()));
            desc.add(new MemberField("children", childrenOf, list));
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
        const SequenceTypeHandler<SimpleTypeHandler<Vector3>> points("point");
        const CompositeTypeHandler<MeshFunction2D> shapes;
        ClassDesc desc("Rig");
        desc.add(new CompositeField("super", base));
        desc.add(new MemberField("path", MemberAccessor(&Rig::path), points));
        desc.add(new MemberField("shape", MemberAccessor(&Rig::shape), shapes));
        desc.add(
            new MemberField("weight", MemberAccessor(&Rig::weight), SimpleTypeHandler<float>()));
        desc.add(new MemberField("count", MemberAccessor(&Rig::count), SimpleTypeHandler<int>()));
        return desc;
    }
};

inline const SerializableFactory<Bone> kBoneFactory("Bone");
inline const SerializableFactory<Rig> kRigFactory("Rig");

}  // namespace geomKit
