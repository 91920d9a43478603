#include "tests/workbench/cli/ReportLines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

namespace {

using rapidjson::Document;
using rapidjson::Value;

Document parse(const std::string& text) {
    Document document;
    document.Parse(text.c_str());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

const Document& schema() {
    static const Document document = [] {
        std::ifstream file(REPORT_SCHEMA);
        return parse({std::istreambuf_iterator<char>(file), {}});
    }();
    return document;
}

bool isOneOf(const Value& value, const Value& allowed) {
    return std::any_of(allowed.Begin(), allowed.End(), [&](const Value& each) {
        return std::string(each.GetString()) == value.GetString();
    });
}

bool isDateTime(const Value& value) {
    static const std::regex form(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)");
    return std::regex_match(value.GetString(), form);
}

bool fits(const Value& value, const Value& rule) {
    if (rule.HasMember("enum")) return isOneOf(value, rule["enum"]);
    if (std::string(rule["type"].GetString()) == "integer") return value.IsUint64();
    return value.IsString() && (!rule.HasMember("format") || isDateTime(value));
}

void expectToFit(const Document& line, const std::string& text) {
    ASSERT_TRUE(line.IsObject()) << text;
    const Value& properties = schema()["properties"];
    for (const Value& name : schema()["required"].GetArray())
        EXPECT_TRUE(line.HasMember(name)) << name.GetString() << " is missing: " << text;
    for (const auto& member : line.GetObject()) {
        ASSERT_TRUE(properties.HasMember(member.name)) << text;
        EXPECT_TRUE(fits(member.value, properties[member.name]))
            << member.name.GetString() << ": " << text;
    }
}

}  // namespace

std::vector<Document> readReport(const std::string& text) {
    std::vector<Document> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(parse(line));
        expectToFit(lines.back(), line);
    }
    return lines;
}

std::string textOf(const Document& line, const char* name) {
    return line[name].GetString();
}

std::size_t numberOf(const Document& line, const char* name) {
    return line[name].GetUint64();
}

std::vector<std::string> outcomesOf(const std::vector<Document>& lines) {
    std::vector<std::string> outcomes;
    for (const Document& line : lines)
        outcomes.push_back(textOf(line, "outcome"));
    return outcomes;
}
