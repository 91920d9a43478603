#include <gtest/gtest.h>

#include "tests/support/TempDirectory.h"
#include "tests/tree/SourceTree.h"
#include "tests/tree/include_rules.h"
#include "tests/tree/text_rules.h"

namespace intake {

namespace {

/// The rules themselves, held against small trees that break them.
class TreeRules : public testing::Test {
protected:
    void write(const std::string& path, const std::string& content) {
        directory_.write(path, content);
    }
    SourceTree tree() const { return readSourceTree(directory_.path()); }

    /// What comes of one file that includes another.
    Violations includeOf(const std::string& includer, const std::string& included) {
        const TempDirectory directory;
        directory.write(includer, "#include \"" + included + "\"\n");
        return forbiddenIncludes(readSourceTree(directory.path()));
    }
    void expectAllowed(const std::string& includer, const std::string& included) {
        EXPECT_EQ(includeOf(includer, included), Violations{});
    }
    void expectForbidden(const std::string& includer, const std::string& included) {
        EXPECT_EQ(includeOf(includer, included),
                  Violations{includer + ":1: must not include " + included});
    }

    TempDirectory directory_;
};

}  // namespace

TEST_F(TreeRules, SourcesAreReadFromTheSourceDirectoriesOnly) {
    write("plugin/a/b.cpp", "");
    write("host/c.h", "");
    write("host/CMakeLists.txt", "");
    write("build/release/d.cpp", "");
    const SourceTree found = tree();
    EXPECT_EQ(found.size(), 2U);
    EXPECT_TRUE(found.contains("plugin/a/b.cpp"));
    EXPECT_TRUE(found.contains("host/c.h"));
}

TEST_F(TreeRules, IncludesAreFoundHoweverTheyAreWritten) {
    write("plugin/a.cpp",
          "#include \"plugin/a.h\"\n"
          "\n"
          "  #  include<vector>  // why\n"
          "// #include \"plugin/b.h\"\n"
          "const char* text = \"#include <x>\";\n");
    const std::vector<Include> includes = tree().at("plugin/a.cpp").includes;
    ASSERT_EQ(includes.size(), 2U);
    EXPECT_EQ(includes[0].path, "plugin/a.h");
    EXPECT_EQ(includes[0].line, 1);
    EXPECT_TRUE(includes[0].quoted);
    EXPECT_EQ(includes[1].path, "vector");
    EXPECT_EQ(includes[1].line, 3);
    EXPECT_FALSE(includes[1].quoted);
}

TEST_F(TreeRules, IncludesFollowTheDirection) {
    expectAllowed("plugin/Intake.h", "host/lumo.h");
    expectAllowed("plugin/Intake.h", "pipeline/IntakeThread.h");
    expectAllowed("plugin/Intake.h", "platform/Platform.h");
    expectAllowed("pipeline/IntakeThread.cpp", "pipeline/WorkerState.h");
    expectAllowed("plugin/Intake.cpp", "readers/Readers.h");
    expectAllowed("readers/Readers.h", "readers/json/JSONHandler.h");
    expectAllowed("readers/json/JSONHandler.cpp", "formats/json/JsonDocument.h");
    expectAllowed("platform/linux/html/ParsedPage.h", "formats/html/Page.h");
    expectAllowed("formats/workbook/Workbook.cpp", "formats/xml/XmlScanner.h");
    expectAllowed("formats/json/json_parse.cpp", "formats/text/utf8.h");
    expectAllowed("workbench/cli/main.cpp", "formats/json/JsonDocument.h");
    expectAllowed("readers/json/JSONHandler.h", "pipeline/ReaderLogger.h");
    expectAllowed("readers/json/JSONHandler.h", "platform/Files.h");
    expectAllowed("pipeline/RDR_FILE.h", "platform/Files.h");
    expectAllowed("workbench/lumo/Host.h", "host/lumo.h");
    expectAllowed("platform/linux/LinuxFiles.h", "platform/Files.h");
    expectAllowed("plugin/Intake.h", "vector");
}

TEST_F(TreeRules, NothingOfTheWorkersSideIncludesThePluginOrTheHost) {
    for (const std::string worker : {"readers/json/a.h", "pipeline/a.h", "pipeline/WorkerState.cpp",
                                     "platform/a.h", "platform/linux/a.cpp"}) {
        expectForbidden(worker, "plugin/Intake.h");
        expectForbidden(worker, "host/lumo.h");
    }
}

TEST_F(TreeRules, ThePlatformIncludesNothingAboveIt) {
    expectForbidden("platform/Files.h", "pipeline/RDR_FILE.h");
    expectForbidden("platform/linux/LinuxFiles.cpp", "readers/json/JSONHandler.h");
}

TEST_F(TreeRules, ThePluginKnowsAllReadersAsOneAndTheWorkerKnowsNone) {
    expectForbidden("pipeline/WorkerState.h", "readers/Readers.h");
    expectForbidden("pipeline/ReaderLogger.h", "readers/json/JSONHandler.h");
    expectForbidden("pipeline/IntakeThread.h", "readers/json/JSONHandler.h");
    expectForbidden("plugin/Intake.cpp", "readers/json/JSONHandler.h");
}

TEST_F(TreeRules, AFormatKnowsNothingButWhatItIsReadFromAndTexts) {
    for (const std::string format : {"formats/text/a.h", "formats/json/a.h", "formats/html/a.h"}) {
        expectForbidden(format, "platform/Files.h");
        expectForbidden(format, "pipeline/ReaderLogger.h");
        expectForbidden(format, "host/lumo.h");
        expectForbidden(format, "formats/workbook/Workbook.h");
        expectForbidden(format, "formats/xml/XmlScanner.h");
    }
    expectForbidden("formats/xml/XmlScanner.h", "formats/workbook/Workbook.h");
    expectForbidden("readers/xml/XMLHandler.cpp", "formats/xml/XmlScanner.h");
}

TEST_F(TreeRules, AFormatNeedsNoHeaderOfTheSystem) {
    write("formats/json/a.h",
          "#include <string>\n#include <rapidjson/reader.h>\n#include <unistd.h>\n"
          "#include <sys/stat.h>\n");
    write("platform/linux/b.h", "#include <unistd.h>\n");
    EXPECT_EQ(foreignHeadersOfFormats(tree()),
              (Violations{"formats/json/a.h:3: must not need unistd.h",
                          "formats/json/a.h:4: must not need sys/stat.h"}));
}

TEST_F(TreeRules, FoldersDoNotIncludeEachOtherInACircle) {
    write("platform/linux/a/x.h", "#include \"platform/linux/b/y.h\"\n");
    write("platform/linux/b/y.h", "\n");
    write("platform/linux/b/z.h", "\n#include \"platform/linux/a/w.h\"\n");
    write("platform/linux/a/w.h", "\n");
    EXPECT_EQ(folderCycles(tree()),
              Violations{"platform/linux/b:2: the include closes the cycle "
                         "platform/linux/a > platform/linux/b > platform/linux/a"});
}

TEST_F(TreeRules, ReadersAndSmallHeadersDoNotIncludeTheWorker) {
    expectForbidden("readers/json/JSONHandler.cpp", "pipeline/IntakeThread.h");
    expectForbidden("readers/json/JSONHandler.cpp", "pipeline/WorkerState.h");
    expectForbidden("pipeline/ReaderLogger.cpp", "pipeline/WorkerState.h");
    expectForbidden("plugin/Intake.cpp", "pipeline/WorkerState.h");
}

TEST_F(TreeRules, TheHostIncludesNothingOfOurs) {
    expectForbidden("host/lumo.h", "plugin/Intake.h");
    expectForbidden("host/lumo.h", "platform/Clock.h");
}

TEST_F(TreeRules, NothingOfTheProductIncludesTheWorkbenchAndItIncludesNothingOfTheProduct) {
    for (const std::string product :
         {"host/a.h", "plugin/a.h", "pipeline/a.h", "readers/a.h", "platform/a.h"}) {
        expectForbidden(product, "workbench/lumo/Host.h");
    }
    expectForbidden("workbench/cli/main.cpp", "plugin/Intake.h");
    expectForbidden("workbench/cli/main.cpp", "pipeline/IntakeThread.h");
    expectForbidden("workbench/cli/main.cpp", "platform/Clock.h");
}

TEST_F(TreeRules, TheProbeKnowsFormatsAndTheWorkbenchOnlyAndNobodyElseKnowsIt) {
    expectAllowed("workbench/probe/recognise.cpp", "formats/html/character_references.h");
    expectAllowed("workbench/probe/recognise.cpp", "workbench/cli/UsageError.h");
    expectAllowed("workbench/commands/load_command.cpp", "workbench/probe/recognise.h");
    for (const std::string product :
         {"plugin/a.h", "pipeline/a.h", "readers/a.h", "platform/a.h", "host/lumo.h"}) {
        expectForbidden("workbench/probe/recognise.cpp", product);
    }
    for (const std::string other : {"plugin/a.h", "formats/html/a.h", "workbench/lumo/Host.h"}) {
        expectForbidden(other, "workbench/probe/recognise.h");
    }
}

TEST_F(TreeRules, ASystemsFolderIsIncludedOnlyFromItself) {
    expectAllowed("platform/linux/LinuxFiles.cpp", "platform/linux/LinuxFiles.h");
    expectForbidden("platform/Files.h", "platform/linux/LinuxFiles.h");
    expectForbidden("platform/windows/WindowsFiles.cpp", "platform/linux/LinuxFiles.h");
    expectForbidden("platform/linux/LinuxFiles.cpp", "platform/windows/WindowsFiles.h");
    expectForbidden("pipeline/RDR_FILE.cpp", "platform/windows/WindowsFiles.h");
}

TEST_F(TreeRules, TestsAndBenchmarksLookAtEverythingAndNobodyLooksAtThem) {
    expectAllowed("tests/a.cpp", "pipeline/WorkerState.h");
    expectAllowed("tests/a.cpp", "workbench/lumo/Host.h");
    expectAllowed("bench/a.cpp", "readers/json/JSONHandler.h");
    expectForbidden("bench/a.cpp", "tests/support/TempDirectory.h");
    expectForbidden("plugin/a.cpp", "tests/support/TempDirectory.h");
    expectForbidden("workbench/cli/a.cpp", "bench/a.h");
}

TEST_F(TreeRules, AForbiddenIncludeInAngleBracketsIsFoundToo) {
    write("platform/a.h", "#pragma once\n\n#include <host/lumo.h>\n");
    EXPECT_EQ(forbiddenIncludes(tree()),
              Violations{"platform/a.h:3: must not include host/lumo.h"});
}

TEST_F(TreeRules, AQuotedIncludeIsNamedFromTheRoot) {
    write("plugin/a.h", "");
    write("plugin/b.cpp",
          "#include \"plugin/a.h\"\n"
          "#include \"a.h\"\n"
          "#include \"../plugin/a.h\"\n"
          "#include <vector>\n");
    EXPECT_EQ(unknownIncludes(tree()),
              (Violations{"plugin/b.cpp:2: \"a.h\" is no file from the root",
                          "plugin/b.cpp:3: \"../plugin/a.h\" is no file from the root"}));
}

TEST_F(TreeRules, TheHeaderOfASourceFileIsItsFirstInclude) {
    for (const char* name : {"a", "b", "c"}) {
        write("plugin/" + std::string(name) + ".h", "");
    }
    write("plugin/a.cpp", "#include \"plugin/a.h\"\n#include <vector>\n");
    write("plugin/b.cpp", "\n#include <vector>\n#include \"plugin/b.h\"\n");
    write("plugin/c.cpp", "");
    write("plugin/without_a_header.cpp", "#include <vector>\n");
    EXPECT_EQ(ownHeadersNotFirst(tree()),
              (Violations{"plugin/b.cpp:2: must include plugin/b.h first",
                          "plugin/c.cpp:1: must include plugin/c.h first"}));
}

TEST_F(TreeRules, ACycleIsNamedWithAllItsFiles) {
    write("plugin/a.h", "#include \"plugin/b.h\"\n");
    write("plugin/b.h", "\n#include \"plugin/c.h\"\n");
    write("plugin/c.h", "\n\n#include \"plugin/a.h\"\n");
    EXPECT_EQ(includeCycles(tree()),
              Violations{"plugin/c.h:3: the include closes the cycle "
                         "plugin/a.h > plugin/b.h > plugin/c.h > plugin/a.h"});
}

TEST_F(TreeRules, AFileThatIncludesItselfIsACycle) {
    write("plugin/a.h", "#include \"plugin/a.h\"\n");
    EXPECT_EQ(includeCycles(tree()),
              Violations{"plugin/a.h:1: the include closes the cycle plugin/a.h > plugin/a.h"});
}

TEST_F(TreeRules, TwoWaysToOneFileAreNoCycle) {
    write("plugin/a.h", "#include \"plugin/b.h\"\n#include \"plugin/c.h\"\n");
    write("plugin/b.h", "#include \"plugin/d.h\"\n");
    write("plugin/c.h", "#include \"plugin/d.h\"\n");
    write("plugin/d.h", "");
    EXPECT_EQ(includeCycles(tree()), Violations{});
}

TEST_F(TreeRules, AConditionOnTheSystemIsFoundHoweverItIsWritten) {
    write("plugin/a.cpp",
          "#ifdef _WIN32\n"
          "#elif defined(__linux__)\n"
          "#endif\n"
          " #  if defined(FEATURE) || \\\n"
          "    defined(__MINGW32__)\n"
          "#endif\n"
          "#ifndef _MSC_VER\n"
          "#endif\n"
          "#if __unix__ // why\n"
          "#endif\n");
    EXPECT_EQ(systemConditions(tree()), (Violations{"plugin/a.cpp:1: asks for _WIN32 here",
                                                    "plugin/a.cpp:2: asks for __linux__ here",
                                                    "plugin/a.cpp:5: asks for __MINGW32__ here",
                                                    "plugin/a.cpp:7: asks for _MSC_VER here",
                                                    "plugin/a.cpp:9: asks for __unix__ here"}));
}

TEST_F(TreeRules, AConditionOnSomethingElseIsFine) {
    write("plugin/a.cpp",
          "#if defined(HOST_IMPLEMENTATION)\n"
          "#include \"platform/linux/a.h\"\n"
          "const char* name = \"_WIN32\";  // not __linux__\n"
          "#endif\n"
          "#define NOT_WIN32_API\n"
          "#ifdef MY_WIN32_TYPE\n"
          "#endif\n");
    EXPECT_EQ(systemConditions(tree()), Violations{});
}

TEST_F(TreeRules, ThePlatformAndTheLinkageMacroMayAskForTheSystem) {
    write("platform/windows/a.h", "#ifdef __MINGW32__\n#endif\n");
    write("host/linkage.h", "#if defined(_WIN32)\n#endif\n");
    write("host/lumo.h", "#if defined(_WIN32)\n#endif\n");
    EXPECT_EQ(systemConditions(tree()), Violations{"host/lumo.h:1: asks for _WIN32 here"});
}

TEST_F(TreeRules, AFunctionThatAsksTheLocaleIsFound) {
    write("formats/a.cpp", "int a = strcasecmp(x, y);\nchar b = std::tolower(c);\n");
    write("formats/b.cpp", "char b = toLower(c);\nint my_isspace = 0;\n");
    write("tests/c.cpp", "int c = isspace(x);\n");
    EXPECT_EQ(localeFunctions(tree()), (Violations{"formats/a.cpp:1: asks the locale by strcasecmp",
                                                   "formats/a.cpp:2: asks the locale by tolower"}));
}

TEST_F(TreeRules, AHeaderWithoutPragmaOnceIsFound) {
    write("plugin/a.h", "#ifndef A_H\n#define A_H\n#endif\n");
    write("plugin/b.h", "// #pragma once\n");
    write("plugin/c.h", "#pragma once\n");
    write("plugin/d.cpp", "");
    EXPECT_EQ(unguardedHeaders(tree()), (Violations{"plugin/a.h:1: has no #pragma once",
                                                    "plugin/b.h:1: has no #pragma once"}));
}

}  // namespace intake
