#include "tests/pipeline/http/FetchTest.h"

namespace intake {
namespace {

const std::string FETCH = "send\nstatus\navailable\nclose\n";

class ManualProxy : public FetchTest {
protected:
    ManualProxy() {
        client_.respond({});
        request_.enableProxy = true;
        request_.proxyMode = 2;
        request_.proxyUrl = "proxy:3128";
        request_.proxyUser = "pat";
        request_.proxyPwd = "hidden";
    }
};

TEST_F(ManualProxy, IsSetWithItsUserAndThenItsPassword) {
    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "setProxy 'proxy:3128' bypass '<local>'\n"
                                   "setProxyUser 'pat'\nsetProxyPassword 'hidden'\n" +
                                   FETCH);
}

TEST_F(ManualProxy, AnEmptyProxyUserIsStillSet) {
    request_.proxyUser = "";

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "setProxy 'proxy:3128' bypass '<local>'\n"
                                   "setProxyUser ''\nsetProxyPassword 'hidden'\n" +
                                   FETCH);
}

TEST_F(ManualProxy, AnEmptyProxyPasswordIsStillSet) {
    request_.proxyPwd = "";

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "setProxy 'proxy:3128' bypass '<local>'\n"
                                   "setProxyUser 'pat'\nsetProxyPassword ''\n" +
                                   FETCH);
}

TEST_F(ManualProxy, AnEmptyAddressIsHandedOnForTheSystemToJudge) {
    request_.proxyUrl = "";

    EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
    EXPECT_EQ(client_.calls(), OPEN +
                                   "setProxy '' bypass '<local>'\n"
                                   "setProxyUser 'pat'\nsetProxyPassword 'hidden'\n" +
                                   FETCH);
}

TEST_F(ManualProxy, ThatIsSwitchedOffIsNotSetInAnyMode) {
    request_.enableProxy = false;
    for (const int32_t mode : {0, 1, 2, 3}) {
        client_ = {};
        client_.respond({});
        request_.proxyMode = mode;

        EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
        EXPECT_EQ(client_.calls(), OPEN + FETCH) << "mode " << mode;
    }
}

TEST_F(ManualProxy, AModeThatNobodyKnowsSetsNothing) {
    for (const int32_t mode : {-1, 3, 4, INT32_MAX, INT32_MIN}) {
        client_ = {};
        client_.respond({});
        request_.proxyMode = mode;

        EXPECT_EQ(fetch(), (Fetched{true, "", RETRIEVED}));
        EXPECT_EQ(client_.calls(), OPEN + FETCH) << "mode " << mode;
    }
}

}  // namespace
}  // namespace intake
