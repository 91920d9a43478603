#include "tests/fakes/platform/FakeXml.h"

namespace intake {

namespace {

class FakeDocument final : public XmlDocument {
public:
    explicit FakeDocument(FakeXml& xml) : xml_(xml) {}
    ~FakeDocument() override { xml_.noteEnd("document"); }

    size_t sourceSize() override { return xml_.sourceSize; }
    bool loadFile(const std::string& path) override {
        xml_.note("loadFile", path);
        return xml_.unreadable.empty();
    }
    bool loadText(std::string_view text) override {
        xml_.note("loadText", std::string(text));
        return true;
    }
    std::string parseErrorReason() override { return xml_.unreadable; }

    void setSelectionNamespaces(const std::string& declarations) override {
        xml_.note("setSelectionNamespaces", declarations);
    }
    bool selectNodes(const std::string& expression) override {
        xml_.note("selectNodes", expression);
        return xml_.selects;
    }
    size_t selectedCount() override { return xml_.selectedCount; }
    Node selected(size_t) override { return this; }

    void setKeyExpression(const std::string& expression) override {
        xml_.note("setKeyExpression", expression);
    }
    bool appendKeyText(Node, std::string&) override {
        xml_.note("appendKeyText");
        return true;
    }

    void forEachChild(Node, const Visit&) override { xml_.note("forEachChild"); }
    bool isElement(Node) override { return true; }
    bool hasElements(Node) override { return false; }
    void appendName(Node, std::string&) override { xml_.note("appendName"); }
    void appendText(Node, std::string&) override { xml_.note("appendText"); }
    void appendMarkup(Node, std::string&) override { xml_.note("appendMarkup"); }
    bool attribute(Node, const std::string&, std::string&) override { return false; }
    Node rootElement() override { return nullptr; }
    Node appendElement(Node, const std::string&) override { return nullptr; }
    void setText(Node, const std::string&) override {}

private:
    FakeXml& xml_;
};

class FakeRequest final : public XmlRequest {
public:
    explicit FakeRequest(FakeXml& xml) : xml_(xml) {}
    ~FakeRequest() override { xml_.noteEnd("request"); }

    void open(const std::string& url, const std::string* user,
              const std::string* password) override {
        const auto given = [](const std::string* text) { return text ? "|" + *text + "|" : "-"; };
        xml_.note("open", url + " " + given(user) + " " + given(password));
    }
    void setHeader(const std::string& name, const std::string& value) override {
        xml_.note("setHeader", "|" + name + "|" + value + "|");
    }
    void send() override { xml_.note("send"); }
    void loadInto(XmlDocument&) override { xml_.note("loadInto"); }

private:
    FakeXml& xml_;
};

}  // namespace

std::unique_ptr<XmlDocument> FakeXml::createDocument(TextEncoding encoding, XmlSource source,
                                                     const EndMark&) {
    note("createDocument",
         std::string(encoding == TextEncoding::UTF8 ? "UTF-8" : "ISO-8859-1") +
             (source == XmlSource::LOCAL_FILE ? " for a file" : " for a response"));
    return std::make_unique<FakeDocument>(*this);
}

std::unique_ptr<XmlRequest> FakeXml::createRequest(KeptConnections&, const EndMark&) {
    note("createRequest");
    return std::make_unique<FakeRequest>(*this);
}

void FakeXml::failAt(const std::string& call, int occurrence) {
    failingCall_ = call;
    callsToFailure_ = occurrence;
}

PlatformError FakeXml::failure() {
    return {0x800C0005, "The system cannot locate the resource specified.", "msxml6.dll",
            "Could not reach the host."};
}

const std::string& FakeXml::failureReport() {
    static const std::string report =
        "Error\n"
        "\tCode = 0x800c0005\n"
        "\tCode meaning = The system cannot locate the resource specified.\n"
        "\tSource = msxml6.dll\n"
        "\tDescription = Could not reach the host.\n";
    return report;
}

void FakeXml::note(const std::string& call, const std::string& details) {
    calls_ += call + (details.empty() ? "" : " " + details) + "\n";
    if (call == failingCall_ && --callsToFailure_ == 0) {
        throw failure();
    }
}

}  // namespace intake
