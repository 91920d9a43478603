#include "formats/xml/TreeReader.h"

#include <new>
#include <stdexcept>
#include <utility>

#include "formats/xml/xml_text.h"

namespace intake {

namespace {

XmlDoc newDocument() {
    XmlDocDeleter deleter{std::make_shared<XmlArena>()};
    XmlDoc document(xmlNewDoc(nullptr), std::move(deleter));
    if (document == nullptr) {
        throw std::bad_alloc();
    }
    return document;
}

}  // namespace

TreeReader::TreeReader(uint64_t mostNodes, KeptAttributes attributes)
    : document_(newDocument()),
      arena_(*document_.get_deleter().arena),
      tree_(arena_),
      elements_(mostNodes),
      withAttributes_(attributes == KeptAttributes::ALL) {
    tree_.begin(document_.get(), reinterpret_cast<xmlNode*>(document_.get()));
}

bool TreeReader::startElement(const XmlTag& tag) {
    if (!elements_.enter(tag, &arena_)) {
        return false;
    }
    elements_.addTo(tree_, tag, withAttributes_);
    return true;
}

void TreeReader::endElement() {
    tree_.close();
    elements_.leave();
}

void TreeReader::text(std::string_view text) {
    if (elements_.leavesOut(text)) {
        return;
    }
    elements_.addLeaf();
    xmlNode* const added = tree_.addText(text);
    if (elements_.preservesSpace()) {
        keepSpace(added);
    }
}

void TreeReader::section(std::string_view text) {
    elements_.addLeaf();
    tree_.addSection(text);
}

void TreeReader::comment(std::string_view text) {
    elements_.addLeaf();
    tree_.addComment(text);
}

void TreeReader::instruction(std::string_view target, const std::string_view* data) {
    elements_.addLeaf();
    tree_.addInstruction(target, data);
}

XmlDoc scanTree(const ByteSource& source, const std::string& charset, const EndMark& endMark,
                uint64_t mostNodes, KeptAttributes attributes, size_t windowSize) {
    TreeReader reader(mostNodes, attributes);
    try {
        return scanDocument(source, charset, endMark, reader, windowSize) ? reader.release()
                                                                          : nullptr;
    } catch (const std::length_error&) {
        return nullptr;  // which the parser says better
    }
}

}  // namespace intake
