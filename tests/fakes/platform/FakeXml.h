#pragma once

#include <memory>
#include <string>

#include "platform/PlatformError.h"
#include "platform/XmlDocument.h"

namespace intake {

/// XML services that keep every call as a line of text, any of which can be made to fail. A
/// document has as many selected nodes as a test says; they are empty, and so is its root. Used on
/// one thread; outlives what it makes.
class FakeXml final : public XmlServices {
public:
    std::unique_ptr<XmlDocument> createDocument(TextEncoding encoding, XmlSource source,
                                                const EndMark&) override;
    std::unique_ptr<XmlRequest> createRequest(KeptConnections& connections,
                                              const EndMark& endMark) override;

    /// Makes the `occurrence`th call of that name throw failure().
    void failAt(const std::string& call, int occurrence = 1);

    /// What failing calls throw, and its report.
    static PlatformError failure();
    static const std::string& failureReport();

    /// The calls so far, oldest first, each ended by a line feed.
    const std::string& calls() const { return calls_; }

    std::string unreadable;    // the parser's reason; files load when it is empty
    bool selects = true;       // whether a node list comes back
    size_t selectedCount = 0;  // its length
    size_t sourceSize = 0;     // of each document

    /// For the fakes that this one makes: notes a call, and throws where it is to fail.
    void note(const std::string& call, const std::string& details = "");
    /// Notes the end of a document or request.
    void noteEnd(const std::string& what) { calls_ += "release " + what + "\n"; }

private:
    std::string calls_;
    std::string failingCall_;
    int callsToFailure_ = 0;
};

}  // namespace intake
