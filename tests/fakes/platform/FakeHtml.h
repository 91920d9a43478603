#pragma once

#include "platform/HtmlDocument.h"

namespace intake {

/// Pages for tests. Used on one thread; outlives what it makes.
class FakeHtml final : public HtmlServices {
public:
    std::unique_ptr<HtmlDocument> open(const std::string&, const EndMark&,
                                       std::string& reason) override {
        reason = "No page is set up";
        return nullptr;
    }
};

}  // namespace intake
