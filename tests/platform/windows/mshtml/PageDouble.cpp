#include "tests/platform/windows/mshtml/PageDouble.h"

#include "platform/windows/mshtml/mshtml_api.h"
#include "tests/platform/windows/mshtml/HtmlObject.h"

namespace intake {

PageDouble::PageDouble() = default;
PageDouble::~PageDouble() = default;

ComFactory PageDouble::factory() {
    return [this](REFCLSID object, IUnknown*, DWORD context, REFIID interfaceAsked, void** made) {
        const bool expected = object == CLSID_HTML_DOCUMENT && context == CLSCTX_INPROC_SERVER &&
                              interfaceAsked == IID_HTML_DOCUMENT_2;
        const HRESULT result = calls.enter(expected ? "create document" : "create something");
        if (SUCCEEDED(result)) {
            *made = makeDocument(*this);
        }
        return result;
    };
}

MshtmlServices::OpenStream PageDouble::openStream() {
    return [this](IUnknown* caller, const char* source, IStream** stream, DWORD,
                  IBindStatusCallback* callback) {
        const bool expected = caller == nullptr && callback == nullptr;
        const HRESULT result = calls.enter(std::string(expected ? "open " : "?open ") + source);
        if (FAILED(result) || FAILED(opening)) {
            return FAILED(result) ? result : opening;
        }
        if (hasStream) {
            *stream = reinterpret_cast<IStream*>(makeStream(*this));
        }
        return S_OK;
    };
}

size_t PageDouble::addTable(size_t parent, const std::vector<std::vector<std::string>>& rows) {
    const size_t table = nodes.size();
    nodes.push_back({.name = "TABLE", .parent = parent});
    for (const std::vector<std::string>& cells : rows) {
        const size_t row = nodes.size();
        nodes.push_back({.name = "TR", .parent = table});
        for (const std::string& text : cells) {
            nodes.push_back({.name = "TD", .parent = row, .text = text});
        }
    }
    return table;
}

std::vector<size_t> PageDouble::childrenOf(size_t parent, bool all) const {
    std::vector<size_t> children;
    for (size_t node = 0; node < nodes.size(); ++node) {
        if (nodes[node].parent == parent && (all || !nodes[node].name.empty())) {
            children.push_back(node);
        }
    }
    return children;
}

std::vector<size_t> PageDouble::tablesBelow(size_t ancestor) const {
    std::vector<size_t> tables;
    for (size_t node = 0; node < nodes.size(); ++node) {
        if (nodes[node].name != "TABLE") {
            continue;
        }
        size_t above = nodes[node].parent;
        while (above != NO_PARENT && above != ancestor) {
            above = nodes[above].parent;
        }
        if (above == ancestor) {
            tables.push_back(node);
        }
    }
    return tables;
}

}  // namespace intake
