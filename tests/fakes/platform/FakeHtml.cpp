#include "tests/fakes/platform/FakeHtml.h"

#include <algorithm>

#include "platform/PlatformError.h"

namespace intake {

namespace {

class FakeTable final : public HtmlTable {
public:
    explicit FakeTable(FakeHtml& html) : html_(html) {}
    ~FakeTable() override { html_.noteEnd("table"); }

    size_t rowCount() override {
        html_.note("rowCount");
        return html_.rows.size();
    }
    size_t cellCount(size_t row) override { return html_.rows.at(row).size(); }

    void appendCellText(size_t row, size_t cell, std::string& out) override {
        append("appendCellText", row, cell, out);
    }
    void appendCellKey(size_t row, size_t cell, std::string& out) override {
        append("appendCellKey", row, cell, out);
    }

private:
    void append(const char* call, size_t row, size_t cell, std::string& out) {
        html_.note(call, std::to_string(row) + " " + std::to_string(cell));
        out += html_.rows.at(row).at(cell);
    }

    FakeHtml& html_;
};

class FakeDocument final : public HtmlDocument {
public:
    explicit FakeDocument(FakeHtml& html) : html_(html) {}
    ~FakeDocument() override { html_.noteEnd("document"); }

    Element elementById(const std::string& id) override {
        html_.note("elementById", id);
        return first([&](const FakeHtml::Element& each) { return !id.empty() && each.id == id; });
    }
    bool isTable(Element element) override { return of(element).isTable; }

    Element firstTable(Element ancestor) override {
        html_.note("firstTable", ancestor == nullptr ? "of the document" : of(ancestor).name);
        return first([&](const FakeHtml::Element& each) {
            return each.isTable && (ancestor == nullptr || isInside(each, ancestor));
        });
    }
    Element parent(Element element) override {
        html_.note("parent", of(element).name);
        return at(of(element).parent);
    }
    Element findElement(const Matches& matches) override {
        html_.note("findElement");
        return first([&](FakeHtml::Element& each) { return matches(&each); });
    }

    bool classNameEquals(Element element, std::string_view className) override {
        html_.note("classNameEquals", of(element).name + " " + std::string(className));
        return of(element).className == className;
    }
    bool innerTextEquals(Element element, std::string_view text) override {
        html_.note("innerTextEquals", of(element).name + " " + std::string(text));
        return of(element).text == text;
    }
    std::unique_ptr<HtmlTable> table(Element table) override {
        html_.note("table", of(table).name);
        return std::make_unique<FakeTable>(html_);
    }

private:
    static FakeHtml::Element& of(Element element) {
        return *static_cast<FakeHtml::Element*>(element);
    }
    Element at(size_t place) { return place == FakeHtml::NO_PARENT ? nullptr : &html_.page[place]; }

    bool isInside(const FakeHtml::Element& element, Element ancestor) {
        for (Element each = at(element.parent); each != nullptr; each = at(of(each).parent)) {
            if (each == ancestor) {
                return true;
            }
        }
        return false;
    }

    template <class Condition>
    Element first(Condition condition) {
        const auto found = std::find_if(html_.page.begin(), html_.page.end(), condition);
        return found == html_.page.end() ? nullptr : &*found;
    }

    FakeHtml& html_;
};

}  // namespace

std::unique_ptr<HtmlDocument> FakeHtml::open(const std::string& source, KeptConnections&,
                                             const EndMark&, std::string& reason) {
    note("open", source);
    if (!unreachable.empty()) {
        reason = unreachable;
        return nullptr;
    }
    return std::make_unique<FakeDocument>(*this);
}

void FakeHtml::note(const std::string& call, const std::string& details) {
    calls_ += call + (details.empty() ? "" : " " + details) + "\n";
    if (call == failingCall_) {
        throw PlatformError(0x80004003, "Invalid pointer", "mshtml.dll",
                            "There is no such interface.");
    }
}

}  // namespace intake
