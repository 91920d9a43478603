#pragma once

#include "tests/platform/windows/mshtml/PageDouble.h"

namespace intake {

/// One interface of one object of a page. Its layout is that of a COM object: what it begins with
/// is its table of methods.
struct HtmlObject {
    enum What { DOCUMENT, NODE, ELEMENTS, CHILD_NODES, STREAM };

    const void* methods;
    PageDouble& page;
    What what;
    size_t node = PageDouble::NO_PARENT;  // of a node
    std::vector<size_t> members = {};     // of a collection
    size_t position = 0;                  // of a stream
    long references = 1;
};

/// A new object, referred to once.
HtmlObject* makeDocument(PageDouble& page);
HtmlObject* makeStream(PageDouble& page);

}  // namespace intake
