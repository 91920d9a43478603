// What a document of MSXML is asked, in which order, and that everything is given back, also where
// a call fails.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <utility>

#include "platform/PlatformError.h"
#include "platform/windows/msxml/MsxmlDocument.h"
#include "tests/platform/windows/BigAllocations.h"
#include "tests/platform/windows/WatchedMsxml.h"
#include "tests/support/AsWorker.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

class MsxmlDocuments : public testing::Test {
protected:
    /// Comes behind the members of derived fixtures.
    ~MsxmlDocuments() override { EXPECT_EQ(watched_.calls.living(), 0); }

    MsxmlDocument make() {
        ComPointer<IXMLDOMDocument2> document;
        checkCom(CoCreateInstance(CLSID_DOM_DOCUMENT_60, nullptr, CLSCTX_INPROC_SERVER,
                                  IID_DOM_DOCUMENT_2, document.outAny()));
        document->AddRef();
        return {ComPointer<IXMLDOMDocument2>(watched_.watch(document.get())), TextEncoding::UTF8};
    }

    /// The calls since those that were asked for last.
    std::string newCalls() {
        const size_t seen = std::exchange(seen_, watched_.calls.text().size());
        return watched_.calls.text().substr(seen);
    }

    const AsWorker worker_;
    WatchedMsxml watched_;

private:
    size_t seen_ = 0;
};

/// With a document whose calls so far have been asked for.
class MsxmlTeams : public MsxmlDocuments {
protected:
    MsxmlTeams() {
        document_.loadText(R"(<league><team code="BR">Brazil</team>x<team/></league>)");
        league_ = document_.rootElement();
        newCalls();
        held_ = watched_.calls.living();
    }

    /// What is referred to beyond the document and its root element.
    int held() const { return watched_.calls.living() - held_; }

    MsxmlDocument document_ = make();
    XmlDocument::Node league_ = nullptr;
    std::string out_;

private:
    int held_ = 0;
};

TEST_F(MsxmlDocuments, AreSetUpAndLoadFilesAndTexts) {
    const TempDirectory directory;
    const std::string path = directory.write("a.xml", "<a/>");
    MsxmlDocument document = make();
    EXPECT_EQ(newCalls(), "async false\nvalidateOnParse false\nresolveExternals false\n");
    EXPECT_TRUE(document.loadFile(path));
    EXPECT_EQ(newCalls(), "load " + path + "\n");
    EXPECT_TRUE(document.loadText("<b>\xC3\xA9</b>"));
    EXPECT_EQ(newCalls(), "loadXML <b>\xC3\xA9</b>\n");
}

TEST_F(MsxmlDocuments, SayWhyTheyDoNotParse) {
    MsxmlDocument document = make();
    newCalls();
    EXPECT_FALSE(document.loadText("<a>"));
    EXPECT_NE(document.parseErrorReason(), "");
    EXPECT_EQ(newCalls(), "loadXML <a>\nparseError\nreason\n");
    EXPECT_EQ(watched_.calls.living(), 1);
}

TEST_F(MsxmlDocuments, WithoutARootElementHaveNoneToGive) {
    MsxmlDocument document = make();
    newCalls();
    EXPECT_EQ(document.rootElement(), nullptr);
    EXPECT_EQ(newCalls(), "documentElement\n");
}

TEST_F(MsxmlTeams, AreSelectedByNamespacesOnOneLine) {
    document_.setSelectionNamespaces("xmlns:a='u:a'\r\n\txmlns:b='u:b'");
    EXPECT_EQ(newCalls(), "setProperty SelectionNamespaces xmlns:a='u:a'   xmlns:b='u:b'\n");
}

TEST_F(MsxmlTeams, AreSelectedAndFoundByTheirKeys) {
    EXPECT_TRUE(document_.selectNodes("league/team"));
    EXPECT_EQ(document_.selectedCount(), 2U);
    document_.setKeyExpression("@code");
    EXPECT_TRUE(document_.appendKeyText(document_.selected(0), out_));
    EXPECT_FALSE(document_.appendKeyText(document_.selected(1), out_));
    EXPECT_EQ(out_, "BR");
    EXPECT_EQ(newCalls(),
              "selectNodes league/team\nlength\n"
              "item 0\nselectSingleNode @code\ntext\n"
              "item 1\nselectSingleNode @code\n");
}

TEST_F(MsxmlTeams, AreLentUntilTheNextSelectionOrLoad) {
    document_.selectNodes("league/team");
    document_.selected(0);
    document_.selected(1);
    EXPECT_EQ(held(), 2);  // the list and two nodes, but no longer the root element
    document_.selectNodes("league");
    EXPECT_EQ(held(), 0);
    document_.loadText("<a/>");
    EXPECT_EQ(watched_.calls.living(), 1);
}

TEST_F(MsxmlTeams, ThatTheListDoesNotHandOutAreAnError) {
    document_.selectNodes("league/team");
    try {
        document_.selected(2);
        ADD_FAILURE() << "nothing is thrown";
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.code(), static_cast<uint32_t>(E_UNEXPECTED));
    }
    EXPECT_EQ(newCalls(), "selectNodes league/team\nitem 2\n");
}

TEST_F(MsxmlTeams, AreNotSelectedAfterAFailure) {
    document_.selectNodes("league/team");
    EXPECT_THROW(document_.selectNodes("league/["), PlatformError);
    EXPECT_EQ(document_.selectedCount(), 0U);
    EXPECT_EQ(newCalls(), "selectNodes league/team\nselectNodes league/[\n");
    EXPECT_EQ(watched_.calls.living(), 1);
}

TEST_F(MsxmlTeams, AreVisitedOneAfterTheOther) {
    document_.forEachChild(league_, [&](XmlDocument::Node child) {
        EXPECT_EQ(held(), 1);
        document_.appendName(child, out_);
        document_.appendText(child, out_);
        document_.appendMarkup(child, out_);
        out_ += document_.isElement(child) ? ";" : ".";
    });
    EXPECT_EQ(held(), 0);
    EXPECT_EQ(out_, "teamBrazil<team code=\"BR\">Brazil</team>;#textxx.team<team/>;");
    EXPECT_EQ(newCalls(),
              "firstChild\nnodeName\ntext\nxml\nnodeType\n"
              "nextSibling\nnodeName\ntext\nxml\nnodeType\n"
              "nextSibling\nnodeName\ntext\nxml\nnodeType\nnextSibling\n");
}

TEST_F(MsxmlTeams, AreGivenBackByAVisitThatThrows) {
    EXPECT_THROW(document_.forEachChild(league_, [](XmlDocument::Node) { throw 1; }), int);
    EXPECT_EQ(held(), 0);
}

TEST_F(MsxmlTeams, AreSearchedForElementsUntilTheFirst) {
    EXPECT_TRUE(document_.hasElements(league_));
    EXPECT_EQ(newCalls(), "firstChild\nnodeType\n");
    document_.forEachChild(
        league_, [&](XmlDocument::Node child) { EXPECT_FALSE(document_.hasElements(child)); });
    EXPECT_EQ(newCalls(),
              "firstChild\n"
              "firstChild\nnodeType\nnextSibling\nnextSibling\n"
              "firstChild\nnextSibling\n"
              "firstChild\nnextSibling\n");
    EXPECT_EQ(held(), 0);
}

TEST_F(MsxmlTeams, GiveTheirAttributes) {
    document_.selectNodes("league/team");
    const XmlDocument::Node team = document_.selected(0);
    const int before = held();
    newCalls();
    EXPECT_TRUE(document_.attribute(team, "code", out_));
    EXPECT_FALSE(document_.attribute(team, "name", out_));
    EXPECT_EQ(out_, "BR");
    EXPECT_EQ(newCalls(), "QueryInterface\ngetAttribute code\nQueryInterface\ngetAttribute name\n");
    EXPECT_EQ(held(), before);
}

TEST_F(MsxmlTeams, AreAddedAndGetTheirTexts) {
    const XmlDocument::Node team = document_.appendElement(league_, "team");
    EXPECT_EQ(held(), 1);
    EXPECT_EQ(newCalls(), "createElement team\nappendChild\n");
    document_.setText(team, "Chile");
    EXPECT_EQ(newCalls(), "firstChild\nput text Chile\n");
    document_.setText(team, "Peru");
    EXPECT_EQ(newCalls(), "firstChild\nremoveChild\nfirstChild\nput text Peru\n");
    EXPECT_EQ(held(), 1);
    document_.appendMarkup(league_, out_);
    EXPECT_EQ(out_, "<league><team code=\"BR\">Brazil</team>x<team/><team>Peru</team></league>");
}

/// Makes each call in turn fail; every text is big enough for its leak to be seen.
class MsxmlDocumentFailures : public MsxmlDocuments {
protected:
    void failEachCall(int expected, const std::function<void(MsxmlDocument&)>& use) {
        const size_t texts = BigAllocations::living();
        for (int failing = 1; failing <= expected + 1; ++failing) {
            watched_.calls = ComCalls();
            watched_.calls.failAt(failing);
            SCOPED_TRACE(failing);
            EXPECT_EQ(fails(use), failing <= expected);
            EXPECT_EQ(watched_.calls.count(), std::min(failing, expected));
            EXPECT_EQ(watched_.calls.living(), 0);
            EXPECT_EQ(BigAllocations::living(), texts);
        }
    }

    const std::string big_ = std::string(BigAllocations::CHARACTERS, 'k');

private:
    bool fails(const std::function<void(MsxmlDocument&)>& use) {
        try {
            MsxmlDocument document = make();
            use(document);
            return false;
        } catch (const PlatformError& failure) {
            EXPECT_EQ(static_cast<HRESULT>(failure.code()), ComCalls::FAILURE);
            return true;
        }
    }
};

TEST_F(MsxmlDocumentFailures, OfALoadGiveEverythingBack) {
    const TempDirectory directory;
    const std::string path = directory.write("a.xml", "<" + big_ + "/>");
    failEachCall(7, [&](MsxmlDocument& document) {
        EXPECT_TRUE(document.loadFile(path));
        EXPECT_FALSE(document.loadText("<" + big_));
        document.parseErrorReason();
    });
}

TEST_F(MsxmlDocumentFailures, OfASelectionGiveEverythingBack) {
    failEachCall(16, [&](MsxmlDocument& document) {
        document.loadText("<t><a k='" + big_ + "'>" + big_ + "</a><a/></t>");
        document.setSelectionNamespaces("xmlns:a='" + big_ + "'");
        document.setKeyExpression("@k" + std::string(BigAllocations::CHARACTERS, ' '));
        document.selectNodes("/t/a" + std::string(BigAllocations::CHARACTERS, ' '));
        std::string text;
        for (size_t row = 0; row < document.selectedCount(); ++row) {
            EXPECT_EQ(document.appendKeyText(document.selected(row), text), row == 0);
        }
        EXPECT_EQ(text, big_);
        document.selectNodes("/t");
        document.selected(0);
    });
}

TEST_F(MsxmlDocumentFailures, OfReadingGiveEverythingBack) {
    failEachCall(21, [&](MsxmlDocument& document) {
        document.loadText("<t>x<" + big_ + " k='" + big_ + "'>" + big_ + "</" + big_ + "></t>");
        const XmlDocument::Node root = document.rootElement();
        EXPECT_TRUE(document.hasElements(root));
        document.forEachChild(root, [&](XmlDocument::Node child) {
            if (document.isElement(child)) {
                std::string text;
                document.appendName(child, text);
                document.appendText(child, text);
                document.appendMarkup(child, text);
                EXPECT_TRUE(document.attribute(child, "k", text));
                EXPECT_EQ(text, big_);
                EXPECT_FALSE(document.attribute(child, big_, text));
            }
        });
    });
}

TEST_F(MsxmlDocumentFailures, OfBuildingGiveEverythingBack) {
    failEachCall(13, [&](MsxmlDocument& document) {
        document.loadText("<t/>");
        const XmlDocument::Node row = document.appendElement(document.rootElement(), big_);
        document.setText(row, big_);
        document.setText(row, "other" + big_);
    });
}

}  // namespace
}  // namespace intake
