#pragma once

#include <vector>

#include "platform/HtmlDocument.h"
#include "platform/windows/com/BasicString.h"
#include "platform/windows/com/ComPointer.h"
#include "platform/windows/mshtml/mshtml_api.h"

namespace intake {

/// A page in a document object of MSHTML. An element is an IHTMLElement; the document holds the
/// references to those that it lends for longer than a callback.
class MshtmlDocument final : public HtmlDocument {
public:
    /// Of an empty document object. Throws PlatformError, as everything here.
    explicit MshtmlDocument(ComPointer<IHTMLDocument2> document);

    /// Fills it with a page's bytes, which are taken as text of the system's code page.
    void write(std::string_view content);

    Element elementById(const std::string& id) override;
    bool isTable(Element element) override;
    Element firstTable(Element ancestor) override;
    Element parent(Element element) override;
    Element findElement(const Matches& matches) override;
    bool classNameEquals(Element element, std::string_view className) override;
    bool innerTextEquals(Element element, std::string_view text) override;
    std::unique_ptr<HtmlTable> table(Element table) override;

private:
    Element lend(ComPointer<IHTMLElement> element);
    bool equals(std::wstring_view wide, std::string_view text);

    const ComPointer<IHTMLDocument2> document_;
    const ComPointer<IHTMLDocument3> lookup_;  // the same
    std::vector<ComPointer<IHTMLElement>> lent_;
    std::string compared_;  // a text of the page, while it is compared
};

}  // namespace intake
