#include "readers/json/JSONHandler.h"
#include "platform/Platform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <stdexcept>
#include <string>

#include "tests/fakes/platform/FakeHttpClient.h"
#include "tests/fakes/platform/FakePlatform.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

/// A reader with its system. The log is off unless a test asks for it.
class JSONHandlerTest : public testing::Test {
protected:
    JSONHandlerTest() {
        logger_.setLevel(-1);
        request_.filename = "feed.json";
        request_.table = "T";
    }

    bool read() { return handler_.Read(request_, script_, error_); }

    void putSource(const std::string& text) { platform_.files.put(request_.filename, text); }

    FakePlatform platform_;
    ReaderLogger logger_{platform_.clock, systemPlatform().textFiles};
    FakeHttpClient client_;
    JSONHandler handler_{logger_, platform_.files, client_, platform_.diagnostics};
    RequestRecord request_;
    std::string script_, error_;
};

TEST_F(JSONHandlerTest, ALoadThatSucceedsLeavesNoErrorAndNoOpenFile) {
    putSource(R"({"a":1})");
    EXPECT_TRUE(read());
    EXPECT_EQ(script_, "T={a=1;};");
    EXPECT_EQ(error_, "");
    EXPECT_EQ(platform_.diagnostics.debugText(), "");
    EXPECT_EQ(platform_.files.openHandles(), 0U);
}

TEST_F(JSONHandlerTest, AFileThatIsTooLargeIsNamed) {
    putSource("[]");
    platform_.files.reportSize(request_.filename, uint64_t{1} << 32);
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "Failed to load JSON file from feed.json.\nThe file has 4 GiB or more.");
}

TEST_F(JSONHandlerTest, TheScriptIsAppendedToWhatStandsThere) {
    putSource("7");
    script_ = "before;";
    EXPECT_TRUE(read());
    EXPECT_EQ(script_, "before;T=7;");
}

TEST_F(JSONHandlerTest, EveryLoadReadsTheFileAfresh) {
    putSource("1");
    EXPECT_TRUE(read());
    putSource("2");
    EXPECT_TRUE(read());
    EXPECT_EQ(script_, "T=1;T=2;");
}

TEST_F(JSONHandlerTest, AByteOrderMarkIsSkipped) {
    putSource("\xEF\xBB\xBF{\"a\":1}");
    EXPECT_TRUE(read());
    EXPECT_EQ(script_, "T={a=1;};");
}

TEST_F(JSONHandlerTest, AZeroCharacterInATextIsInTheScript) {
    using namespace std::string_literals;
    putSource(R"({"a":"x\u0000y"})");
    EXPECT_TRUE(read());
    EXPECT_EQ(script_, "T={a=\"\"x\0y\"\";};"s);
}

TEST_F(JSONHandlerTest, AModeThatDoesNotExistWritesNothing) {
    putSource(R"({"a":1})");
    request_.xpath = "a";
    request_.targetMode = 5;
    EXPECT_TRUE(read());
    EXPECT_EQ(script_, "");
}

TEST_F(JSONHandlerTest, AMillionLevelsAreWritten) {
    constexpr size_t DEPTH = 1000000;
    putSource(std::string(DEPTH, '[') + std::string(DEPTH, ']'));
    EXPECT_TRUE(read());
    std::string expected = "T";
    for (size_t i = 1; i < DEPTH; ++i) {
        expected += "[0-0]={";
    }
    expected += "[0--1]=;";
    for (size_t i = 1; i < DEPTH; ++i) {
        expected += "};";
    }
    EXPECT_TRUE(script_ == expected) << script_.size() << " bytes, not " << expected.size();
}

TEST_F(JSONHandlerTest, AMissingFileIsReportedToTheDebuggerOnly) {
    platform_.files.failAt(FakeFiles::Step::OPEN, "feed.json", "No such file or directory");
    EXPECT_FALSE(read());
    EXPECT_EQ(script_, "");
    EXPECT_EQ(error_, "");
    EXPECT_EQ(platform_.diagnostics.debugText(),
              "ERROR: RDR_FILE::Read() failed: : No such file or directory\n");
}

TEST_F(JSONHandlerTest, AFileWhoseSizeIsUnknownIsReportedToTheDebuggerOnly) {
    putSource("1");
    platform_.files.failAt(FakeFiles::Step::SIZE, "feed.json", "Input/output error");
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "");
    EXPECT_EQ(platform_.diagnostics.debugText(),
              "ERROR: RDR_FILE::Read(): GetFileSizeEx(): : Input/output error\n");
}

TEST_F(JSONHandlerTest, AFileThatCannotBeReadIsReportedToTheDebuggerOnly) {
    putSource("1");
    platform_.files.failAt(FakeFiles::Step::READ, "feed.json", "Input/output error");
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "");
    EXPECT_EQ(platform_.diagnostics.debugText(),
              "ERROR: RDR_FILE::Read(): ReadFile(): : Input/output error\n");
}

TEST_F(JSONHandlerTest, MalformedJsonIsAnErrorThatNamesSourcePlaceAndCause) {
    putSource("{\n  \"a\": 1,\n  \"b\" 2\n}\n");
    EXPECT_FALSE(read());
    EXPECT_EQ(script_, "");
    EXPECT_EQ(error_,
              "Error parsing JSON: feed.json: line 3, column 7: "
              "Missing a colon after a name of object member.");
}

TEST_F(JSONHandlerTest, AnEmptyFileIsAnError) {
    putSource("");
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "Error parsing JSON: feed.json: line 1, column 1: The document is empty.");
}

TEST_F(JSONHandlerTest, AFileInUtf16IsAnError) {
    putSource(std::string("\xFF\xFE{\0}\0", 6));
    EXPECT_FALSE(read());
    EXPECT_EQ(error_, "Error parsing JSON: feed.json: The document is not in UTF-8.");
}

TEST_F(JSONHandlerTest, MalformedJsonIsAnErrorWhateverIsAskedOfIt) {
    putSource("[1,2");
    request_.xpath = "nothing/to[be=found]";
    request_.targetMode = SHARED_MEMORY;
    EXPECT_FALSE(read());
    EXPECT_EQ(script_, "");
    EXPECT_EQ(error_,
              "Error parsing JSON: feed.json: line 1, column 5: "
              "Missing a comma or ']' after an array element.");
}

TEST_F(JSONHandlerTest, AReaderWorksOnAfterAnError) {
    putSource("x");
    EXPECT_FALSE(read());
    putSource("[1]");
    EXPECT_TRUE(read());
    EXPECT_EQ(script_, "T[0-0]=1,;");
}

TEST_F(JSONHandlerTest, OtherExceptionsPassToTheCaller) {
    putSource("1");
    platform_.files.runAt(FakeFiles::Step::READ, "feed.json", [] { throw std::bad_alloc(); });
    EXPECT_THROW(read(), std::bad_alloc);
}

/// Keeps the transport's progress off the standard output, also when it throws.
struct QuietOutput {
    QuietOutput() { testing::internal::CaptureStdout(); }
    ~QuietOutput() { testing::internal::GetCapturedStdout(); }
};

/// Loads of URLs, answered by a client with a script.
class JSONHandlerUrl : public JSONHandlerTest {
protected:
    bool read(const std::string& url) {
        request_.filename = url;
        const QuietOutput quiet;
        return handler_.Read(request_, script_, error_);
    }

    void respond(const std::string& body) {
        FakeResponse response;
        response.chunks = {body};
        client_.respond(response);
    }

    /// The number that makes the URL unique which was asked for last; -1 when it has none.
    long uniqueNumber() const {
        const std::string& calls = client_.calls();
        const size_t query = calls.rfind("?q=");
        return query == std::string::npos ? -1 : std::stol(calls.substr(query + 3));
    }
};

TEST_F(JSONHandlerUrl, ADocumentFromAUrlIsReadAsOneFromAFile) {
    respond("{\"a\":1}");
    EXPECT_TRUE(read("http://feeds.example/a.json?day=1"));
    EXPECT_EQ(script_, "T={a=1;};");
    EXPECT_EQ(error_, "");
}

TEST_F(JSONHandlerUrl, AUrlWithoutAQuestionMarkGetsTheNextNumberOfTheProcess) {
    for (int load = 0; load < 2; ++load) {
        respond("1");
        EXPECT_TRUE(read("http://feeds.example/a.json"));
    }
    const long second = uniqueNumber();
    EXPECT_GT(second, 34464);
    const std::string path = "path '/a.json?q=";
    const size_t first = client_.calls().find(path);
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(std::stol(client_.calls().substr(first + path.size())), second - 1);
}

TEST_F(JSONHandlerUrl, AUrlWithAQuestionMarkIsFetchedUnchangedAndDoesNotTouchTheCounter) {
    respond("1");
    EXPECT_TRUE(read("http://feeds.example/a.json"));
    const long before = uniqueNumber();
    respond("1");
    EXPECT_TRUE(read("https://feeds.example/a.json?day=1"));
    EXPECT_NE(client_.calls().find("secure path '/a.json?day=1'"), std::string::npos);
    respond("1");
    EXPECT_TRUE(read("http://feeds.example/a.json"));
    EXPECT_EQ(uniqueNumber(), before + 1);
}

TEST_F(JSONHandlerUrl, WhetherAUrlGetsANumberDoesNotDependOnTheAvoidanceOfCaches) {
    request_.avoidCache = true;
    respond("1");
    EXPECT_TRUE(read("http://feeds.example/a.json?day=1"));
    EXPECT_EQ(uniqueNumber(), -1);
    respond("1");
    EXPECT_TRUE(read("http://feeds.example/a.json"));
    EXPECT_GE(uniqueNumber(), 34464);
}

TEST_F(JSONHandlerUrl, AResponseOfMoreThanAGibibyteIsRefused) {
    FakeResponse response;
    response.moreAvailable = (size_t{1} << 30) + 1;
    client_.respond(response);
    EXPECT_FALSE(read("http://feeds.example/a.json"));
    EXPECT_EQ(error_,
              "Failed to load JSON file from http://feeds.example/a.json.\n"
              "The response is larger than 1073741824 bytes.\n");
    EXPECT_EQ(script_, "");
}

TEST_F(JSONHandlerUrl, AFetchThatFailsIsAnErrorThatNamesTheUrl) {
    EXPECT_FALSE(read("http://feeds.example/a.json"));
    EXPECT_EQ(error_, "Failed to load JSON file from http://feeds.example/a.json.\n");
    EXPECT_EQ(script_, "");
}

TEST_F(JSONHandlerUrl, AnErrorPageIsParsedLikeAnyBody) {
    FakeResponse page;
    page.status = 404;
    page.chunks = {"<html>"};
    client_.respond(page);
    EXPECT_FALSE(read("http://feeds.example/a.json?x"));
    EXPECT_EQ(
        error_,
        "Error parsing JSON: http://feeds.example/a.json?x: line 1, column 1: Invalid value.");
}

TEST_F(JSONHandlerUrl, AnEmptyBodyIsAnEmptyDocument) {
    client_.respond(FakeResponse{});
    EXPECT_FALSE(read("http://feeds.example/a.json?x"));
    EXPECT_EQ(error_,
              "Error parsing JSON: http://feeds.example/a.json?x: line 1, column 1: The document "
              "is empty.");
}

TEST_F(JSONHandlerUrl, APortThatIsNoNumberPassesToTheCaller) {
    try {
        read("http://feeds.example:http/a.json");
        FAIL() << "the port was taken";
    } catch (const std::invalid_argument& failure) {
        EXPECT_STREQ(failure.what(), "invalid stoi argument");
    }
}

TEST_F(JSONHandlerUrl, AUrlIsKnownByItsSchemeAnywhereInTheName) {
    EXPECT_FALSE(read("cache/http://feeds.example/a.json"));
    EXPECT_EQ(error_, "Failed to load JSON file from cache/http://feeds.example/a.json.\n");
}

TEST_F(JSONHandlerTest, NamesWithoutTheTwoSchemesAreFiles) {
    for (const char* name : {"http:/feed.json", "HTTP://feed.json", "ftp://feeds.example/a.json"}) {
        request_.filename = name;
        putSource("1");
        script_.clear();
        EXPECT_TRUE(read()) << name;
        EXPECT_EQ(script_, "T=1;");
    }
}

/// A directory of its own for the log, which is made in the current directory.
class JSONHandlerLog : public JSONHandlerTest {
protected:
    JSONHandlerLog() { platform_.clock.setLocalTime({2026, 3, 5, 9, 7}); }

    static std::string log() {
        std::ifstream file("2026-03-05-0907-Intake.log", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    TempWorkingDirectory directory_;
};

TEST_F(JSONHandlerLog, ALoadIsTracedWithItsSourceAtDebug) {
    logger_.setLevel(LOG_DEBUG);
    putSource("1");
    EXPECT_TRUE(read());
    EXPECT_EQ(log(), "5/3 9:7 DEBUG: \t\t\tJSON: feed.json");
}

TEST_F(JSONHandlerLog, ALoadThatFailsIsTracedToo) {
    logger_.setLevel(LOG_DEBUG);
    EXPECT_FALSE(read());
    EXPECT_EQ(log(), "5/3 9:7 DEBUG: \t\t\tJSON: feed.json");
}

TEST_F(JSONHandlerLog, AtInfoALoadIsNotTraced) {
    logger_.setLevel(LOG_INFO);
    putSource("1");
    EXPECT_TRUE(read());
    EXPECT_FALSE(std::filesystem::exists("2026-03-05-0907-Intake.log"));
}

}  // namespace
}  // namespace intake
