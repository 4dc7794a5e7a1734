#include <fstream>

#include "geomKit/tags/getSingularName.h"
#include "tests/tags/Rig.h"
#include "tests/tags/documents.h"

using namespace geomKit;

namespace {

const std::string kBone =
    "<?xml version='1.0'?>\r\n<Bone><tip x='1'\r\n y='2' z='-3.5'/><children/></Bone>\r\n";

/// The code units of a text as units of some bytes, with a byte order mark or without.
std::string encoded(std::u16string_view text, std::size_t unitSize, bool bigEndian, bool mark) {
    std::string result;
    const auto put = [&](unsigned unit) {
        for (std::size_t i = 0; i < unitSize; ++i) {
            const std::size_t shift = 8 * (bigEndian ? unitSize - 1 - i : i);
            result += static_cast<char>(shift < 32 ? unit >> shift : 0u);
        }
    };
    if (mark) put(0xfeff);
    for (const char16_t unit : text)
        put(unit);
    return result;
}

TEST(Documents, InEveryEncoding) {
    std::vector<std::string> documents = {
        "\xEF\xBB\xBF" + kBone, "<?xml version='1.0' encoding='ISO-8859-1'?><!-- \xE9 -->" +
                                    kBone.substr(kBone.find("<Bone"))};
    const std::u16string units(kBone.begin(), kBone.end());
    for (const std::size_t unitSize : {1u, 2u, 4u}) {
        for (const bool bigEndian : {false, true}) {
            for (const bool mark : {false, unitSize > 1})
                documents.push_back(encoded(units, unitSize, bigEndian, mark));
        }
    }
    const std::string expected = saved(*loadedAs<Bone>(kBone));
    for (const std::string& document : documents) {
        EXPECT_EQ(saved(*loadedAs<Bone>(document)), expected) << document;
    }
}

TEST(Documents, ProblemsAreLocatedInEveryEncoding) {
    // The comment has characters of two, three and four bytes of UTF-8, and as UTF-16 of one unit
    // and of two; the faulty tag starts at line 2, column 12.
    const std::string utf8 = "<Bone>\r\n<!--\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80 --><oops/></Bone>";
    const std::u16string wide = u"<Bone>\r\n<!--\u00e9\u20ac\U0001F600 --><oops/></Bone>";
    for (const std::string& document : {utf8, encoded(wide, 2, true, true)}) {
        LoadReport report;
        loadedAs<Bone>(document, &report);
        ASSERT_FALSE(report.isClean());
        EXPECT_EQ(report.problems[0].text(),
                  "line 2, column 12, Bone/oops: unknown tag; it was skipped with its content");
    }
}

TEST(Documents, OtherClassesWithObjectsWithinObjects) {
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
    EXPECT_EQ(loaded->count, -7);
    EXPECT_EQ(loaded->shape.boundaries.size(), 1u) << "the member's own load was not called";
}

TEST(Documents, AttributesAndTextOfAnyCharacters) {
    std::ostringstream out;
    {
        OutTag tag(out, "tag");
        tag.setAttr("b", "replaced");
        tag.setAttr("a", "<'\"&>\n\x01");
        tag.setAttr("b", "\xC3\xA9");
        EXPECT_EQ(tag.getAttr("b"), "\xC3\xA9");
        EXPECT_EQ(tag.getAttr("c").data(), nullptr);
        tag.setAttr("d", tag.getAttr("b"));
        tag.writeOpenTag(false);
        tag.writeText("]]> & \r");
        tag.writeCloseTag(false);
    }
    EXPECT_EQ(out.str(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<tag b=\"\xC3\xA9\" a=\"&lt;'&quot;&amp;&gt;&#10;&#1;\" d=\"\xC3\xA9\">]]&gt; &amp; "
              "&#13;</tag>\n");
}

TEST(Documents, SingularNames) {
    std::ifstream pairs(GEOMKIT_TEST_FOLDER "/names.txt");
    std::string plural, singular;
    EXPECT_EQ(getSingularName(""), "");
    while (pairs >> plural >> singular)
        EXPECT_EQ(getSingularName(plural), singular);
    EXPECT_EQ(plural, "s") << "the table was not read to its end";
}

}  // namespace
