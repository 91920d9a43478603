#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/support/TempDirectory.h"
#include "workbench/serve/secret.h"

namespace {

using serve::sessionSecret;
namespace fs = std::filesystem;

constexpr uint16_t port = 8080;

class SessionSecret : public testing::Test {
protected:
    fs::path folder() const { return runtime_.path() / "intake-workbench"; }
    fs::path file() const { return folder() / "session-8080"; }

    static unsigned modeOf(const fs::path& path) {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        return status.st_mode & 07777;
    }

    static std::string contentOf(const fs::path& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    const intake::TempDirectory runtime_;

private:
    const intake::EnvironmentVariable variable_{"XDG_RUNTIME_DIR", runtime_.path().string()};
};

}  // namespace

TEST_F(SessionSecret, IsTheSameForTheNextServerOnItsPort) {
    const std::string secret = sessionSecret(port);
    EXPECT_EQ(secret.size(), 64U);
    EXPECT_EQ(sessionSecret(port), secret);
    EXPECT_NE(sessionSecret(8081), secret);
    EXPECT_NE(sessionSecret(0), sessionSecret(0));
}

TEST_F(SessionSecret, IsForTheUserAlone) {
    const std::string secret = sessionSecret(port);
    EXPECT_EQ(contentOf(file()), secret);
    EXPECT_EQ(modeOf(file()), 0600U);
    EXPECT_EQ(modeOf(folder()), 0700U);
}

TEST_F(SessionSecret, IsNewWhereOthersMightHaveReadIt) {
    const std::string before = sessionSecret(port);
    for (const mode_t mode : {0644U, 0660U, 0400U, 0700U, 04600U}) {
        ASSERT_EQ(chmod(file().c_str(), mode), 0);
        const std::string secret = sessionSecret(port);
        EXPECT_NE(secret, before) << mode;
        EXPECT_EQ(sessionSecret(port), secret);
        EXPECT_EQ(modeOf(file()), 0600U);
    }
}

TEST_F(SessionSecret, IsNewWhereSomebodyElseGaveTheFile) {
    const std::string before = sessionSecret(port);
    if (chown(file().c_str(), 65534, 65534) != 0) GTEST_SKIP() << "Only root can give files away.";
    EXPECT_NE(sessionSecret(port), before);
}

TEST_F(SessionSecret, IsNewWhereTheFileHoldsNone) {
    sessionSecret(port);
    for (const std::string& content :
         {std::string(), std::string(63, 'a'), std::string(65, 'a'), std::string(64, 'X')}) {
        std::ofstream(file(), std::ios::binary) << content;
        const std::string secret = sessionSecret(port);
        EXPECT_NE(secret, content);
        EXPECT_EQ(contentOf(file()), secret);
    }
}

TEST_F(SessionSecret, FollowsNoLinkFromTheFile) {
    sessionSecret(port);
    const std::string elsewhere = runtime_.write("elsewhere", std::string(64, 'a'));
    ASSERT_EQ(chmod(elsewhere.c_str(), 0600), 0);
    fs::remove(file());
    fs::create_symlink(elsewhere, file());
    const std::string secret = sessionSecret(port);
    EXPECT_NE(secret, std::string(64, 'a'));
    EXPECT_EQ(contentOf(elsewhere), std::string(64, 'a'));
    EXPECT_EQ(sessionSecret(port), secret);
}

TEST_F(SessionSecret, IsNotKeptInAFolderOfOthers) {
    fs::create_directory(folder());
    for (const mode_t mode : {0755U, 0770U, 01700U}) {
        ASSERT_EQ(chmod(folder().c_str(), mode), 0);
        EXPECT_NE(sessionSecret(port), sessionSecret(port));
        EXPECT_TRUE(fs::is_empty(folder()));
    }
}

TEST_F(SessionSecret, IsNotKeptBehindALink) {
    fs::create_directory(runtime_.path() / "elsewhere");
    ASSERT_EQ(chmod((runtime_.path() / "elsewhere").c_str(), 0700), 0);
    fs::create_directory_symlink(runtime_.path() / "elsewhere", folder());
    EXPECT_NE(sessionSecret(port), sessionSecret(port));
    EXPECT_TRUE(fs::is_empty(runtime_.path() / "elsewhere"));
}

TEST_F(SessionSecret, WaitsForNoPipe) {
    sessionSecret(port);
    fs::remove(file());
    ASSERT_EQ(mkfifo(file().c_str(), 0600), 0);
    EXPECT_EQ(sessionSecret(port), sessionSecret(port));
}

TEST_F(SessionSecret, IsNewWithoutAFolderOfTheUser) {
    for (const std::optional<std::string>& place :
         {std::optional<std::string>(), std::optional<std::string>(""),
          std::optional<std::string>("relative"), std::optional<std::string>("/absent/folder")}) {
        const intake::EnvironmentVariable variable("XDG_RUNTIME_DIR", place);
        EXPECT_NE(sessionSecret(port), sessionSecret(port));
    }
    EXPECT_FALSE(fs::exists(folder()));
}
