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

class Bone : public geomKit::Serializable {
public:
    geomKit::Vector3 tip;
    std::vector<Bone> children;

    const boost::intrusive_ptr<geomKit::CompositeField>& classField() const override {
        static const boost::intrusive_ptr<geomKit::CompositeField> field = [] {
            const geomKit::MemberAccessor tipOf(&Bone::tip);
            const geomKit::MemberAccessor childrenOf(&Bone::children);
            const geomKit::SequenceTypeHandler<geomKit::CompositeTypeHandler<Bone>> list("child");
            geomKit::ClassDesc desc("Bone");
            desc.add(new geomKit::MemberField("tip", tipOf,
                                              geomKit::SimpleTypeHandler<geomKit::Vector3>()));
            desc.add(new geomKit::MemberField("children", childrenOf, list));
            return new geomKit::CompositeField("Bone", desc);
        }();
        return field;
    }
};

class Rig : public Bone {
public:
    std::vector<geomKit::Vector3> path;
    geomKit::MeshFunction2D shape{false};
    float weight = 0.5f;
    int count = 1;

    const boost::intrusive_ptr<geomKit::CompositeField>& classField() const override {
        static const boost::intrusive_ptr<geomKit::CompositeField> field(
            new geomKit::CompositeField("Rig", describe(Bone::classField()->desc())));
        return field;
    }

private:
    static geomKit::ClassDesc describe(const geomKit::ClassDesc& base) {
        const geomKit::SequenceTypeHandler<geomKit::SimpleTypeHandler<geomKit::Vector3>> points(
            "point");
        const geomKit::CompositeTypeHandler<geomKit::MeshFunction2D> shapes;
        geomKit::ClassDesc desc("Rig");
        desc.add(new geomKit::CompositeField("super", base));
        desc.add(new geomKit::MemberField("path", geomKit::MemberAccessor(&Rig::path), points));
        desc.add(new geomKit::MemberField("shape", geomKit::MemberAccessor(&Rig::shape), shapes));
        desc.add(new geomKit::MemberField("weight", geomKit::MemberAccessor(&Rig::weight),
                                          geomKit::SimpleTypeHandler<float>()));
        desc.add(new geomKit::MemberField("count", geomKit::MemberAccessor(&Rig::count),
                                          geomKit::SimpleTypeHandler<int>()));
        return desc;
    }
};

inline const geomKit::SerializableFactory<Bone> kBoneFactory("Bone");
inline const geomKit::SerializableFactory<Rig> kRigFactory("Rig");
