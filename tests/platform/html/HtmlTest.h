#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// A page of the system's own HTML services.
class HtmlTest : public testing::Test {
protected:
    using Element = HtmlDocument::Element;

    /// Opens a page from a file.
    void load(const std::string& page);

    /// Opens a source; fails the test when that fails.
    void open(const std::string& source);

    /// Why a source does not open; fails the test when it does.
    std::string reasonOf(const std::string& source);

    /// The inner text of the table's only cell.
    std::string cell();

    /// The inner text of the only cell of a page with this content in it.
    std::string cellOf(const std::string& content);

    /// The first table, cells ended by "|" and rows by a line feed.
    std::string table() { return table(document_->firstTable(nullptr)); }
    std::string table(Element table);

    HtmlServices& services_ = systemPlatform().html;
    std::unique_ptr<KeptConnections> connections_ = systemPlatform().http.keepConnections();
    EndMark endMark_;
    TempDirectory directory_;
    std::unique_ptr<HtmlDocument> document_;
};

}  // namespace intake
