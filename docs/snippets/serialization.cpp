// The examples of docs/serialization.md.
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "geomKit/vAlgebra/VectorS.h"
#include "host/tags/MemberField.h"
#include "host/tags/SequenceTypeHandler.h"
#include "host/tags/SerializableFactory.h"
#include "host/tags/SimpleTypeHandler.h"
#include "host/tags/getSingularName.h"
#include "host/tags/loadDocument.h"
#include "host/tags/saveDocument.h"

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

}  // namespace

int main() {
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

    std::stringstream document;
    const bool saved = saveDocument(landmark, document);  // false: the stream, or no factory

    const LoadedDocument loaded = loadDocument(document);  // never throws
    const auto* copy = dynamic_cast<const Landmark*>(loaded.object.get());
    const std::string problems = loaded.report.text();  // empty when all was well

    return saved && document.str() == kExpected && problems.empty() && copy != nullptr &&
                   copy->size == landmark.size && copy->outlines.size() == 2
               ? 0
               : 1;
}
