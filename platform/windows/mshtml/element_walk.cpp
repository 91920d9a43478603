#include "platform/windows/mshtml/element_walk.h"

#include <vector>

#include "platform/windows/mshtml/ElementList.h"

namespace intake {

namespace {

using Element = ComPointer<IHTMLElement>;

/// The children of an element that is being walked through.
struct Level {
    ElementList children;
    size_t next = 0;
};

ElementList childrenOf(const Element& element) {
    ComPointer<IDispatch> children;
    checkCom(element->get_children(children.out()));
    return ElementList(children.as<IHTMLElementCollection>(IID_HTML_ELEMENTS));
}

Element nextOf(std::vector<Level>& levels) {
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next < level.children.size()) {
            return level.children.at<IHTMLElement>(level.next++, IID_HTML_ELEMENT);
        }
        levels.pop_back();
    }
    return {};
}

/// From an element on, down through all that it contains. Without recursion, for pages may be
/// nested deeply.
Element firstMatchFrom(Element element, const HtmlDocument::Matches& matches) {
    std::vector<Level> levels;
    while (element && !matches(element.get())) {
        levels.push_back({childrenOf(element)});
        element = nextOf(levels);
    }
    return element;
}

/// Null when the node is no element.
Element elementOf(const ComPointer<IDispatch>& node) {
    Element element;
    const HRESULT result = node->QueryInterface(IID_HTML_ELEMENT, element.outAny());
    if (result != E_NOINTERFACE) {
        checkCom(result);
    }
    return element;
}

}  // namespace

ComPointer<IHTMLElement> firstMatch(const ComPointer<IHTMLDocument3>& document,
                                    const HtmlDocument::Matches& matches) {
    ComPointer<IDispatch> childNodes;
    checkCom(document->get_childNodes(childNodes.out()));
    const auto nodes = childNodes.as<IHTMLDOMChildrenCollection>(IID_HTML_CHILD_NODES);
    LONG length = 0;
    checkCom(nodes->get_length(&length));
    for (LONG position = 0; position < length; ++position) {
        ComPointer<IDispatch> node;
        checkCom(nodes->item(position, node.out()));
        Element found = firstMatchFrom(elementOf(node), matches);
        if (found) {
            return found;
        }
    }
    return {};
}

}  // namespace intake
