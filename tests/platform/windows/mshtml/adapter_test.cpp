// What urlmon and MSHTML are asked, in which order, and that everything is given back, with
// stand-ins for their objects.

#include "platform/PlatformError.h"
#include "tests/platform/windows/BigAllocations.h"
#include "tests/platform/windows/mshtml/MshtmlTest.h"

namespace intake {
namespace {

using MshtmlAdapter = MshtmlTest;

constexpr const char* FIRST = R"(T[0]={{name=""Brazil"";points=""7"";};};READER_NUM_RECORDS=1;)";
constexpr const char* SECOND =
    R"(T[0]={{code=""A"";};};T[1]={{code=""B"";};};READER_NUM_RECORDS=2;)";

TEST_F(MshtmlAdapter, WritesAPageIntoADocumentAndReadsItsFirstTable) {
    EXPECT_EQ(script(""), FIRST);
    EXPECT_EQ(page_.written, L"<html>");
    EXPECT_EQ(page_.calls.text(),
              "open page.html\n"
              "Stat\n"
              "Read\n"
              "Read\n"
              "create document\n"
              "QueryInterface\n"
              "write\n"
              "close\n"
              "document getElementsByTagName TABLE\n"
              "length\n"
              "item 0\n"
              "QueryInterface\n"
              "QueryInterface\n"
              "rows\n"
              "length\n"
              // The names.
              "item 0\n"
              "QueryInterface\n"
              "cells\n"
              "length\n"
              "item 0\n"
              "QueryInterface\n"
              "innerText TD\n"
              "item 1\n"
              "QueryInterface\n"
              "innerText TD\n"
              // The values.
              "item 1\n"
              "QueryInterface\n"
              "cells\n"
              "length\n"
              "item 0\n"
              "QueryInterface\n"
              "innerText TD\n"
              "item 1\n"
              "QueryInterface\n"
              "innerText TD\n");
}

TEST_F(MshtmlAdapter, FindsATableByItsId) {
    EXPECT_EQ(script("ID second"), SECOND);
}

TEST_F(MshtmlAdapter, FindsATableBelowAnId) {
    EXPECT_EQ(script("ID prices"), SECOND);
    EXPECT_EQ(script("ID results"), FIRST);
    EXPECT_EQ(error("ID note"), R"(HTML: Could not find any TABLE under ID "note")");
    EXPECT_EQ(error("ID nowhere"), R"(HTML: Could not find any TABLE under ID "nowhere")");
}

TEST_F(MshtmlAdapter, FindsATableBelowAClass) {
    EXPECT_EQ(script("CLASS new"), SECOND);
    EXPECT_EQ(error("CLASS news"), R"(HTML: Could not find any TABLE under CLASS "news")");
}

TEST_F(MshtmlAdapter, FindsATableCloseToAText) {
    EXPECT_EQ(script("TEXT Closing prices"), SECOND);
    EXPECT_EQ(script("TEXT Results"), FIRST);
    EXPECT_EQ(error("TEXT Closing"), R"(HTML: Could not find any TABLE close to text "Closing")");
}

TEST_F(MshtmlAdapter, VisitsEachElementBeforeItsChildrenAndSkipsWhatIsNoElement) {
    page_.nodes = {{.name = ""},
                   {.name = "HTML"},
                   {.name = "DIV", .parent = 1},
                   {.name = "B", .parent = 2},
                   {.name = "", .parent = 2},
                   {.name = "P", .parent = 1, .text = "here"}};
    error("TEXT here");
    EXPECT_EQ(page_.calls.text(),
              "open page.html\nStat\nRead\nRead\ncreate document\nQueryInterface\nwrite\nclose\n"
              "childNodes\nQueryInterface\nlength\n"
              "node 0\nnode 1\nQueryInterface\n"
              "innerText HTML\nchildren\nQueryInterface\nlength\nitem 0\nQueryInterface\n"
              "innerText DIV\nchildren\nQueryInterface\nlength\nitem 0\nQueryInterface\n"
              "innerText B\nchildren\nQueryInterface\nlength\nitem 1\nQueryInterface\n"
              "innerText P\n"
              "parentElement\nQueryInterface\ngetElementsByTagName TABLE\nlength\n"
              "parentElement\n");
}

TEST_F(MshtmlAdapter, GivesTextsInUtf8) {
    page_.nodes = {{.name = "HTML"}};
    page_.addTable(0, {{"n\xC3\xA4me"}, {"\xE2\x82\xAC 5\r\n\xF0\x9F\x8F\x86"}, {""}});
    EXPECT_EQ(script(""),
              "T[0]={{n\xC3\xA4me=\"\"\xE2\x82\xAC 5\r\n\xF0\x9F\x8F\x86\"\";};};"
              "T[1]={{n\xC3\xA4me=\"\"\"\";};};READER_NUM_RECORDS=2;");
}

TEST_F(MshtmlAdapter, GivesKeysInTheSystemsCodePage) {
    page_.nodes = {{.name = "HTML"}};
    page_.addTable(0, {{"code"}, {"\xC3\xA9t\xC3\xA9"}});
    const wchar_t key[] = L"\u00e9t\u00e9";
    std::string narrow(8, '\0');
    narrow.resize(static_cast<size_t>(
        WideCharToMultiByte(CP_ACP, 0, key, 3, narrow.data(), 8, nullptr, nullptr)));
    request_.targetMode = DATA_FIELD_ARRAY;
    EXPECT_EQ(script(""), "T[0-0]=\"\"" + narrow + "\"\"; READER_NUM_RECORDS=1;");
}

TEST_F(MshtmlAdapter, TakesBytesAsTextOfTheSystemsCodePage) {
    page_.content = "caf\xE9";
    page_.toldSize = page_.content.size();
    wchar_t expected[8] = {};
    MultiByteToWideChar(CP_ACP, 0, "caf\xE9", -1, expected, 8);
    script("");
    EXPECT_EQ(page_.written, expected);
}

TEST_F(MshtmlAdapter, ReadsAStreamThatComesInPieces) {
    page_.content = std::string(300, 'x');
    page_.toldSize = page_.content.size();
    page_.readAtOnce = 7;
    script("");
    EXPECT_EQ(page_.written, std::wstring(300, L'x'));
}

TEST_F(MshtmlAdapter, ReadsAStreamThatHoldsMoreOrLessThanItTells) {
    page_.content = std::string(200000, 'x');
    for (const unsigned long long told : {0ULL, 1000ULL, 1000000ULL}) {
        page_.toldSize = told;
        script("");
        EXPECT_EQ(page_.written, std::wstring(200000, L'x'));
    }
}

TEST_F(MshtmlAdapter, RefusesAPageThatIsTooLarge) {
    for (const unsigned long long told : {100'000'001ULL, 1ULL << 32}) {
        page_.toldSize = told;
        try {
            read();
            FAIL() << "has been read";
        } catch (const PlatformError& failure) {
            EXPECT_EQ(failure.description(), "The page is larger than 100 MB");
        }
    }
}

TEST_F(MshtmlAdapter, SaysThatASourceCannotBeOpened) {
    page_.opening = INET_E_OBJECT_NOT_FOUND;
    EXPECT_EQ(error(""), R"(HTML: Failed to open URL "page.html")");
}

TEST_F(MshtmlAdapter, MissesAStreamThatIsNotThere) {
    page_.hasStream = false;
    try {
        read();
        FAIL() << "has been read";
    } catch (const PlatformError& failure) {
        EXPECT_EQ(static_cast<HRESULT>(failure.code()), E_POINTER);
    }
}

/// Pages whose elements stand inside each other do not use up the stack.
TEST_F(MshtmlAdapter, WalksThroughPagesThatAreNestedDeeply) {
    page_.nodes = {{.name = "DIV"}};
    for (size_t depth = 1; depth < 2000; ++depth) {
        page_.nodes.push_back({.name = "DIV", .parent = depth - 1});
    }
    page_.nodes.back().text = "here";
    EXPECT_EQ(error("TEXT here"), R"(HTML: Could not find any TABLE close to text "here")");
}

/// Makes each call of a load fail in turn; every text is big enough for its leak to be seen.
class MshtmlFailures : public MshtmlTest {
protected:
    MshtmlFailures() {
        const std::string big(BigAllocations::CHARACTERS, 'k');
        page_.content = std::string(2 * BigAllocations::CHARACTERS, 'x');
        page_.toldSize = page_.content.size();
        page_.nodes = {{.name = ""},
                       {.name = "HTML", .text = big},
                       {.name = "P", .parent = 1, .id = big, .className = big, .text = big + "."}};
        page_.addTable(2, {{"code", big}, {big, big}});
        request_.targetMode = DATA_TABLE;
    }

    /// How many calls there are.
    int failEachCall(const std::string& selector) {
        request_.sheet = selector;
        int failing = 0;
        do {
            page_.calls = ComCalls();
            page_.calls.failAt(++failing);
            SCOPED_TRACE(failing);
            const bool loaded = loads();
            EXPECT_EQ(loaded, failing > page_.calls.count());
            EXPECT_EQ(page_.calls.living(), 0);
            EXPECT_EQ(BigAllocations::living(), living_);
        } while (failing <= page_.calls.count());
        return page_.calls.count();
    }

private:
    bool loads() {
        try {
            return read();
        } catch (const PlatformError& failure) {
            EXPECT_EQ(static_cast<HRESULT>(failure.code()), ComCalls::FAILURE);
            return false;
        }
    }

    const size_t living_ = BigAllocations::living();
};

TEST_F(MshtmlFailures, OfAnyCallEndTheLoadAndGiveEverythingBack) {
    const std::string big(BigAllocations::CHARACTERS, 'k');
    EXPECT_GT(failEachCall(""), 30);
    EXPECT_GT(failEachCall("ID " + big), 30);
    EXPECT_GT(failEachCall("CLASS " + big), 40);
    EXPECT_GT(failEachCall("TEXT " + big + "."), 40);
}

}  // namespace
}  // namespace intake
