// Many workers use the services at once, each its own documents.

#include <array>
#include <thread>

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

constexpr int THREADS = 8;
constexpr int ROUNDS = 50;

/// One worker's life: documents that load, one that does not, and an expression that is wrong.
std::string work(XmlServices& services, int worker) {
    const AsWorker asWorker;
    std::string all;
    const std::string number = std::to_string(worker);
    const EndMark endMark;
    for (int round = 0; round < ROUNDS; ++round) {
        const auto document =
            services.createDocument(TextEncoding::UTF8, XmlSource::LOCAL_FILE, endMark);
        document->loadText("<a xmlns:p='urn:" + number + "'>\n <p:b> " + number + " </p:b></a>");
        document->setSelectionNamespaces("xmlns:q='urn:" + number + "'");
        document->selectNodes("/a/q:b");
        document->appendText(document->selected(0), all);
        document->appendMarkup(document->selected(0), all);
        errorOf([&] { document->selectNodes("/a["); });
        EXPECT_FALSE(document->loadText("<a><b></a>"));
        all += "\n";
    }
    return all;
}

std::string expected(int worker) {
    const std::string number = std::to_string(worker);
    std::string all;
    for (int round = 0; round < ROUNDS; ++round) {
        all += number + "<p:b xmlns:p=\"urn:" + number + "\"> " + number + " </p:b>\n";
    }
    return all;
}

TEST(XmlThreads, EachReadsItsOwnDocuments) {
    XmlServices& services = systemPlatform().xml;
    std::array<std::string, THREADS> results;
    std::vector<std::thread> workers;
    for (int worker = 0; worker < THREADS; ++worker) {
        workers.emplace_back([&services, &result = results[static_cast<size_t>(worker)], worker] {
            result = work(services, worker);
        });
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    for (int worker = 0; worker < THREADS; ++worker) {
        EXPECT_EQ(results[static_cast<size_t>(worker)], expected(worker));
    }
}

}  // namespace

}  // namespace intake
