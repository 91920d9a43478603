#include "tests/platform/windows/winhttp/WinHttpTest.h"

namespace intake {
namespace {

struct FailingCall {
    const char* function;
    int nth;
    const char* output;
};

void PrintTo(const FailingCall& call, std::ostream* out) {
    *out << call.function << " " << call.nth;
}

class WinHttpFailure : public WinHttpTest, public testing::WithParamInterface<FailingCall> {};

TEST_P(WinHttpFailure, IsPrintedWithItsNumberAndLeavesNothingOpen) {
    system_.statuses = {401, 407, 200};
    system_.schemes = 1;
    system_.chunks = {"[1]"};
    useProxy(2);
    system_.fail(GetParam().function, GetParam().nth);

    EXPECT_FALSE(fetch());
    EXPECT_EQ(output_, GetParam().output);
}

constexpr const char* SERVER_ASKS =
    " The server requires authentication. Sending credentials...\nError 1450 has occurred.\n";
constexpr const char* BOTH_ASK =
    " The server requires authentication. Sending credentials...\n"
    "The proxy requires authentication.  Sending credentials...\nError 1450 has occurred.\n";
constexpr const char* AT_ONCE = "Error 1450 has occurred.\n";
constexpr const char* NO_DATA =
    " The server requires authentication. Sending credentials...\n"
    "The proxy requires authentication.  Sending credentials...\n"
    "The resource was successfully retrieved.\n"
    "Error 1450 in WinHttpQueryDataAvailable.\n";
constexpr const char* NOT_READ =
    " The server requires authentication. Sending credentials...\n"
    "The proxy requires authentication.  Sending credentials...\n"
    "The resource was successfully retrieved.\n"
    "Error 1450 in WinHttpReadData.\n";

INSTANTIATE_TEST_SUITE_P(Calls, WinHttpFailure,
                         testing::Values(FailingCall{"WinHttpOpen", 1, AT_ONCE},
                                         FailingCall{"WinHttpConnect", 1, AT_ONCE},
                                         FailingCall{"WinHttpOpenRequest", 1, AT_ONCE},
                                         FailingCall{"WinHttpSetOption", 2, AT_ONCE},
                                         FailingCall{"WinHttpSetOption", 3, AT_ONCE},
                                         FailingCall{"WinHttpSetOption", 4, AT_ONCE},
                                         FailingCall{"WinHttpSendRequest", 1, AT_ONCE},
                                         FailingCall{"WinHttpReceiveResponse", 1, AT_ONCE},
                                         FailingCall{"WinHttpQueryHeaders", 1, AT_ONCE},
                                         FailingCall{"WinHttpQueryAuthSchemes", 1, SERVER_ASKS},
                                         FailingCall{"WinHttpSetCredentials", 1, SERVER_ASKS},
                                         FailingCall{"WinHttpSendRequest", 2, SERVER_ASKS},
                                         FailingCall{"WinHttpQueryAuthSchemes", 2, BOTH_ASK},
                                         FailingCall{"WinHttpSetCredentials", 2, BOTH_ASK},
                                         FailingCall{"WinHttpQueryDataAvailable", 1, NO_DATA},
                                         FailingCall{"WinHttpReadData", 1, NOT_READ},
                                         FailingCall{"WinHttpQueryDataAvailable", 2, NO_DATA}));

}  // namespace
}  // namespace intake
