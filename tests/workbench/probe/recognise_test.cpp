#include "workbench/probe/recognise.h"

#include <gtest/gtest.h>

using namespace std::string_literals;
using probe::Kind;
using probe::recognise;
using probe::titleOf;

namespace {

// The text in UTF-16, lower bytes first.
std::string wide(const std::string& text) {
    std::string bytes;
    for (const char c : text)
        bytes += {c, '\0'};
    return bytes;
}

// The same, higher bytes first.
std::string wideReversed(const std::string& text) {
    return "\0"s + wide(text).substr(0, 2 * text.size() - 1);
}

// An archive as it begins, with files of these names.
std::string archive(const std::vector<std::string>& names) {
    std::string bytes;
    for (const std::string& name : names)
        bytes += "PK\x03\x04" + std::string(26, '\x01') + name + "packed";
    return bytes;
}

}  // namespace

TEST(Recognise, NothingButWhiteSpaceIsEmpty) {
    for (const std::string& text :
         {""s, " \r\n\t"s, "\xEF\xBB\xBF"s, "\xEF\xBB\xBF\n"s, "\xFF\xFE"s, wide(" \n")})
        EXPECT_EQ(recognise(text), Kind::Empty) << text;
}

TEST(Recognise, JsonBeginsWithAnObjectOrAnArray) {
    for (const std::string& text :
         {"{\"a\": 1}"s, "\n [1, 2]"s, "[]"s, "["s, "{"s, "[true]"s, "[ null"s, "[-1]"s, "{a: 1}"s,
          "\xEF\xBB\xBF{}"s, "\xFF\xFE" + wide("{}"), wide("[1]"), wideReversed("[1]"),
          "\xFE\xFF" + wideReversed("[1]")})
        EXPECT_EQ(recognise(text), Kind::Json) << text;
}

TEST(Recognise, OtherTextsThatBeginWithABracketAreTexts) {
    for (const char* text : {"{\\rtf1 a}", "[section]\nkey=value", "<3 hearts", "<-"})
        EXPECT_EQ(recognise(text), Kind::Text) << text;
}

TEST(Recognise, XmlIsFoundBehindWhateverMayStandBeforeIt) {
    for (const std::string& text :
         {"<league/>"s, "\n<?xml version='1.0'?><league>"s,
          "\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- > <html> -->\n<a:b xmlns:a='x'/>"s,
          "<!DOCTYPE league [<!ENTITY a '>'>]>\n<league>"s, "<?xml-stylesheet href='x'?><rss>"s,
          "<?xml version='1.0'?><table><tr/></table>"s, "<table><row/></table>"s,
          "<table><track/></table>"s, "<title>Cup</title>"s, "<article><title/></article>"s,
          "<?xml version='1.0'"s, "<!-- never ended"s, "\xFF\xFE" + wide("<a/>"), wide("<a/>"),
          wideReversed("<a/>"), "<\xC3\xA9t\xC3\xA9/>"s})
        EXPECT_EQ(recognise(text), Kind::Xml) << text;
}

TEST(Recognise, PagesAreFoundWhateverTheyBeginWith) {
    for (const std::string& text :
         {"<!DOCTYPE html><p>"s, "\n<!doctype HTML PUBLIC \"-//W3C//DTD HTML 4.01//EN\">"s,
          "<HTML>"s, "<!-- saved --><html lang='en'>"s, "<table class='x'><tr><td>"s,
          "<TABLE><TR>"s, "<title>Cup</title><table><tr bgcolor=red>"s, "<form><table><tr>"s,
          "<table><tr\n class='x'>"s, "<table><tr\tid='x'>"s, "<table><tr/>"s, "<table><tr"s,
          "<br />\n<b>Warning</b>"s, "<div>"s,
          "<?xml version='1.0'?><!DOCTYPE html PUBLIC 'x' 'y'><html xmlns='z'>"s,
          "<?xml version='1.0'?><html xmlns='http://www.w3.org/1999/xhtml'>"s,
          "\xFF\xFE" + wide("<!DOCTYPE html>")})
        EXPECT_EQ(recognise(text), Kind::Html) << text;
}

TEST(Recognise, AnArchiveWithWorksheetsIsAWorkbook) {
    EXPECT_EQ(recognise(archive({"[Content_Types].xml", "_rels/.rels", "xl/workbook.xml"})),
              Kind::Workbook);
    EXPECT_EQ(recognise(archive({"[Content_Types].xml", "word/document.xml"})), Kind::Zip);
    EXPECT_EQ(recognise("PK\x05\x06" + std::string(18, '\0')), Kind::Zip);
    EXPECT_EQ(recognise("PK\x03\x04"), Kind::Zip);
}

TEST(Recognise, OtherFilesAreKnownByTheirFirstBytes) {
    EXPECT_EQ(recognise("SQLite format 3\0\x10\0"s), Kind::Sqlite);
    EXPECT_EQ(recognise("\x1F\x8B\x08"), Kind::Gzip);
    EXPECT_EQ(recognise("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"), Kind::OldDocument);
    EXPECT_EQ(recognise("%PDF-1.7"), Kind::Pdf);
    EXPECT_EQ(recognise("\x89PNG\r\n\x1A\n"), Kind::Image);
    EXPECT_EQ(recognise("\xFF\xD8\xFF\xE0"), Kind::Image);
    EXPECT_EQ(recognise("GIF89a"), Kind::Image);
}

TEST(Recognise, ReadableCharactersAreATextAndOthersAreUnknown) {
    for (const std::string& text : {"club;points\nGW;58\n"s, "M\xFCnchen"s, "42"s})
        EXPECT_EQ(recognise(text), Kind::Text) << text;
    for (const std::string& bytes : {"\x7F"
                                     "ELF\x02\x01"s,
                                     "\0\0\0\0"s, "a\0"s, "\xFF\xFE\0\0{\0\0\0"s})
        EXPECT_EQ(recognise(bytes), Kind::Unknown) << bytes;
}

TEST(Recognise, TheTitleOfAPageIsOneLine) {
    EXPECT_EQ(titleOf("<html><HEAD><Title lang=en>\n Sign\n  in &amp; out </TITLE>"),
              "Sign in & out");
    EXPECT_EQ(titleOf("\xFF\xFE" + wide("<title>Sign in</title>")), "Sign in");
    EXPECT_EQ(titleOf("<title>never ended"), "");
    EXPECT_EQ(titleOf("<p>none"), "");
    EXPECT_EQ(titleOf(""), "");
}
