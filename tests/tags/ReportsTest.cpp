// What is loaded from documents, and the report that wrong ones must give.
#include <fstream>

#include "tests/tags/Rig.h"
#include "tests/tags/documents.h"

using namespace geomKit;

namespace {

std::string nested(int levels, const std::string& open, const std::string& close) {
    std::string result;
    for (int i = 0; i < levels; ++i)
        result += open;
    for (int i = 0; i < levels; ++i)
        result += close;
    return result;
}

TEST(Reports, LegalAndFaultyDocuments) {
    std::ifstream table(GEOMKIT_TEST_FOLDER "/documents.txt");
    std::string line;
    const auto block = [&](const char* end) {
        std::string result;
        while (std::getline(table, line) && line != end)
            result += line + '\n';
        return result;
    };
    block("----");
    int count = 0;
    for (std::string document; !(document = block("====")).empty(); ++count) {
        std::istringstream expected(block("----"));
        const LoadedDocument loaded = loadDocumentText(document);
        std::string report;
        while (std::getline(expected, line)) {
            if (line == "nothing") {
                EXPECT_EQ(loaded.object, nullptr) << document;
            } else if (line.rfind("saved: ", 0) == 0) {
                ASSERT_NE(loaded.object, nullptr) << document;
                EXPECT_NE(saved(*loaded.object).find(line.substr(7)), std::string::npos) << line;
            } else {
                report += line + '\n';
            }
        }
        EXPECT_EQ(loaded.report.text(), report) << document;
    }
    EXPECT_EQ(count, 26);
}

TEST(Reports, TheClassThatWasFoundAndTheOneThatWasWanted) {
    struct NoFactory : Serializable {};
    EXPECT_TRUE(loadDocumentText<Bone>(saved(Rig()))) << "a derived class fits";
    const std::string document = "\n <Bone/>";
    const LoadedDocument<Rig> loaded = loadDocumentText<Rig>(document);
    EXPECT_FALSE(loaded);
    EXPECT_EQ(loaded.text(),
              "line 2, column 2, Bone: class \"Bone\" was found where class \"Rig\" was wanted; "
              "nothing was loaded");
    EXPECT_FALSE(loadDocumentText<NoFactory>(document));
}

TEST(Reports, ATagWithAnEmptyReaderIsSkippedInSilence) {
    struct Renewed : Serializable {
        void load(InTag& tag, boost::intrusive_ptr<Field> /*field*/) override {
            tag.readBody(nullptr, {{"old", nullptr}});
        }
    };
    const SerializableFactory<Renewed> factory("Renewed");
    EXPECT_EQ(loadDocumentText("<Renewed><old a='1'>2</old></Renewed>").text(),
              "loaded without problems");
}

TEST(Reports, TooDeepTooManyAndAZeroByte) {
    const std::string tip = "<tip x='0' y='0' z='0'/>";
    LoadReport report;
    loadedAs<Bone>("<Bone>" + tip + "<children/>" + nested(300, "<a>", "</a>") + "</Bone>",
                   &report);
    EXPECT_EQ(report.text(),
              "line 1, column 42, Bone/a: unknown tag that holds tags nested more than 256 deep; "
              "it was skipped with its content\n");

    // A class that holds itself: below the root, "children" and "child" alternate.
    const auto bone = loadedAs<Bone>(
        "<Bone>" + tip + nested(400, "<children><child>" + tip, "</child></children>") + "</Bone>",
        &report);
    int depth = 1;
    for (const Bone* b = bone.get(); !b->children.empty(); b = &b->children[0])
        depth += 2;
    EXPECT_EQ(depth, 255);
    EXPECT_NE(report.text().find("tag nested more than 256 deep"), std::string::npos);

    loadedAs<Bone>(
        "<Bone>" + tip + "<children>" + nested(1000, "<kid/>", "") + "</children></Bone>", &report);
    EXPECT_EQ(report.problems.size(), LoadReport::kMaxProblems);
    EXPECT_EQ(report.omitted, 1000 - LoadReport::kMaxProblems);

    const LoadedDocument cut = loadDocumentText("<Bone>" + tip + "</Bone>\n" + '\0' + "<x/>");
    EXPECT_FALSE(cut);
    EXPECT_EQ(cut.text(), "line 2, column 1, not well-formed: a zero byte; nothing was loaded");
}

}  // namespace
