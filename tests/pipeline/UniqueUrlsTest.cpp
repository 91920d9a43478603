// The numbers that make URLs unique are shared by all workers of the process.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>

#include "platform/Platform.h"
#include "readers/json/JSONHandler.h"
#include "readers/xml/XMLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/fakes/platform/FakeConnections.h"
#include "tests/fakes/platform/FakeDiagnostics.h"
#include "tests/fakes/platform/FakeFiles.h"
#include "tests/fakes/platform/FakeHttpClient.h"
#include "tests/fakes/platform/FakeXml.h"

namespace intake {

namespace {

constexpr size_t LOADS = 100;

void load(ReaderHandler& reader) {
    RequestRecord request;
    request.filename = "http://feeds.example/a";
    request.avoidCache = true;
    std::string script;
    std::string error;
    for (size_t i = 0; i < LOADS; ++i) {
        reader.Read(request, script, error);
    }
}

/// What one worker asks for, call by call.
std::string askedForJson() {
    FakeClock clock;
    ReaderLogger logger(clock, systemPlatform().textFiles);
    logger.setLevel(LOG_FATAL);
    FakeDiagnostics diagnostics;
    diagnostics.setHasConsole(false);
    FakeFiles files(diagnostics);
    FakeHttpClient client;
    JSONHandler reader(logger, files, client, diagnostics);
    load(reader);
    return client.calls();
}

std::string askedForXml() {
    FakeClock clock;
    ReaderLogger logger(clock, systemPlatform().textFiles);
    logger.setLevel(LOG_FATAL);
    FakeXml xml;
    const EndMark endMark;
    FakeConnections connections;
    XMLHandler reader(logger, xml, connections, endMark);
    load(reader);
    return xml.calls();
}

std::set<long> numbersIn(const std::string& calls) {
    std::set<long> numbers;
    for (size_t at = calls.find("?q="); at != std::string::npos; at = calls.find("?q=", at + 1)) {
        numbers.insert(std::stol(calls.substr(at + 3)));
    }
    return numbers;
}

/// The numbers in what two workers ask for at the same time.
std::set<long> numbersOfTwoWorkers(std::string (*ask)()) {
    std::string one;
    std::thread worker([&] { one = ask(); });
    const std::string other = ask();
    worker.join();
    return numbersIn(one + other);
}

}  // namespace

TEST(UniqueUrls, OfTwoJsonReadersAreAllDifferent) {
    EXPECT_EQ(numbersOfTwoWorkers(askedForJson).size(), 2 * LOADS);
}

TEST(UniqueUrls, OfTwoXmlReadersAreAllDifferent) {
    EXPECT_EQ(numbersOfTwoWorkers(askedForXml).size(), 2 * LOADS);
}

}  // namespace intake
