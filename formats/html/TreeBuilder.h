#pragma once

#include <string_view>
#include <vector>

#include "formats/html/FormattingElements.h"
#include "formats/html/OpenElements.h"
#include "formats/html/Page.h"
#include "formats/html/Tokenizer.h"
#include "formats/source/EndMark.h"

namespace intake::html {

/// Puts the tokens of a page together to its tree, by the tree construction rules of the HTML
/// standard, whose terms the names are. There is one operation for each insertion mode; the files
/// tree_*.cpp hold them. Made for one page.
///
/// Hostile pages are kept from taking time or memory out of proportion by limits on the depth of
/// open elements, which many a step of the standard walks along, on the sum of these depths at all
/// tokens, on the number of nodes, which the reconstruction of formatting elements can multiply,
/// and on the memory of the tree.
class TreeBuilder {
public:
    TreeBuilder(Page& page, const EndMark& endMark, size_t maxTreeBytes);

    /// Throws as parsePage does.
    void build();

private:
    using Mode = void (TreeBuilder::*)(Token&);

    struct InsertionLocation {
        Node* parent;
        Node* before;
    };

    // TreeBuilder.cpp: what the modes are made of
    void checkCost();
    void process(Token& token);
    void reprocess(Mode mode, Token& token);
    bool belongsToHtml(const Token& token) const;
    static bool isHtmlParent(const Node& node);

    Node* createNode(NodeType type);
    Node* createElement(std::string_view name, Tag tag, Attribute* attributes,
                        Namespace space = Namespace::HTML);
    InsertionLocation insertionLocation(Node* target = nullptr) const;
    InsertionLocation fosterLocation() const;
    Node* insertElement(const Token& token, Namespace space = Namespace::HTML);
    Node* insertElement(Tag tag);
    void insertVoidElement(const Token& token);
    void insertText(std::string_view text);
    void insertComment(const Token& token, Node* parent = nullptr);
    void open(Node* element);
    void readTextOf(const Token& token, Tokenizer::TextMode mode);

    std::string_view takeLeadingSpace(Token& token) const;
    bool takeSpaceOrComment(Token& token);
    std::string_view onlySpaces(std::string_view text);
    std::string_view withoutNulls(std::string_view text);
    void addMissingAttributes(Node* element, const Token& token);

    // tree_formatting.cpp
    void generateImpliedEndTags(Tag except = Tag::OTHER);
    void generateAllImpliedEndTags();
    void closeP();
    void closeThrough(Tag tag);
    void reconstructFormatting();
    Node* copyOf(const Node& element);
    Node* insertCopy(const Node& element);
    void adoptionAgency(const Token& token);
    size_t findFurthestBlock(size_t formattingPlace) const;
    void moveBlockOutOf(Node* formatting, size_t formattingPlace, size_t blockPlace);
    void resetInsertionMode();
    Mode modeBehind(Tag tag) const;

    // tree_head.cpp
    void initial(Token& token);
    void beforeHtml(Token& token);
    void beforeHead(Token& token);
    void inHead(Token& token);
    void inHeadNoscript(Token& token);
    void afterHead(Token& token);
    bool startAfterHead(Token& token);
    void insertDoctype(const Token& token);
    bool startInHead(Token& token);
    void startTemplate(const Token& token);
    void endTemplate();

    // tree_body.cpp
    void inBody(Token& token);
    void textInBody(Token& token);
    void startInBody(Token& token);
    bool startBlock(Token& token);
    bool startFormatting(Token& token);
    bool startObject(Token& token);
    bool startFormControl(Token& token);
    bool startSelectPart(Token& token);
    static bool isHiddenInput(const Token& token);
    bool startPageElement(Token& token);
    void startListItem(Token& token);
    void startOther(Token& token);
    void text(Token& token);

    // tree_body_ends.cpp
    void endInBody(Token& token);
    bool closeInScope(Tag tag);
    bool endBlock(Token& token);
    void endForm();
    void endHeading();
    void endOther(const Token& token);

    // tree_tables.cpp
    void inTable(Token& token);
    bool startInTable(Token& token);
    bool endInTable(Token& token);
    void textInTable(Token& token);
    void inTableText(Token& token);
    void inCaption(Token& token);
    void inColumnGroup(Token& token);
    void inTableBody(Token& token);
    void inRow(Token& token);
    void inCell(Token& token);
    void closeCell();
    template <class... Tags>
    void clearStackBackTo(Tags... tags);
    void inBodyWithFosterParenting(Token& token);

    // tree_rest.cpp
    void inTemplate(Token& token);
    static Mode modeInTemplate(Tag tag);
    bool takeBehindBody(Token& token, Node* commentParent);
    void spaceInBody(std::string_view space);
    void afterBody(Token& token);
    bool takeAmongFramesets(Token& token);
    void inFrameset(Token& token);
    void afterFrameset(Token& token);
    void afterAfterBody(Token& token);
    void afterAfterFrameset(Token& token);

    // tree_foreign.cpp
    void inForeignContent(Token& token);
    void textInForeign(const Token& token);
    void startForeign(Token& token);
    void endForeign(Token& token);
    void startForeignRoot(Token& token, Namespace space);
    void leaveForeignContent(Token& token);
    static bool breaksOut(const Token& token);

    Page& page_;
    const EndMark& endMark_;
    Tokenizer tokenizer_;
    const size_t maxNodes_;
    const size_t maxTreeBytes_;
    size_t nodeCount_ = 0;
    size_t steps_ = 0;

    Mode mode_ = &TreeBuilder::initial;
    Mode originalMode_ = nullptr;      // behind the text of an element, or of a table
    std::vector<Mode> templateModes_;  // innermost last
    OpenElements open_;
    FormattingElements formatting_;
    std::vector<std::string_view> tableText_;

    Node* head_ = nullptr;
    Node* form_ = nullptr;
    bool quirks_ = false;
    bool framesetAllowed_ = true;
    bool fosterParenting_ = false;
    bool skipLineFeed_ = false;  // the first behind <pre>
};

}  // namespace intake::html
