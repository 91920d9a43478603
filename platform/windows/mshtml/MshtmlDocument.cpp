#include "platform/windows/mshtml/MshtmlDocument.h"

#include "platform/windows/base/wide_text.h"
#include "platform/windows/com/Variant.h"
#include "platform/windows/mshtml/ElementList.h"
#include "platform/windows/mshtml/MshtmlTable.h"
#include "platform/windows/mshtml/element_walk.h"

namespace intake {

namespace {

constexpr std::string_view TABLE = "TABLE";

IHTMLElement& toSystem(HtmlDocument::Element element) {
    return *static_cast<IHTMLElement*>(element);
}

struct DestroyArray {
    void operator()(SAFEARRAY* array) const { SafeArrayDestroy(array); }
};

/// The arguments of a call that writes one text.
std::unique_ptr<SAFEARRAY, DestroyArray> arrayOf(BasicString& text) {
    std::unique_ptr<SAFEARRAY, DestroyArray> array(SafeArrayCreateVector(VT_VARIANT, 0, 1));
    if (array == nullptr) {
        throwCom(E_OUTOFMEMORY);
    }
    VARIANT* value = nullptr;
    checkCom(SafeArrayAccessData(array.get(), reinterpret_cast<void**>(&value)));
    value->vt = VT_BSTR;
    value->bstrVal = text.release();
    checkCom(SafeArrayUnaccessData(array.get()));
    return array;
}

}  // namespace

MshtmlDocument::MshtmlDocument(ComPointer<IHTMLDocument2> document)
    : document_(std::move(document)), lookup_(document_.as<IHTMLDocument3>(IID_HTML_DOCUMENT_3)) {}

void MshtmlDocument::write(std::string_view content) {
    BasicString text(toWide(content, CP_ACP));
    checkCom(document_->write(arrayOf(text).get()));
    checkCom(document_->close());
}

HtmlDocument::Element MshtmlDocument::lend(ComPointer<IHTMLElement> element) {
    return element ? lent_.emplace_back(std::move(element)).get() : nullptr;
}

HtmlDocument::Element MshtmlDocument::elementById(const std::string& id) {
    ComPointer<IHTMLElement> element;
    checkCom(lookup_->getElementById(BasicString(id).get(), element.out()));
    return lend(std::move(element));
}

bool MshtmlDocument::isTable(Element element) {
    BasicString name;
    checkCom(toSystem(element).get_tagName(name.out()));
    return equals(name.view(), TABLE);
}

HtmlDocument::Element MshtmlDocument::firstTable(Element ancestor) {
    const BasicString name(TABLE);
    ComPointer<IHTMLElementCollection> found;
    if (ancestor == nullptr) {
        checkCom(lookup_->getElementsByTagName(name.get(), found.out()));
    } else {
        ComPointer<IHTMLElement2> element;
        checkCom(toSystem(ancestor).QueryInterface(IID_HTML_ELEMENT_2, element.outAny()));
        checkCom(element->getElementsByTagName(name.get(), found.out()));
    }
    const ElementList tables(std::move(found));
    return tables.size() == 0 ? nullptr : lend(tables.at<IHTMLElement>(0, IID_HTML_ELEMENT));
}

HtmlDocument::Element MshtmlDocument::parent(Element element) {
    ComPointer<IHTMLElement> parent;
    checkCom(toSystem(element).get_parentElement(parent.out()));
    return lend(std::move(parent));
}

HtmlDocument::Element MshtmlDocument::findElement(const Matches& matches) {
    return lend(firstMatch(lookup_, matches));
}

bool MshtmlDocument::classNameEquals(Element element, std::string_view className) {
    Variant value;
    checkCom(toSystem(element).getAttribute(BasicString("className").get(), 0, value.out()));
    const VARIANT& found = value.get();
    if (found.vt != VT_BSTR) {
        return className.empty();
    }
    return equals({found.bstrVal, SysStringLen(found.bstrVal)}, className);
}

bool MshtmlDocument::innerTextEquals(Element element, std::string_view text) {
    BasicString found;
    checkCom(toSystem(element).get_innerText(found.out()));
    return equals(found.view(), text);
}

/// UTF-8 takes one to three bytes for each unit of UTF-16, so most texts need no conversion.
bool MshtmlDocument::equals(std::wstring_view wide, std::string_view text) {
    if (wide.size() > text.size() || wide.size() * 3 < text.size()) {
        return false;
    }
    compared_.clear();
    appendNarrow(wide, CP_UTF8, compared_);
    return compared_ == text;
}

std::unique_ptr<HtmlTable> MshtmlDocument::table(Element table) {
    ComPointer<IHTMLTable> system;
    checkCom(toSystem(table).QueryInterface(IID_HTML_TABLE, system.outAny()));
    ComPointer<IHTMLElementCollection> rows;
    checkCom(system->get_rows(rows.out()));
    return std::make_unique<MshtmlTable>(ElementList(std::move(rows)));
}

}  // namespace intake
