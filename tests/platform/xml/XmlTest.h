#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/Platform.h"
#include "tests/support/AsWorker.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/error_of.h"

namespace intake {

/// A document of the system's own XML services.
class XmlTest : public testing::Test {
protected:
    using Node = XmlDocument::Node;

    /// Expects the text to be well-formed.
    void load(std::string_view text);

    /// Writes the bytes to a file and loads it.
    bool loadFile(const std::string& bytes);

    /// The texts, names or markup of the nodes that an expression selects, each ended by a "|".
    std::string texts(const std::string& expression);
    std::string names(const std::string& expression);
    std::string markup(const std::string& expression);

    size_t count(const std::string& expression);

    /// Every child of the one selected node as `name=text|`.
    std::string children(const std::string& expression);

    const AsWorker worker_;
    XmlServices& services_ = systemPlatform().xml;
    TempDirectory directory_;
    EndMark endMark_;
    std::unique_ptr<XmlDocument> document_ =
        services_.createDocument(TextEncoding::UTF8, XmlSource::LOCAL_FILE, endMark_);

private:
    using Append = void (XmlDocument::*)(Node, std::string&);
    std::string join(const std::string& expression, Append append);
};

}  // namespace intake
