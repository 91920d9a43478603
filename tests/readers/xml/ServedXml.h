#pragma once

#include <memory>
#include <string>

#include "platform/Platform.h"

namespace intake {

/// The system's documents, and a server that answers every request with one body.
class ServedXml final : public XmlServices {
public:
    explicit ServedXml(std::string body) : body_(std::move(body)) {}

    std::unique_ptr<XmlDocument> createDocument(TextEncoding encoding, XmlSource source,
                                                const EndMark& endMark) override {
        return systemPlatform().xml.createDocument(encoding, source, endMark);
    }
    std::unique_ptr<XmlRequest> createRequest(KeptConnections&, const EndMark&) override {
        return std::make_unique<Request>(body_);
    }

private:
    class Request final : public XmlRequest {
    public:
        explicit Request(const std::string& body) : body_(body) {}

        void open(const std::string&, const std::string*, const std::string*) override {}
        void setHeader(const std::string&, const std::string&) override {}
        void send() override {}
        void loadInto(XmlDocument& document) override { document.loadText(body_); }

    private:
        const std::string& body_;
    };

    std::string body_;
};

}  // namespace intake
