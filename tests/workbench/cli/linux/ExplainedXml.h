#pragma once

#include <string>

#include "tests/workbench/cli/linux/ExplainTest.h"

/// What is said of source.xml.
class ExplainedXml : public ExplainTest {
protected:
    void expectOf(const std::string& content, const Settings& settings,
                  const std::string& text) const {
        write("source.xml", content);
        expectExplained(
            joined({"queryMode=XML", "filename=source.xml", "table=Team", "key=name"}, settings),
            text);
    }
};
