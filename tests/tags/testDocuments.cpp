#include "host/tags/getSingularName.h"
#include "tests/tags/Rig.h"
#include "tests/tags/documents.h"

namespace {

const std::string kBone =
    "<?xml version=\"1.0\"?>\n<Bone><tip x=\"1\" y=\"2\" z=\"-3.5\"/><children/></Bone>";

/// ASCII text in another encoding, of code units of some bytes, with a byte order mark or without.
std::string encoded(const std::string& text, std::size_t unitSize, bool bigEndian, bool mark) {
    std::string result;
    const auto put = [&](unsigned unit) {
        for (std::size_t i = 0; i < unitSize; ++i) {
            const std::size_t shift = 8 * (bigEndian ? unitSize - 1 - i : i);
            result += static_cast<char>(shift < 32 ? unit >> shift : 0u);
        }
    };
    if (mark) put(0xfeff);
    for (const char c : text)
        put(static_cast<unsigned char>(c));
    return result;
}

void expectBone(const std::string& document) {
    const auto bone = loadedAs<Bone>(document);
    ASSERT_NE(bone, nullptr) << document;
    EXPECT_EQ(bone->tip.x, 1.0) << document;
    EXPECT_EQ(bone->tip.y, 2.0) << document;
    EXPECT_EQ(bone->tip.z, -3.5) << document;
    EXPECT_TRUE(bone->children.empty()) << document;
}

TEST(Documents, everyLegalWayOfWritingOne) {
    const char* const variants[] = {
        "<Bone><tip z='-3.5' y='2' x='1'/><children/></Bone>",
        "<Bone><tip y='2' x='1' z='-3.5'/><children/></Bone>",
        "<Bone><children></children><tip x = '1'\n y='2'\tz='-3.5' ></tip></Bone>",
        "<!-- a --><Bone ><!-- b --><tip x='1' y='2' z='-3.5'><!-- <x/> --></tip>"
        "<children><!-- c --></children></Bone><!-- d -->",
        "<?xml version='1.0'?><?target data?><!DOCTYPE Bone [<!ENTITY e 'x'><!ELEMENT Bone ANY>]>"
        "<Bone><?p?><tip x='1' y='2' z='-3.5'/><children><![CDATA[ ]]></children></Bone>\n\n",
        "<Bone><tip x='&#49;' y='&#x32;' z='&#45;3.5'/><children>&#32;</children></Bone>",
        "\xEF\xBB\xBF<Bone><tip x='1' y='2' z='-3.5'/><children/></Bone>",
        "<?xml version='1.0' encoding='ISO-8859-1'?><!-- \xE9 -->"
        "<Bone><tip x='1' y='2' z='-3.5'/><children/></Bone>",
        "<?xml version='1.0'?>\r\n<Bone>\r\n\t<tip x='1' y='2'\r\n z=' -3.5 '/>\r\n<children>\r\n"
        "</children>\r\n</Bone>\r\n",
    };
    for (const char* variant : variants)
        expectBone(variant);
    for (const bool mark : {true, false}) {
        expectBone(encoded(kBone, 2, false, mark));
        expectBone(encoded(kBone, 2, true, mark));
        expectBone(encoded(kBone, 4, false, mark));
        expectBone(encoded(kBone, 4, true, mark));
    }
}

TEST(Documents, textInPieces) {
    const auto rig = loadedAs<Rig>(
        "<Rig><super><tip x='0' y='0' z='0'/><children/></super><path/>"
        "<shape><params/><values/><normaldots/><facets>"
        "<facet> 1<!-- a -->2 </facet><facet><![CDATA[3]]>4</facet><facet>\n+5\n</facet></facets>"
        "<extrapolateFlag> 1 </extrapolateFlag></shape>"
        "<weight>&#45;<![CDATA[inf]]></weight><count>&#x31;&#48;</count></Rig>");
    EXPECT_EQ(rig->shape.facets, (std::vector<int>{12, 34, 5}));
    EXPECT_TRUE(rig->shape.extrapolateFlag);
    EXPECT_EQ(rig->weight, -std::numeric_limits<float>::infinity());
    EXPECT_EQ(rig->count, 10);
}

TEST(Documents, problemsAreLocatedInEveryEncoding) {
    // The comment has characters of two, three and four bytes of UTF-8, and as UTF-16 of one unit
    // and of two; the faulty tag starts at line 2, column 14.
    const std::string utf8 = "<Bone>\r\n<!--\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80 --><oops/></Bone>";
    const std::u16string wide = u"<Bone>\r\n<!--\u00e9\u20ac\U0001F600 --><oops/></Bone>";
    std::string utf16 = "\xFE\xFF";
    for (const char16_t unit : wide) {
        utf16 += {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xff)};
    }
    for (const std::string& document : {utf8, utf16}) {
        LoadReport report;
        loadedAs<Bone>(document, &report);
        ASSERT_FALSE(report.isClean());
        EXPECT_EQ(report.problems[0].text(),
                  "line 2, column 12, Bone/oops: unknown tag; it was skipped with its content");
    }
}

TEST(Documents, otherClassesWithObjectsWithinObjects) {
    Rig rig;
    rig.tip = {1, 2, 3};
    rig.children.resize(2);
    rig.children[1].tip.x = 0.25;
    rig.children[1].children.resize(1);
    rig.path = {{0.1, 0.2, 0.3}, {-4, 5, -6e100}};
    rig.shape.params = {{0, 0}, {1, 0}, {0, 1}};
    rig.shape.values = rig.shape.params;
    rig.shape.facets = {0, 1, 2};
    rig.shape.extrapolateFlag = true;
    rig.weight = 1e-42f;
    rig.count = -7;
    const std::string text = saved(rig);
    const auto loaded = loadedAs<Rig>(text);
    EXPECT_EQ(saved(*loaded), text);
    ASSERT_EQ(loaded->children.size(), 2u);
    EXPECT_EQ(loaded->children[1].children.size(), 1u);
    EXPECT_EQ(loaded->path[1].z, -6e100);
    EXPECT_EQ(loaded->count, -7);
    EXPECT_EQ(loaded->shape.boundaries.size(), 1u) << "the member's own load was not called";
}

TEST(Documents, attributesAndTextOfAnyCharacters) {
    std::ostringstream out;
    {
        OutTag tag(out, "tag");
        tag.setAttr("b", "replaced");
        tag.setAttr("a", "<'\"&>\n\x01");
        tag.setAttr("b", "\xC3\xA9");
        EXPECT_EQ(tag.getAttr("b"), "\xC3\xA9");
        EXPECT_EQ(tag.getAttr("c").data(), nullptr);
        tag.writeOpenTag(false);
        tag.writeText("]]> & \r");
        tag.writeCloseTag(false);
    }
    EXPECT_EQ(out.str(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<tag b=\"\xC3\xA9\" a=\"&lt;'&quot;&amp;&gt;&#10;&#1;\">]]&gt; &amp; &#13;</tag>\n");
}

TEST(Documents, singularNames) {
    std::istringstream pairs(
        "params param values value facets facet normaldots normaldot vertices vertex "
        "boneIndices boneIndex matrices matrix bodies body boxes box patches patch meshes mesh "
        "classes class bones bone curves curve halves half children child cellChildren cellChild "
        "axes axis statuses status radius radius class class axis axis data data series series "
        "houses house edges edge caches cache valves valve s s");
    std::string plural;
    std::string singular;
    while (pairs >> plural >> singular)
        EXPECT_EQ(getSingularName(plural), singular);
    EXPECT_EQ(getSingularName(""), "");
}

}  // namespace
