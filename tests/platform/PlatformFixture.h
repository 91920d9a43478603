#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/Platform.h"

namespace intake {

/// A platform to hold to its contract, and the things around it that a test needs.
class PlatformFixture {
public:
    virtual ~PlatformFixture() = default;

    virtual const Platform& services() = 0;

    /// Each makes one thing and returns its path.
    virtual std::string file(const std::string& content) = 0;
    virtual std::string directory() = 0;
    virtual std::string pipe() = 0;
    virtual std::string missing() = 0;
};

/// The system that this build is for, and the fake that the other tests use. What one promises the
/// other must keep, or those tests prove nothing.
std::unique_ptr<PlatformFixture> makeSystemFixture();
std::unique_ptr<PlatformFixture> makeFakeFixture();

struct NamedFixture {
    const char* name;
    std::unique_ptr<PlatformFixture> (*make)();

    friend void PrintTo(const NamedFixture& fixture, std::ostream* out) { *out << fixture.name; }
};

class PlatformContract : public testing::TestWithParam<NamedFixture> {
protected:
    std::string lastErrorText();

    std::unique_ptr<PlatformFixture> fixture_ = GetParam().make();
    Clock& clock_ = fixture_->services().clock;
    Threads& threads_ = fixture_->services().threads;
    Files& files_ = fixture_->services().files;
    Diagnostics& diagnostics_ = fixture_->services().diagnostics;
};

/// Both platforms, for INSTANTIATE_TEST_SUITE_P.
inline const NamedFixture BOTH_PLATFORMS[] = {{"System", makeSystemFixture},
                                              {"Fake", makeFakeFixture}};

inline std::string fixtureName(const testing::TestParamInfo<NamedFixture>& info) {
    return info.param.name;
}

}  // namespace intake
