#include "tests/http/support/linux/StalledProxyScript.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>

#include "tests/support/eventually.h"

namespace intake {

namespace {

/// Those of this process.
size_t countThreads() {
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return static_cast<size_t>(std::distance(begin(threads), end(threads)));
}

}  // namespace

StalledProxyScript::StalledProxyScript()
    : threads_(countThreads()),
      server_(std::make_unique<ScriptedServer>(std::vector<Reply>{{"", Then::STALL}})),
      variable_("http_proxy", "pac+" + server_->url("/proxy.pac")) {}

StalledProxyScript::~StalledProxyScript() {
    EXPECT_TRUE(eventually([&] { return !server_->requests().empty(); }));
    server_.reset();
    EXPECT_TRUE(eventually([&] { return countThreads() <= threads_; }));
}

}  // namespace intake
