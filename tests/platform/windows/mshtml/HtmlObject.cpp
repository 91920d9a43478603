// Interfaces as their tables of methods, in C, so that only the methods that are called need be
// written.
#define CINTERFACE

#include "tests/platform/windows/mshtml/HtmlObject.h"

#include <algorithm>
#include <cstring>

#include "platform/windows/base/wide_text.h"
#include "platform/windows/mshtml/mshtml_api.h"
#include "tests/platform/windows/method_table.h"

namespace intake {

namespace {

using Members = std::vector<size_t>;

// The tables of methods are at the end.
const void* dispatchMethods();
const void* elementMethods();
const void* methodsOf(const HtmlObject& object, REFIID identity);

template <class Self>
HtmlObject& objectOf(Self* self) {
    return *reinterpret_cast<HtmlObject*>(self);
}

template <class Self>
HRESULT enter(Self* self, const std::string& call) {
    return objectOf(self).page.calls.enter(call);
}

HtmlObject* make(HtmlObject object) {
    object.references = 1;
    object.page.calls.objectMade();
    return object.page.objects.emplace_back(std::make_unique<HtmlObject>(std::move(object))).get();
}

// What methods return through their last argument, unless they fail.

HRESULT giveText(HRESULT result, const std::string& text, BSTR* out) {
    if (SUCCEEDED(result)) {
        const std::wstring wide = toWide(text);
        *out = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    }
    return result;
}

template <class Interface>
HRESULT giveNode(HRESULT result, PageDouble& page, size_t node, Interface** out) {
    if (SUCCEEDED(result)) {
        const bool none = node == PageDouble::NO_PARENT;
        *out = none ? nullptr
                    : reinterpret_cast<Interface*>(
                          make({elementMethods(), page, HtmlObject::NODE, node}));
    }
    return result;
}

template <class Interface>
HRESULT giveList(HRESULT result, PageDouble& page, HtmlObject::What what, Members members,
                 REFIID identity, Interface** out) {
    if (SUCCEEDED(result)) {
        HtmlObject list{nullptr, page, what, PageDouble::NO_PARENT, std::move(members)};
        list.methods = methodsOf(list, identity);
        *out = reinterpret_cast<Interface*>(make(std::move(list)));
    }
    return result;
}

// Methods of every object.

HRESULT STDMETHODCALLTYPE queryInterface(IUnknown* self, REFIID identity, void** out) {
    HtmlObject& object = objectOf(self);
    *out = nullptr;
    const void* methods = methodsOf(object, identity);
    if (methods == nullptr) {
        return E_NOINTERFACE;
    }
    const HRESULT result = enter(self, "QueryInterface");
    if (SUCCEEDED(result)) {
        HtmlObject other = object;
        other.methods = methods;
        *out = make(std::move(other));
    }
    return result;
}

ULONG STDMETHODCALLTYPE addRef(IUnknown* self) {
    return static_cast<ULONG>(++objectOf(self).references);
}

/// Also counts what is released too often.
ULONG STDMETHODCALLTYPE release(IUnknown* self) {
    HtmlObject& object = objectOf(self);
    if (--object.references <= 0) {
        object.page.calls.objectGone();
    }
    return static_cast<ULONG>(object.references);
}

template <class Methods>
Methods bareMethods() {
    IUnknownVtbl common{};
    common.QueryInterface = &queryInterface;
    common.AddRef = &addRef;
    common.Release = &release;
    return methodTable<Methods>(common);
}

// The methods of each interface.

const void* dispatchMethods() {
    static const auto methods = bareMethods<IDispatchVtbl>();
    return &methods;
}

const void* document2Methods() {
    static const auto methods = [] {
        auto table = bareMethods<IHTMLDocument2Vtbl>();
        table.write = [](IHTMLDocument2* self, SAFEARRAY* texts) -> HRESULT {
            VARIANT* values = nullptr;
            if (SafeArrayGetDim(texts) == 1 && texts->rgsabound[0].cElements == 1 &&
                SUCCEEDED(SafeArrayAccessData(texts, reinterpret_cast<void**>(&values)))) {
                const BSTR text = values[0].vt == VT_BSTR ? values[0].bstrVal : nullptr;
                objectOf(self).page.written.assign(text, SysStringLen(text));
                SafeArrayUnaccessData(texts);
            }
            return enter(self, "write");
        };
        table.close = [](IHTMLDocument2* self) -> HRESULT { return enter(self, "close"); };
        return table;
    }();
    return &methods;
}

const void* document3Methods() {
    static const auto methods = [] {
        auto table = bareMethods<IHTMLDocument3Vtbl>();
        table.getElementById = [](IHTMLDocument3* self, BSTR id, IHTMLElement** out) -> HRESULT {
            PageDouble& page = objectOf(self).page;
            const auto found =
                std::find_if(page.nodes.begin(), page.nodes.end(),
                             [&](const PageDouble::Node& each) { return each.id == toUtf8(id); });
            const auto node = found == page.nodes.end()
                                  ? PageDouble::NO_PARENT
                                  : static_cast<size_t>(found - page.nodes.begin());
            return giveNode(enter(self, "getElementById " + toUtf8(id)), page, node, out);
        };
        table.getElementsByTagName = [](IHTMLDocument3* self, BSTR name,
                                        IHTMLElementCollection** out) -> HRESULT {
            PageDouble& page = objectOf(self).page;
            return giveList(enter(self, "document getElementsByTagName " + toUtf8(name)), page,
                            HtmlObject::ELEMENTS, page.tablesBelow(PageDouble::NO_PARENT),
                            IID_HTML_ELEMENTS, out);
        };
        table.get_childNodes = [](IHTMLDocument3* self, IDispatch** out) -> HRESULT {
            PageDouble& page = objectOf(self).page;
            return giveList(enter(self, "childNodes"), page, HtmlObject::CHILD_NODES,
                            page.childrenOf(PageDouble::NO_PARENT, true), IID_IDispatch, out);
        };
        return table;
    }();
    return &methods;
}

const void* elementMethods() {
    static const auto methods = [] {
        auto table = bareMethods<IHTMLElementVtbl>();
        table.get_tagName = [](IHTMLElement* self, BSTR* out) -> HRESULT {
            const HtmlObject& object = objectOf(self);
            return giveText(enter(self, "tagName"), object.page.nodes[object.node].name, out);
        };
        table.get_innerText = [](IHTMLElement* self, BSTR* out) -> HRESULT {
            const HtmlObject& object = objectOf(self);
            const PageDouble::Node& node = object.page.nodes[object.node];
            const HRESULT result = enter(self, "innerText " + node.name);
            return node.text.empty() ? result : giveText(result, node.text, out);
        };
        table.getAttribute = [](IHTMLElement* self, BSTR name, LONG, VARIANT* out) -> HRESULT {
            const HtmlObject& object = objectOf(self);
            const std::string& value = object.page.nodes[object.node].className;
            const HRESULT result = enter(self, "getAttribute " + toUtf8(name));
            out->vt = VT_NULL;
            if (FAILED(result) || value.empty()) {
                return result;
            }
            out->vt = VT_BSTR;
            return giveText(result, value, &out->bstrVal);
        };
        table.get_parentElement = [](IHTMLElement* self, IHTMLElement** out) -> HRESULT {
            const HtmlObject& object = objectOf(self);
            return giveNode(enter(self, "parentElement"), object.page,
                            object.page.nodes[object.node].parent, out);
        };
        table.get_children = [](IHTMLElement* self, IDispatch** out) -> HRESULT {
            const HtmlObject& object = objectOf(self);
            return giveList(enter(self, "children"), object.page, HtmlObject::ELEMENTS,
                            object.page.childrenOf(object.node), IID_IDispatch, out);
        };
        return table;
    }();
    return &methods;
}

const void* element2Methods() {
    static const auto methods = [] {
        auto table = bareMethods<IHTMLElement2Vtbl>();
        table.getElementsByTagName = [](IHTMLElement2* self, BSTR name,
                                        IHTMLElementCollection** out) -> HRESULT {
            const HtmlObject& object = objectOf(self);
            return giveList(enter(self, "getElementsByTagName " + toUtf8(name)), object.page,
                            HtmlObject::ELEMENTS, object.page.tablesBelow(object.node),
                            IID_HTML_ELEMENTS, out);
        };
        return table;
    }();
    return &methods;
}

const void* tableMethods() {
    static const auto methods = [] {
        auto table = bareMethods<IHTMLTableVtbl>();
        table.get_rows = [](IHTMLTable* self, IHTMLElementCollection** out) -> HRESULT {
            const HtmlObject& object = objectOf(self);
            return giveList(enter(self, "rows"), object.page, HtmlObject::ELEMENTS,
                            object.page.childrenOf(object.node), IID_HTML_ELEMENTS, out);
        };
        return table;
    }();
    return &methods;
}

const void* rowMethods() {
    static const auto methods = [] {
        auto table = bareMethods<IHTMLTableRowVtbl>();
        table.get_cells = [](IHTMLTableRow* self, IHTMLElementCollection** out) -> HRESULT {
            const HtmlObject& object = objectOf(self);
            return giveList(enter(self, "cells"), object.page, HtmlObject::ELEMENTS,
                            object.page.childrenOf(object.node), IID_HTML_ELEMENTS, out);
        };
        return table;
    }();
    return &methods;
}

const void* elementsMethods() {
    static const auto methods = [] {
        auto table = bareMethods<IHTMLElementCollectionVtbl>();
        table.get_length = [](IHTMLElementCollection* self, LONG* out) -> HRESULT {
            *out = static_cast<LONG>(objectOf(self).members.size());
            return enter(self, "length");
        };
        table.item = [](IHTMLElementCollection* self, VARIANT position, VARIANT,
                        IDispatch** out) -> HRESULT {
            const HtmlObject& object = objectOf(self);
            const auto place = static_cast<size_t>(position.lVal);
            return giveNode(enter(self, "item " + std::to_string(place)), object.page,
                            object.members.at(place), out);
        };
        return table;
    }();
    return &methods;
}

const void* childNodesMethods() {
    static const auto methods = [] {
        auto table = bareMethods<IHTMLDOMChildrenCollectionVtbl>();
        table.get_length = [](IHTMLDOMChildrenCollection* self, LONG* out) -> HRESULT {
            *out = static_cast<LONG>(objectOf(self).members.size());
            return enter(self, "length");
        };
        table.item = [](IHTMLDOMChildrenCollection* self, LONG position,
                        IDispatch** out) -> HRESULT {
            const HtmlObject& object = objectOf(self);
            return giveNode(enter(self, "node " + std::to_string(position)), object.page,
                            object.members.at(static_cast<size_t>(position)), out);
        };
        return table;
    }();
    return &methods;
}

const void* streamMethods() {
    static const auto methods = [] {
        auto table = bareMethods<IStreamVtbl>();
        table.Stat = [](IStream* self, STATSTG* status, DWORD) -> HRESULT {
            *status = STATSTG{};
            status->cbSize.QuadPart = objectOf(self).page.toldSize;
            return enter(self, "Stat");
        };
        table.Read = [](IStream* self, void* buffer, ULONG size, ULONG* got) -> HRESULT {
            HtmlObject& object = objectOf(self);
            const HRESULT result = enter(self, "Read");
            const std::string& content = object.page.content;
            *got = FAILED(result)
                       ? 0
                       : std::min({size, object.page.readAtOnce,
                                   static_cast<ULONG>(content.size() - object.position)});
            std::memcpy(buffer, content.data() + object.position, *got);
            object.position += *got;
            return result;
        };
        return table;
    }();
    return &methods;
}

struct Interface {
    IID identity;
    HtmlObject::What what;
    const char* name;  // of the element that has it; any where it is empty
    const void* (*methods)();
};

const Interface INTERFACES[] = {
    {IID_HTML_DOCUMENT_2, HtmlObject::DOCUMENT, "", document2Methods},
    {IID_HTML_DOCUMENT_3, HtmlObject::DOCUMENT, "", document3Methods},
    {IID_HTML_ELEMENT, HtmlObject::NODE, "", elementMethods},
    {IID_HTML_ELEMENT_2, HtmlObject::NODE, "", element2Methods},
    {IID_HTML_TABLE, HtmlObject::NODE, "TABLE", tableMethods},
    {IID_HTML_TABLE_ROW, HtmlObject::NODE, "TR", rowMethods},
    {IID_HTML_ELEMENTS, HtmlObject::ELEMENTS, "", elementsMethods},
    {IID_HTML_CHILD_NODES, HtmlObject::CHILD_NODES, "", childNodesMethods},
};

const void* methodsOf(const HtmlObject& object, REFIID identity) {
    if (identity == IID_IDispatch) {
        return dispatchMethods();
    }
    const std::string name =
        object.what == HtmlObject::NODE ? object.page.nodes[object.node].name : "document";
    for (const Interface& each : INTERFACES) {
        if (each.identity == identity && each.what == object.what && !name.empty() &&
            (*each.name == '\0' || each.name == name)) {
            return each.methods();
        }
    }
    return nullptr;
}

}  // namespace

HtmlObject* makeDocument(PageDouble& page) {
    return make({document2Methods(), page, HtmlObject::DOCUMENT});
}

HtmlObject* makeStream(PageDouble& page) {
    return make({streamMethods(), page, HtmlObject::STREAM});
}

}  // namespace intake
