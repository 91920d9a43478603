#include <utility>

#include "tests/pipeline/http/FetchTest.h"

namespace intake {
namespace {

constexpr std::pair<HttpScheme, const char*> SCHEMES[] = {{HTTP_BASIC, "Basic"},
                                                          {HTTP_NEGOTIATE, "Negotiate"},
                                                          {HTTP_NTLM, "NTLM"},
                                                          {HTTP_PASSPORT, "Passport"},
                                                          {HTTP_DIGEST, "Digest"}};

constexpr uint32_t ALL_SCHEMES = 0x1F;

const std::string NO_TICKET =
    "5/3 9:7 WARNING: \t\t\tHTTP: Negotiate is offered, but there is no Kerberos ticket.\n";

/// Every set of offered schemes and the one that is taken.
const std::string TAKEN =
    "none -> none\n"
    "Basic -> Basic\n"
    "NTLM -> NTLM\n"
    "Basic NTLM -> Basic\n"
    "Passport -> Passport\n"
    "Basic Passport -> Basic\n"
    "NTLM Passport -> NTLM\n"
    "Basic NTLM Passport -> Basic\n"
    "Digest -> Digest\n"
    "Basic Digest -> Basic\n"
    "NTLM Digest -> NTLM\n"
    "Basic NTLM Digest -> Basic\n"
    "Passport Digest -> Passport\n"
    "Basic Passport Digest -> Basic\n"
    "NTLM Passport Digest -> NTLM\n"
    "Basic NTLM Passport Digest -> Basic\n"
    "Negotiate -> Negotiate\n"
    "Basic Negotiate -> Basic\n"
    "Negotiate NTLM -> Negotiate\n"
    "Basic Negotiate NTLM -> Basic\n"
    "Negotiate Passport -> Negotiate\n"
    "Basic Negotiate Passport -> Basic\n"
    "Negotiate NTLM Passport -> Negotiate\n"
    "Basic Negotiate NTLM Passport -> Basic\n"
    "Negotiate Digest -> Negotiate\n"
    "Basic Negotiate Digest -> Basic\n"
    "Negotiate NTLM Digest -> Negotiate\n"
    "Basic Negotiate NTLM Digest -> Basic\n"
    "Negotiate Passport Digest -> Negotiate\n"
    "Basic Negotiate Passport Digest -> Basic\n"
    "Negotiate NTLM Passport Digest -> Negotiate\n"
    "Basic Negotiate NTLM Passport Digest -> Basic\n";

std::string names(uint32_t schemes) {
    std::string text;
    for (const auto& [scheme, name] : SCHEMES) {
        if ((schemes & scheme) != 0) {
            text += text.empty() ? "" : " ";
            text += name;
        }
    }
    return text.empty() ? "none" : text;
}

class SchemeOrder : public FetchTest {
protected:
    SchemeOrder() {
        request_.enableProxy = true;
        request_.proxyMode = 3;  // sets nothing up
    }

    /// The scheme of the first credentials that are set after a response with this status.
    std::string taken(int status, uint32_t offered) {
        client_ = {};
        client_.respond({.status = status, .offered = offered});
        client_.respond({});
        EXPECT_TRUE(fetch().succeeded);
        const std::string call = status == 401 ? "setCredentials server " : "setCredentials proxy ";
        const size_t found = client_.calls().find(call);
        if (found == std::string::npos) {
            return "none";
        }
        const size_t start = found + call.size();
        return client_.calls().substr(start, client_.calls().find(' ', start) - start);
    }

    std::string takenOfAllSets(int status) {
        std::string text;
        for (uint32_t offered = 0; offered <= ALL_SCHEMES; ++offered) {
            text += names(offered) + " -> " + taken(status, offered) + "\n";
        }
        return text;
    }
};

TEST_F(SchemeOrder, OfAServerIsBasicNegotiateNtlmPassportDigest) {
    EXPECT_EQ(takenOfAllSets(401), TAKEN);
    EXPECT_EQ(log(), "");
}

TEST_F(SchemeOrder, OfAProxyIsBasicNegotiateNtlmPassportDigest) {
    EXPECT_EQ(takenOfAllSets(407), TAKEN);
    EXPECT_EQ(log(), "");
}

TEST_F(SchemeOrder, NegotiateWithoutATicketGivesWayToTheNextWithOneWarning) {
    client_.forbid(HTTP_NEGOTIATE);
    client_.respond({.status = 401, .offered = HTTP_NEGOTIATE | HTTP_NTLM | HTTP_DIGEST});
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "[1]", SERVER_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Negotiate\ncanUse NTLM\n"
                                   "setCredentials server NTLM '' ''\n"
                                   "send\nstatus\navailable\nread 3\navailable\nclose\n");
    EXPECT_EQ(log(), NO_TICKET);
}

TEST_F(SchemeOrder, NegotiateWithoutATicketGivesWayToTheNextForAProxyToo) {
    client_.forbid(HTTP_NEGOTIATE);
    client_.respond({.status = 407, .offered = HTTP_NEGOTIATE | HTTP_DIGEST});
    client_.respond({.chunks = {"[1]"}});

    EXPECT_EQ(fetch(), (Fetched{true, "[1]", PROXY_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Negotiate\ncanUse Digest\n"
                                   "setCredentials proxy Digest '' ''\n"
                                   "send\nstatus\navailable\nread 3\navailable\nclose\n");
    EXPECT_EQ(log(), NO_TICKET);
}

TEST_F(SchemeOrder, NegotiateAloneWithoutATicketEndsTheLoopWithTheBody) {
    client_.forbid(HTTP_NEGOTIATE);
    client_.respond({.status = 401, .offered = HTTP_NEGOTIATE, .chunks = {"go away"}});

    EXPECT_EQ(fetch(), (Fetched{true, "go away", SERVER_ASKS}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Negotiate\n"
                                   "available\nread 7\navailable\nclose\n");
    EXPECT_EQ(log(), NO_TICKET);
}

TEST_F(SchemeOrder, AMissingTicketIsNotMissedWhereBasicIsTaken) {
    client_.forbid(HTTP_NEGOTIATE);
    client_.respond({.status = 401, .offered = HTTP_NEGOTIATE | HTTP_BASIC});
    client_.respond({});

    EXPECT_EQ(fetch(), (Fetched{true, "", SERVER_ASKS + RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "send\nstatus\nofferedSchemes\ncanUse Basic\n"
                                   "setCredentials server Basic '' ''\n"
                                   "send\nstatus\navailable\nclose\n");
    EXPECT_EQ(log(), "");
}

TEST_F(SchemeOrder, AMissingTicketIsLoggedOnceHoweverOftenAFetchIsAsked) {
    const uint32_t offered = HTTP_NEGOTIATE | HTTP_NTLM;
    client_.forbid(HTTP_NEGOTIATE);
    client_.respond({.status = 407, .offered = offered});
    client_.respond({.status = 401, .offered = offered});
    client_.respond({.status = 401, .offered = offered, .chunks = {"go away"}});

    EXPECT_EQ(fetch(), (Fetched{true, "go away", PROXY_ASKS + SERVER_ASKS + SERVER_ASKS}));
    EXPECT_EQ(log(), NO_TICKET);
}

TEST_F(SchemeOrder, AMissingTicketIsLoggedAgainByTheNextFetch) {
    client_.forbid(HTTP_NEGOTIATE);
    client_.respond({.status = 401, .offered = HTTP_NEGOTIATE});
    client_.respond({.status = 401, .offered = HTTP_NEGOTIATE});

    EXPECT_EQ(fetch(), (Fetched{true, "", SERVER_ASKS}));
    EXPECT_EQ(fetch(), (Fetched{true, "", SERVER_ASKS}));
    EXPECT_EQ(log(), NO_TICKET + NO_TICKET);
}

TEST_F(SchemeOrder, AMissingTicketStaysOutOfALogThatKeepsErrorsOnly) {
    logger_.setLevel(LOG_ERROR);
    client_.forbid(HTTP_NEGOTIATE);
    client_.respond({.status = 401, .offered = HTTP_NEGOTIATE});

    EXPECT_EQ(fetch(), (Fetched{true, "", SERVER_ASKS}));
    EXPECT_EQ(log(), "");
}

}  // namespace
}  // namespace intake
