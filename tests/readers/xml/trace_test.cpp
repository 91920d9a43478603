// The log files of loads, whole.

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/readers/xml/XMLHandlerFixture.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

/// A reader that logs everything, on 5 March at 9:07.
class XmlTrace : public XMLHandlerFixture {
protected:
    XmlTrace() {
        logger_.setLevel(LOG_DEBUG);
        xml_.selectedCount = 2;
    }

    static std::string log() {
        std::ifstream file("2026-03-05-0907-Intake.log");
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    TempWorkingDirectory directory_;
};

TEST_F(XmlTrace, OfAFile) {
    EXPECT_TRUE(read());
    EXPECT_EQ(log(),
              "5/3 9:7 DEBUG: \t\t\tXML: fixtures.xml\n"
              "5/3 9:7 DEBUG: \t\t\tBefore CreateInstance\n"
              "5/3 9:7 DEBUG: \t\t\tBefore load\n"
              "5/3 9:7 DEBUG: \t\t\tBefore selectNodes()\n"
              "5/3 9:7 DEBUG: \t\t\tBefore DATATABLE\n"
              "5/3 9:7 DEBUG: \t\t\tCleanup success=1\n");
}

TEST_F(XmlTrace, OfAUrl) {
    request_.targetMode = DATA_ARRAY;
    for (const char* url : {"http://feeds.example/a.xml", "https://feeds.example/a.xml",
                            "ftp://feeds.example/a.xml"}) {
        const std::string before = log();
        request_.filename = url;
        EXPECT_TRUE(read());
        EXPECT_EQ(log(), before + "5/3 9:7 DEBUG: \t\t\tXML: " + url +
                             "\n"
                             "5/3 9:7 DEBUG: \t\t\tBefore CreateInstance\n"
                             "5/3 9:7 DEBUG: \t\t\tBefore open\n"
                             "5/3 9:7 DEBUG: \t\t\tBefore selectNodes()\n"
                             "5/3 9:7 DEBUG: \t\t\tBefore DATAARRAY\n"
                             "5/3 9:7 DEBUG: \t\t\tCleanup success=1\n");
    }
}

TEST_F(XmlTrace, NamesTheMode) {
    constexpr const char* LINES[] = {"Before DATATABLE\n", "Before DATAARRAY\n",
                                     "Before DATASTRUCTURE\n", "Before DATAFIELDARRAY\n",
                                     "Before SHAREDMEM\n"};
    for (int32_t mode = DATA_TABLE; mode <= SHARED_MEMORY; ++mode) {
        const std::string before = log();
        request_.targetMode = mode;
        EXPECT_TRUE(read());
        EXPECT_EQ(log(), before +
                             "5/3 9:7 DEBUG: \t\t\tXML: fixtures.xml\n"
                             "5/3 9:7 DEBUG: \t\t\tBefore CreateInstance\n"
                             "5/3 9:7 DEBUG: \t\t\tBefore load\n"
                             "5/3 9:7 DEBUG: \t\t\tBefore selectNodes()\n"
                             "5/3 9:7 DEBUG: \t\t\t" +
                             LINES[mode] + "5/3 9:7 DEBUG: \t\t\tCleanup success=1\n");
    }
}

TEST_F(XmlTrace, NamesNoModeWhenThereIsNoRowToWrite) {
    xml_.selectedCount = 0;
    EXPECT_TRUE(read());
    EXPECT_EQ(log(),
              "5/3 9:7 DEBUG: \t\t\tXML: fixtures.xml\n"
              "5/3 9:7 DEBUG: \t\t\tBefore CreateInstance\n"
              "5/3 9:7 DEBUG: \t\t\tBefore load\n"
              "5/3 9:7 DEBUG: \t\t\tBefore selectNodes()\n"
              "5/3 9:7 DEBUG: \t\t\tCleanup success=1\n");
}

TEST_F(XmlTrace, OfADocumentThatCannotBeMade) {
    xml_.failAt("createDocument");
    EXPECT_FALSE(read());
    EXPECT_EQ(log(),
              "5/3 9:7 DEBUG: \t\t\tXML: fixtures.xml\n"
              "5/3 9:7 DEBUG: \t\t\tBefore CreateInstance\n"
              "5/3 9:7 DEBUG: \t\t\tCleanup success=0\n");
}

TEST_F(XmlTrace, OfAFileThatDoesNotLoad) {
    xml_.unreadable = "reason";
    EXPECT_FALSE(read());
    EXPECT_EQ(log(),
              "5/3 9:7 DEBUG: \t\t\tXML: fixtures.xml\n"
              "5/3 9:7 DEBUG: \t\t\tBefore CreateInstance\n"
              "5/3 9:7 DEBUG: \t\t\tBefore load\n"
              "5/3 9:7 DEBUG: \t\t\tCleanup success=0\n");
}

TEST_F(XmlTrace, OfAUrlThatCannotBeOpened) {
    request_.filename = "http://feeds.example/a.xml";
    xml_.failAt("open");
    EXPECT_FALSE(read());
    EXPECT_EQ(log(),
              "5/3 9:7 DEBUG: \t\t\tXML: http://feeds.example/a.xml\n"
              "5/3 9:7 DEBUG: \t\t\tBefore CreateInstance\n"
              "5/3 9:7 DEBUG: \t\t\tBefore open\n"
              "5/3 9:7 DEBUG: \t\t\tCleanup success=0\n");
}

TEST_F(XmlTrace, EndsWithTheCleanupWhenAStepThrows) {
    request_.filename = "http://feeds.example/a.xml";
    xml_.failAt("send");
    EXPECT_THROW(read(), PlatformError);
    EXPECT_EQ(log(),
              "5/3 9:7 DEBUG: \t\t\tXML: http://feeds.example/a.xml\n"
              "5/3 9:7 DEBUG: \t\t\tBefore CreateInstance\n"
              "5/3 9:7 DEBUG: \t\t\tBefore open\n"
              "5/3 9:7 DEBUG: \t\t\tCleanup success=0\n");
}

TEST_F(XmlTrace, EndsWithTheCleanupWhenARowThrows) {
    xml_.failAt("appendKeyText", 2);
    EXPECT_THROW(read(), PlatformError);
    EXPECT_EQ(log(),
              "5/3 9:7 DEBUG: \t\t\tXML: fixtures.xml\n"
              "5/3 9:7 DEBUG: \t\t\tBefore CreateInstance\n"
              "5/3 9:7 DEBUG: \t\t\tBefore load\n"
              "5/3 9:7 DEBUG: \t\t\tBefore selectNodes()\n"
              "5/3 9:7 DEBUG: \t\t\tBefore DATATABLE\n"
              "5/3 9:7 DEBUG: \t\t\tCleanup success=0\n");
}

TEST_F(XmlTrace, AnnouncesEachStepBeforeItIsTaken) {
    struct Step {
        const char* call;
        std::string line;
    };
    for (const Step& step : {Step{"loadFile", "Before load"},
                             {"setSelectionNamespaces", "Before selectNodes()"},
                             {"setKeyExpression", "Before DATATABLE"}}) {
        xml_.failAt(step.call);
        EXPECT_THROW(read(), PlatformError);
        EXPECT_TRUE(log().ends_with("DEBUG: \t\t\t" + step.line +
                                    "\n5/3 9:7 DEBUG: \t\t\tCleanup success=0\n"))
            << log();
    }
}

TEST_F(XmlTrace, HoldsASelectionWithoutANodeListAsAnError) {
    request_.filename = "http://feeds.example/a.xml";
    xml_.selects = false;
    xml_.unreadable = "reason";
    EXPECT_FALSE(read());
    EXPECT_EQ(log(),
              "5/3 9:7 DEBUG: \t\t\tXML: http://feeds.example/a.xml\n"
              "5/3 9:7 DEBUG: \t\t\tBefore CreateInstance\n"
              "5/3 9:7 DEBUG: \t\t\tBefore open\n"
              "5/3 9:7 DEBUG: \t\t\tBefore selectNodes()\n"
              "5/3 9:7 ERROR: \t\t\tNo node set is fetched: reason\n"
              "5/3 9:7 DEBUG: \t\t\tCleanup success=0\n");
}

TEST_F(XmlTrace, IsSilentAtInfo) {
    logger_.setLevel(LOG_INFO);
    EXPECT_TRUE(read());
    EXPECT_FALSE(std::filesystem::exists("2026-03-05-0907-Intake.log"));
}

}  // namespace
}  // namespace intake
