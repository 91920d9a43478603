#pragma once

#include <string>

#include "tests/workbench/cli/linux/ExplainTest.h"

/// What is said of source.xml.
class ExplainedXml : public ExplainTest {
protected:
    static constexpr const char* league = R"(<?xml version="1.0"?>
<league season="2027">
  <group name="A"><club id="ha"><name>Harbour</name><points>12</points></club>
    <club id="pi"><name>Pier</name><points>4</points></club></group>
  <group name="B"><club id="qu"><name>Quay</name><points>9</points></club></group>
</league>)";

    void expectOf(const std::string& content, const Settings& settings,
                  const std::string& text) const {
        write("source.xml", content);
        expectExplained(
            joined({"queryMode=XML", "filename=source.xml", "table=Team", "key=name"}, settings),
            text);
    }
};
