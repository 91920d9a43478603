#include "readers/html/TableSelector.h"

#include <sstream>

#include "pipeline/narrow_text.h"

namespace intake {

namespace {

using Element = HtmlDocument::Element;

constexpr const char* BLANKS = " \t\v\f";

}  // namespace

TableSelector::TableSelector(const std::string& selector, int32_t encoding) {
    std::istringstream in(selector);
    in.imbue(std::locale::classic());
    in >> kind_;
    std::getline(in, text_);
    if (text_.ends_with('\r')) {  // of a line end that was pasted
        text_.pop_back();
    }
    text_.erase(0, text_.find_first_not_of(BLANKS));
    utf8Text_ = toUtf8(text_, encoding);
}

Element TableSelector::find(HtmlDocument& document) const {
    if (kind_.empty()) {
        return document.firstTable(nullptr);
    }
    if (kind_ == "ID") {
        return findById(document);
    }
    return kind_ == "CLASS" ? findByClass(document) : findByText(document);
}

Element TableSelector::findById(HtmlDocument& document) const {
    const Element element = document.elementById(utf8Text_);
    if (element == nullptr || document.isTable(element)) {
        return element;
    }
    return document.firstTable(element);
}

Element TableSelector::findByClass(HtmlDocument& document) const {
    const Element element = document.findElement(
        [&](Element each) { return document.classNameEquals(each, utf8Text_); });
    if (element == nullptr) {
        return nullptr;
    }
    const Element inside = document.firstTable(element);
    return inside == nullptr && document.isTable(element) ? element : inside;
}

Element TableSelector::findByText(HtmlDocument& document) const {
    Element element = document.findElement(
        [&](Element each) { return document.innerTextEquals(each, utf8Text_); });
    Element table = nullptr;
    while (element != nullptr && table == nullptr) {
        element = document.parent(element);
        table = element == nullptr ? nullptr : document.firstTable(element);
    }
    return table;
}

std::string TableSelector::notFoundMessage() const {
    std::string message = "HTML: Could not find any TABLE";
    if (kind_.empty()) {
        return message;
    }
    const std::string where = kind_ == "ID"      ? " under ID \""
                              : kind_ == "CLASS" ? " under CLASS \""
                                                 : " close to text \"";
    return message + where + text_ + "\"";
}

}  // namespace intake
