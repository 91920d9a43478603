#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/formats/workbook/ZipWriter.h"

namespace intake {

/// A workbook that a test writes part by part.
class TestBook {
public:
    /// Adds a sheet by the XML within its sheetData.
    TestBook& sheet(const std::string& name, const std::string& rows);

    /// Adds a sheet by the whole XML of its part.
    TestBook& sheetPart(const std::string& name, const std::string& xml);

    /// The XML within the shared strings' root, the styles' root and the list of names.
    TestBook& strings(const std::string& items);
    TestBook& styles(const std::string& content);
    TestBook& names(const std::string& content);

    TestBook& from1904();

    /// Replaces or adds a part.
    TestBook& part(const std::string& path, const std::string& content);
    TestBook& without(const std::string& path);

    TestBook& zip(const ZipWriter::Options& options);

    std::string bytes() const;

private:
    struct Sheet {
        std::string name;
        std::string xml;
    };

    std::map<std::string, std::string> parts() const;
    std::string workbookXml() const;
    std::string workbookRelationships() const;

    std::vector<Sheet> sheets_;
    std::string names_;
    std::string properties_;
    std::map<std::string, std::string> changed_;
    std::vector<std::string> left_out_;
    ZipWriter::Options options_;
};

}  // namespace intake
