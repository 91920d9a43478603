#pragma once

#include <rapidjson/document.h>

#include <cstddef>
#include <string>
#include <vector>

/// The lines of a report, each an object. Every line is checked against the schema in the
/// documentation.
std::vector<rapidjson::Document> readReport(const std::string& text);

/// Members of a line.
std::string textOf(const rapidjson::Document& line, const char* name);
std::size_t numberOf(const rapidjson::Document& line, const char* name);

/// The outcomes of the lines, in order.
std::vector<std::string> outcomesOf(const std::vector<rapidjson::Document>& lines);
