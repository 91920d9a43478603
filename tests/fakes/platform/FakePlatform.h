#pragma once

#include "platform/Platform.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/fakes/platform/FakeDatabases.h"
#include "tests/fakes/platform/FakeDiagnostics.h"
#include "tests/fakes/platform/FakeFiles.h"
#include "tests/fakes/platform/FakeHtml.h"
#include "tests/fakes/platform/FakeHttpClients.h"
#include "tests/fakes/platform/FakeTextFiles.h"
#include "tests/fakes/platform/FakeThreads.h"
#include "tests/fakes/platform/FakeXml.h"

namespace intake {

/// An operating system for one test. Make it before whatever uses it. When it goes, it lets blocked
/// readers go on and waits for all threads, so that nothing of one test runs into the next.
class FakePlatform {
public:
    FakePlatform() = default;
    ~FakePlatform() {
        files.releaseAll();
        threads.join();
    }
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;

    FakeClock clock;
    FakeDiagnostics diagnostics;
    FakeFiles files{diagnostics};
    FakeTextFiles textFiles;
    FakeThreads threads;
    FakeHttpClients http;
    FakeXml xml;
    FakeHtml html;
    FakeDatabases databases;

    /// What the code under test takes.
    const Platform services{clock, threads, files, textFiles, diagnostics,
                            http,  xml,     html,  databases};
};

}  // namespace intake
