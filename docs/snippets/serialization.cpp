// The examples of docs/serialization.md.
#include <iostream>
#include <string>
#include <vector>

#include "geomKit/geomKit.h"

using namespace geomKit;

namespace {

const std::string kExpected = R"(<?xml version="1.0" encoding="UTF-8"?>
<Landmark>
  <super/>
  <place x="1" y="2" z="3"/>
  <outlines>
    <outline x="0.5" y="0" z="0"/>
    <outline x="0" y="0.5" z="0"/>
  </outlines>
  <size>0.1</size>
</Landmark>
)";

bool saveAndLoadMesh() {
    using Point = MeshFunction2D::Point;
    const std::vector<Point> corners = {{0, 0}, {1, 0}, {1, 1}};
    const MeshFunction2D mesh(corners, {{0, 0}, {2, 0}, {2, 4}}, {0, 1, 2}, {});
    Point value;

    const SavedDocument saved = saveDocumentFile(mesh, "mesh.xml");
    if (!saved) std::cerr << saved.text() << '\n';

    const LoadedDocument loaded = loadDocumentFile<MeshFunction2D>("mesh.xml");
    if (!loaded.report.isClean()) std::cerr << loaded.text() << '\n';
    if (loaded) loaded.object->evaluate({0.5, 0.25}, &value, nullptr);

    Point original;
    const bool isInside = mesh.evaluate({0.5, 0.25}, &original, nullptr);
    return isInside && value.u == original.u && value.v == original.v;
}

bool saveAndLoadLandmark() {
    class Landmark : public Serializable {
    public:
        Vector3 place;
        std::vector<Vector3> outlines;
        float size = 1.0f;

        const boost::intrusive_ptr<CompositeField>& classField() const override {
            static const boost::intrusive_ptr<CompositeField> field(
                new CompositeField("Landmark", describe(Serializable::classField()->desc())));
            return field;
        }

    private:
        static ClassDesc describe(const ClassDesc& base) {
            using Point = SimpleTypeHandler<Vector3>;
            using Points = SequenceTypeHandler<Point>;
            using Float = SimpleTypeHandler<float>;
            const MemberAccessor placeOf(&Landmark::place);
            const MemberAccessor outlinesOf(&Landmark::outlines);
            const MemberAccessor sizeOf(&Landmark::size);

            ClassDesc desc("Landmark");
            desc.add(new CompositeField("super", base));
            desc.add(new MemberField("place", placeOf, Point()));
            desc.add(new MemberField("outlines", outlinesOf, Points(getSingularName("outlines"))));
            desc.add(new MemberField("size", sizeOf, Float()));
            return desc;
        }
    };

    static const SerializableFactory<Landmark> factory("Landmark");

    Landmark landmark;
    landmark.place = Vector3(1, 2, 3);
    landmark.outlines = {Vector3(0.5, 0, 0), Vector3(0, 0.5, 0)};
    landmark.size = 0.1f;

    const SavedDocumentText saved = saveDocumentText(landmark);
    const LoadedDocument loaded = loadDocumentText<Landmark>(saved.document);

    return saved.document == kExpected && loaded && loaded.report.isClean() &&
           loaded.object->size == landmark.size && loaded.object->outlines.size() == 2;
}

}  // namespace

int main() {
    return saveAndLoadMesh() && saveAndLoadLandmark() ? 0 : 1;
}
