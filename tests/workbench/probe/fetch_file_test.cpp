#include <filesystem>

#include "tests/support/TempDirectory.h"
#include "tests/workbench/probe/fetch_support.h"

namespace probe {

namespace {

using Stage = FetchFailure::Stage;

class FetchedFile : public testing::Test {
protected:
    intake::TempWorkingDirectory directory_;
};

TEST_F(FetchedFile, IsReadWhole) {
    const std::string content(1'000'000, 'x');
    directory_.write("a.json", content);

    const Fetched fetched = fetch(settingsFor(QueryType::Json, "a.json"), patience);

    EXPECT_EQ(fetched.body, content);
    EXPECT_EQ(fetched.address, "a.json");
    EXPECT_EQ(fetched.status, 0);
    EXPECT_EQ(fetched.contentType, "");
    EXPECT_GT(fetched.milliseconds, 0);
    EXPECT_FALSE(fetched.certificate);
}

TEST_F(FetchedFile, MayBeEmpty) {
    directory_.write("a.xml", "");
    EXPECT_EQ(fetch(settingsFor(QueryType::Xml, "a.xml"), patience).body, "");
}

TEST_F(FetchedFile, ThatIsMissingIsSaidWithThePlaceWhereItWasLookedFor) {
    const FetchFailure failure = failureOf(settingsFor(QueryType::Json, "absent.json"));
    EXPECT_EQ(failure.what(), "is not there; it was looked for as " +
                                  (std::filesystem::current_path() / "absent.json").string());
    EXPECT_EQ(failure.stage, Stage::Address);
    EXPECT_NE(failure.next.find("\"File Name\" (filename)"), std::string::npos);
}

TEST_F(FetchedFile, ThatIsAFolderIsSaidToBeOne) {
    const FetchFailure failure = failureOf(settingsFor(QueryType::Excel, "."));
    EXPECT_STREQ(failure.what(), "is a folder");
    EXPECT_EQ(failure.next, "Set \"File Name\" (filename) to a file in this folder.");
}

TEST_F(FetchedFile, ThatIsNotNamedIsAskedFor) {
    const FetchFailure failure = failureOf(settingsFor(QueryType::Json, ""));
    EXPECT_STREQ(failure.what(), "is not named");
    EXPECT_EQ(failure.next, "Set \"File Name\" (filename) to a path or an address.");
}

TEST_F(FetchedFile, ThatIsLargerThanIsReadIsRefused) {
    const std::string page = directory_.write("large.html", "");
    std::filesystem::resize_file(page, 100'000'001);
    const FetchFailure failure = failureOf(settingsFor(QueryType::Html, page));
    EXPECT_STREQ(failure.what(), "is larger than 100 MB, the most that is read");
}

class FetchedFileUrl : public FetchedFile {
protected:
    std::string url(const std::string& path) const {
        const std::string text = std::filesystem::path(path).generic_string();
        return "file://" + std::string(text.starts_with('/') ? "" : "/") + text;
    }
};

TEST_F(FetchedFileUrl, IsNotReadForJsonAndThePathIsProposed) {
    const std::string file = directory_.write("a b.json", "[1]");
    std::string escaped = url(file);
    escaped.replace(escaped.find(' '), 1, "%20");

    const FetchFailure failure = failureOf(settingsFor(QueryType::Json, escaped));

    EXPECT_STREQ(failure.what(), "is a file given as an address, which is not read for JSON");
    const std::string path = std::filesystem::path(file).generic_string();
    EXPECT_EQ(failure.next, "Set \"File Name\" (filename) to the path alone: " + path + ".");
    EXPECT_EQ(failure.proposal, (Proposal{{"filename", path}}));
    EXPECT_EQ(failure.stage, Stage::Address);
}

TEST_F(FetchedFileUrl, OfAFileThatIsMissingProposesNothing) {
    const FetchFailure failure = failureOf(settingsFor(QueryType::Xml, "file:///absent.xml"));
    EXPECT_EQ(failure.proposal, Proposal{});
    EXPECT_NE(failure.next.find("the path alone: /absent.xml."), std::string::npos);
}

TEST_F(FetchedFileUrl, IsReadForHtml) {
    const std::string page = directory_.write("a.html", "<p>");
    EXPECT_EQ(fetch(settingsFor(QueryType::Html, url(page)), patience).body, "<p>");
}

TEST(FetchedAddress, OverFtpIsSaidToBeForXmlAndHtml) {
    for (const QueryType type : {QueryType::Json, QueryType::Excel}) {
        const FetchFailure failure = failureOf(settingsFor(type, "ftp://127.0.0.1/a"));
        EXPECT_EQ(std::string(failure.what())
                      .find("is an FTP address, which is read for XML and HTML only, not for "),
                  0U);
    }
}

TEST(FetchedAddress, OnTheWebIsNotReadForWorkbooks) {
    const FetchFailure failure = failureOf(settingsFor(QueryType::Excel, "https://host/a.xlsx"));
    EXPECT_STREQ(failure.what(), "is an address on the web; workbooks are read from files only");
}

TEST(FetchedAddress, WithASchemeInCapitalLettersIsMendedWhereCaseMatters) {
    const FetchFailure failure = failureOf(settingsFor(QueryType::Json, "HTTP://host/A"));
    EXPECT_STREQ(failure.what(), "is taken for a file, because HTTP:// is not in lower case");
    EXPECT_EQ(failure.proposal, (Proposal{{"filename", "http://host/A"}}));
}

TEST(FetchedAddress, WithAMisspeltSchemeIsToldFromAFile) {
    const FetchFailure failure = failureOf(settingsFor(QueryType::Html, "htp://host/a"));
    EXPECT_STREQ(failure.what(), "begins with htp://, which is nothing that can be fetched");
}

}  // namespace

}  // namespace probe
