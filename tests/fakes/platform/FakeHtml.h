#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/HtmlDocument.h"

namespace intake {

/// A page that a test lays out, with every call kept as a line of text, any of which can be made to
/// fail. All TABLE elements have the same rows. Used on one thread; outlives what it makes.
class FakeHtml final : public HtmlServices {
public:
    static constexpr size_t NO_PARENT = static_cast<size_t>(-1);

    /// An element of the page. In document order, so that a parent comes before its children.
    struct Element {
        std::string name;
        size_t parent = NO_PARENT;  // its place in the page
        bool isTable = false;
        std::string id = {}, className = {}, text = {};
    };

    std::unique_ptr<HtmlDocument> open(const std::string& source, KeptConnections& connections,
                                       const EndMark& endMark, std::string& reason) override;

    /// Makes the first call of that name throw PlatformError.
    void failAt(const std::string& call) { failingCall_ = call; }

    /// The calls so far, oldest first, each ended by a line feed.
    const std::string& calls() const { return calls_; }

    std::string unreachable = "No page is set up";  // why pages do not open; empty when they do
    std::vector<Element> page;
    std::vector<std::vector<std::string>> rows;

    /// For the fakes that this one makes: notes a call, and throws where it is to fail.
    void note(const std::string& call, const std::string& details = "");
    /// Notes the end of a document or table.
    void noteEnd(const std::string& what) { calls_ += "release " + what + "\n"; }

private:
    std::string calls_;
    std::string failingCall_;
};

}  // namespace intake
