#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/windows/com/ComFactory.h"
#include "platform/windows/mshtml/MshtmlServices.h"
#include "tests/platform/windows/ComCalls.h"

namespace intake {

struct HtmlObject;

/// A page that a test lays out, offered through objects that stand in for urlmon's and MSHTML's:
/// they count their references and note their calls. Used on one thread; outlives what it makes.
class PageDouble {
public:
    static constexpr size_t NO_PARENT = static_cast<size_t>(-1);

    /// In document order, so that a parent comes before its children.
    struct Node {
        std::string name;  // of an element, in upper case; empty for what is no element
        size_t parent = NO_PARENT;
        std::string id = {}, className = {}, text = {};
    };

    PageDouble();
    ~PageDouble();

    /// What stands in for CoCreateInstance and URLOpenBlockingStreamA.
    ComFactory factory();
    MshtmlServices::OpenStream openStream();

    /// Adds a TABLE with these rows of texts; its position.
    size_t addTable(size_t parent, const std::vector<std::vector<std::string>>& rows);

    /// The children of a node, elements or all of them.
    std::vector<size_t> childrenOf(size_t parent, bool all = false) const;

    /// The TABLE elements below a node, in document order.
    std::vector<size_t> tablesBelow(size_t ancestor) const;

    std::vector<Node> nodes;
    std::string content = "<html>";      // of the stream
    unsigned long long toldSize = 6;     // by the stream, of its content
    unsigned long readAtOnce = 1 << 20;  // at most, by one call
    HRESULT opening = S_OK;              // what opening the stream returns
    bool hasStream = true;               // or a success without one

    ComCalls calls;
    std::wstring written;                              // into the document
    std::vector<std::unique_ptr<HtmlObject>> objects;  // also those that have been released
};

}  // namespace intake
