// Servers that break off at every byte, and such that say wrong lengths.

#include <gtest/gtest.h>

#include <array>
#include <atomic>

#include "tests/faults/CannedServer.h"
#include "tests/faults/TestWorker.h"
#include "tests/faults/extent.h"

namespace intake {

namespace {

struct Kind {
    const char* mode;
    const char* path;
    const char* key;
    std::string body;
};

const std::array<Kind, 3> KINDS{{
    {"JSON", "rows", "id", R"({"rows":[{"id":"a","v":1.5},{"id":"b","v":"text"}]})"},
    {"XML", "//row", "@id", "<r><row id='a'><v>1</v></row><row id='b'><v>text</v></row></r>"},
    {"HTML", "table", "id", "<table><tr><th>id<tr><td>a<tr><td>b</table>"},
}};

std::string chunked(const std::string& body) {
    constexpr size_t SIZE = 16;
    std::string chunks;
    for (size_t start = 0; start < body.size(); start += SIZE) {
        const std::string chunk = body.substr(start, SIZE);
        chunks += (chunk.size() == SIZE ? "10" : std::string(1, "0123456789abcdef"[chunk.size()])) +
                  "\r\n" + chunk + "\r\n";
    }
    return chunks + "0\r\n\r\n";
}

const std::string OK = "HTTP/1.1 200 OK\r\nConnection: close\r\n";

std::string withLength(const std::string& body) {
    return OK + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string inChunks(const std::string& body) {
    return OK + "Transfer-Encoding: chunked\r\n\r\n" + chunked(body);
}

class FaultyServers : public testing::Test {
protected:
    LoadResult load(const Kind& kind, const std::string& response) {
        response_ = response;
        return worker_.load(std::string("MODE |") + kind.mode + "| FILENAME |" + server_.url("/x") +
                            "| XPATH |" + kind.path + "| KEY |" + kind.key +
                            "| TABLE |T| TGT_MODE 0 NUM_ROWS 9 LOG_LEVEL -1 ");
    }

    /// Sends every beginning of a response up to a length; none may count as the whole.
    void expectNoneToBeWhole(const Kind& kind, const std::string& response, size_t upTo) {
        EXPECT_TRUE(load(kind, response).success) << kind.mode;
        for (size_t length = 0; length < upTo; length += faultStep(upTo)) {
            const LoadResult result = load(kind, response.substr(0, length));
            EXPECT_FALSE(result.success) << kind.mode << " of " << length << ": " << result.script;
            EXPECT_FALSE(result.error.empty()) << kind.mode << " of " << length;
        }
    }

    std::string response_;
    const CannedServer server_{[this](const std::string&) { return response_; }};
    TestWorker worker_;
};

TEST_F(FaultyServers, ThatBreakOffAtAnyByteOfABodyOfKnownLengthGiveNothing) {
    for (const Kind& kind : KINDS) {
        const std::string response = withLength(kind.body);
        expectNoneToBeWhole(kind, response, response.size());
    }
}

TEST_F(FaultyServers, ThatBreakOffAtAnyByteOfABodyInChunksGiveNothing) {
    for (const Kind& kind : KINDS) {
        const std::string response = inChunks(kind.body);
        expectNoneToBeWhole(kind, response, response.size() - 1);  // but for the last line end
    }
}

TEST_F(FaultyServers, ThatSayWrongLengthsGiveAnErrorOrWhatTheyHaveSent) {
    const Kind& kind = KINDS[0];
    for (const std::string length : {"1000000", "5", "-1", "x", "", "99999999999999999999",
                                     "52\r\nContent-Length: 9", "0x34", "+52"}) {
        const LoadResult result =
            load(kind, OK + "Content-Length: " + length + "\r\n\r\n" + kind.body);
        EXPECT_EQ(result.success, !result.script.empty()) << length;
        EXPECT_EQ(result.success, result.error.empty()) << length << ": " << result.error;
    }
    for (const std::string size : {"ffffffffffffffff", "x", "", "-1", "34 ", "34;a=b", "034"}) {
        const LoadResult result = load(kind, OK + "Transfer-Encoding: chunked\r\n\r\n" + size +
                                                 "\r\n" + kind.body + "\r\n0\r\n\r\n");
        EXPECT_EQ(result.success, !result.script.empty()) << size;
    }
}

}  // namespace

}  // namespace intake
