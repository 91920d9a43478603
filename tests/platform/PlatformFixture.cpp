#include "tests/platform/PlatformFixture.h"

#include "tests/fakes/platform/FakePlatform.h"
#include "tests/platform/make_pipe.h"
#include "tests/support/TempDirectory.h"

namespace intake {

namespace {

class SystemFixture final : public PlatformFixture {
public:
    const Platform& services() override { return systemPlatform(); }

    std::string file(const std::string& content) override {
        return directory_.write("file", content);
    }
    std::string directory() override { return directory_.path().string(); }
    std::string pipe() override { return makePipe(directory()); }
    std::string missing() override { return (directory_.path() / "missing").string(); }

private:
    TempDirectory directory_;
};

class FakeFixture final : public PlatformFixture {
public:
    const Platform& services() override { return platform_.services; }

    std::string file(const std::string& content) override {
        platform_.files.put("file", content);
        return "file";
    }
    std::string directory() override { return failing("directory", "Is a directory"); }
    std::string pipe() override { return failing("pipe", "Operation not supported"); }
    std::string missing() override { return "missing"; }

private:
    std::string failing(const std::string& path, const std::string& reason) {
        platform_.files.failAt(FakeFiles::Step::OPEN, path, reason);
        return path;
    }

    FakePlatform platform_;
};

}  // namespace

std::unique_ptr<PlatformFixture> makeSystemFixture() {
    return std::make_unique<SystemFixture>();
}

std::unique_ptr<PlatformFixture> makeFakeFixture() {
    return std::make_unique<FakeFixture>();
}

std::string PlatformContract::lastErrorText() {
    std::string text;
    return diagnostics_.lastErrorText(text) ? text : "";
}

}  // namespace intake
