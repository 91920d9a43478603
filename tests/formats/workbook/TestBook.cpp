#include "tests/formats/workbook/TestBook.h"

namespace intake {

namespace {

const std::string DECLARATION = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
                                "\n";
const std::string MAIN = R"( xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main")";
const std::string RELATIONS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
const std::string PACKAGE =
    R"( xmlns="http://schemas.openxmlformats.org/package/2006/relationships")";

std::string relationship(const std::string& id, const std::string& type,
                         const std::string& target) {
    return "<Relationship Id=\"" + id + "\" Type=\"" + RELATIONS + "/" + type + "\" Target=\"" +
           target + "\"/>";
}

std::string sheetFile(size_t number) {
    return "worksheets/sheet" + std::to_string(number + 1) + ".xml";
}

}  // namespace

TestBook& TestBook::sheet(const std::string& name, const std::string& rows) {
    return sheetPart(name, DECLARATION + "<worksheet" + MAIN + "><sheetData>" + rows +
                               "</sheetData></worksheet>");
}

TestBook& TestBook::sheetPart(const std::string& name, const std::string& xml) {
    sheets_.push_back({name, xml});
    return *this;
}

TestBook& TestBook::strings(const std::string& items) {
    return part("xl/sharedStrings.xml", DECLARATION + "<sst" + MAIN + ">" + items + "</sst>");
}

TestBook& TestBook::styles(const std::string& content) {
    return part("xl/styles.xml",
                DECLARATION + "<styleSheet" + MAIN + ">" + content + "</styleSheet>");
}

TestBook& TestBook::names(const std::string& content) {
    names_ = "<definedNames>" + content + "</definedNames>";
    return *this;
}

TestBook& TestBook::from1904() {
    properties_ = "<workbookPr date1904=\"1\"/>";
    return *this;
}

TestBook& TestBook::part(const std::string& path, const std::string& content) {
    changed_[path] = content;
    return *this;
}

TestBook& TestBook::without(const std::string& path) {
    left_out_.push_back(path);
    return *this;
}

TestBook& TestBook::zip(const ZipWriter::Options& options) {
    options_ = options;
    return *this;
}

std::string TestBook::workbookXml() const {
    std::string list;
    for (size_t i = 0; i < sheets_.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        list += "<sheet name=\"" + sheets_[i].name + "\" sheetId=\"" + number + "\" r:id=\"rId" +
                number + "\"/>";
    }
    return DECLARATION + "<workbook" + MAIN + " xmlns:r=\"" + RELATIONS + "\">" + properties_ +
           "<sheets>" + list + "</sheets>" + names_ + "</workbook>";
}

std::string TestBook::workbookRelationships() const {
    std::string list;
    for (size_t i = 0; i < sheets_.size(); ++i) {
        list += relationship("rId" + std::to_string(i + 1), "worksheet", sheetFile(i));
    }
    list += relationship("rIdStrings", "sharedStrings", "sharedStrings.xml");
    if (changed_.contains("xl/styles.xml")) {
        list += relationship("rIdStyles", "styles", "styles.xml");
    }
    return DECLARATION + "<Relationships" + PACKAGE + ">" + list + "</Relationships>";
}

std::map<std::string, std::string> TestBook::parts() const {
    std::map<std::string, std::string> parts{
        {"_rels/.rels", DECLARATION + "<Relationships" + PACKAGE + ">" +
                            relationship("rId1", "officeDocument", "xl/workbook.xml") +
                            "</Relationships>"},
        {"xl/workbook.xml", workbookXml()},
        {"xl/_rels/workbook.xml.rels", workbookRelationships()}};
    for (size_t i = 0; i < sheets_.size(); ++i) {
        parts["xl/" + sheetFile(i)] = sheets_[i].xml;
    }
    for (const auto& [path, content] : changed_) {
        parts[path] = content;
    }
    for (const std::string& path : left_out_) {
        parts.erase(path);
    }
    return parts;
}

std::string TestBook::bytes() const {
    ZipWriter zip;
    for (const auto& [path, content] : parts()) {
        zip.add(path, content, options_);
    }
    return zip.bytes();
}

}  // namespace intake
