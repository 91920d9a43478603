#include "platform/linux/xml/CurlXmlRequest.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "platform/linux/curl/curl_errors.h"
#include "platform/linux/curl/origin.h"
#include "platform/linux/xml/LibxmlDocument.h"

namespace intake {

namespace {

constexpr const char* LIBRARY = "libcurl";
constexpr const char* USER_AGENT = "NXR/1.0";
constexpr const char* PACKINGS = "gzip, deflate";
constexpr std::array<std::string_view, 3> SCHEMES{"http://", "https://", "ftp://"};

/// The signs of a header's name.
constexpr std::string_view TOKEN_SIGNS =
    "!#$%&'*+-.^_`|~0123456789"
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

bool hasOurScheme(std::string_view url) {
    return std::any_of(SCHEMES.begin(), SCHEMES.end(),
                       [url](std::string_view scheme) { return url.starts_with(scheme); });
}

[[noreturn]] void fail(CURLcode code, const std::string& description) {
    comFailureOf(code).raise(LIBRARY, description);
}

[[noreturn]] void refuse(const std::string& description) {
    INVALID_ARGUMENT.raise(LIBRARY, description);
}

/// The URL with what may not stand in one escaped, and its scheme in lower case.
std::string checkedUrl(const std::string& url) {
    constexpr unsigned FLAGS = CURLU_URLENCODE | CURLU_PATH_AS_IS;
    const CurlUrl parsed(curl_url());
    CURLUcode result = curl_url_set(parsed.get(), CURLUPART_URL, url.c_str(), FLAGS);
    const CurlText checked = result == CURLUE_OK ? partOf(parsed, CURLUPART_URL) : nullptr;
    if (checked != nullptr && hasOurScheme(checked.get())) {
        return checked.get();
    }
    result = checked != nullptr ? CURLUE_UNSUPPORTED_SCHEME : result;
    refuse("\"" + url + "\" is not a URL: " + curl_url_strerror(result));
}

/// As libcurl takes it: one without a value ends in a semicolon.
std::string toLine(const std::string& name, const std::string& value) {
    return value.empty() ? name + ";" : name + ": " + value;
}

}  // namespace

CurlXmlRequest::CurlXmlRequest(CurlConnections& connections, const EndMark& endMark,
                               size_t maxBytes)
    : transfer_(connections, endMark), body_(transfer_, maxBytes, PACKINGS) {
    if (!transfer_.isReady()) {
        fail(CURLE_FAILED_INIT, "libcurl could not be set up");
    }
    CURL* const transfer = transfer_.handle();
    curl_easy_setopt(transfer, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(transfer, CURLOPT_USERAGENT, USER_AGENT);
}

void CurlXmlRequest::open(const std::string& url, const std::string* user,
                          const std::string* password) {
    url_ = checkedUrl(url);
    curl_easy_setopt(transfer_.handle(), CURLOPT_URL, url_.c_str());
    setCredentials(user, password);
}

void CurlXmlRequest::setCredentials(const std::string* user, const std::string* password) {
    hasUser_ = user != nullptr;
    if (!hasUser_) {
        return;
    }
    curl_easy_setopt(transfer_.handle(), CURLOPT_HTTPAUTH,
                     CURLAUTH_BASIC | CURLAUTH_DIGEST | CURLAUTH_NTLM);
    curl_easy_setopt(transfer_.handle(), CURLOPT_USERNAME, user->c_str());
    curl_easy_setopt(transfer_.handle(), CURLOPT_PASSWORD,
                     password == nullptr ? "" : password->c_str());
}

void CurlXmlRequest::setHeader(const std::string& name, const std::string& value) {
    const Header header{std::string(trimmed(name, XML_SPACE)),
                        std::string(trimmed(value, XML_SPACE))};
    if (header.name.empty() || header.name.find_first_not_of(TOKEN_SIGNS) != std::string::npos ||
        header.value.find_first_of("\r\n") != std::string::npos) {
        refuse("\"" + header.name + "\" cannot be sent as a header");
    }
    const auto same = std::find_if(headers_.begin(), headers_.end(), [&](const Header& each) {
        return equalIgnoringCase(each.name, header.name);
    });
    if (same == headers_.end()) {
        headers_.push_back(header);
    } else {
        same->value += ", " + header.value;
    }
}

void CurlXmlRequest::send() {
    CurlList list;
    for (const Header& each : headers_) {
        list.reset(curl_slist_append(list.release(), toLine(each.name, each.value).c_str()));
    }
    curl_easy_setopt(transfer_.handle(), CURLOPT_HTTPHEADER, list.get());
    bool isReceived = body_.receive();
    if (isReceived && mustAnswerElsewhere()) {
        curl_easy_setopt(transfer_.handle(), CURLOPT_URL, transfer_.effectiveUrl().c_str());
        isReceived = body_.receive();
    }
    if (!isReceived) {
        raiseGivenUp(LIBRARY);
    }
    curl_easy_setopt(transfer_.handle(), CURLOPT_HTTPHEADER, nullptr);
    failUnlessComplete();
}

/// The library proves itself to the very origin that was asked, and to no other.
bool CurlXmlRequest::mustAnswerElsewhere() const {
    constexpr long UNAUTHORIZED = 401;
    long status = 0;
    curl_easy_getinfo(transfer_.handle(), CURLINFO_RESPONSE_CODE, &status);
    const std::string answering = transfer_.effectiveUrl();
    return hasUser_ && status == UNAUTHORIZED && url_.starts_with("http:") &&
           answering.starts_with("https:") && mayBeToldToo(url_.c_str(), answering.c_str());
}

void CurlXmlRequest::failUnlessComplete() const {
    if (transfer_.result() == CURLE_OK && transfer_.isWithinHeader()) {
        fail(CURLE_PARTIAL_FILE, "The connection was closed within the header of the response");
    }
    if (body_.isTooLarge()) {
        fail(CURLE_WRITE_ERROR, "The response is larger than 2 GB");
    }
    if (body_.isBomb()) {
        fail(CURLE_WRITE_ERROR, "The response unpacks to more than " +
                                    std::to_string(ReceivedBody::HIGHEST_RATIO) +
                                    " times its size");
    }
    if (transfer_.refusedRedirect()) {  // the code alone does not tell it from a foreign response
        fail(CURLE_TOO_MANY_REDIRECTS, transfer_.reason());
    }
    if (transfer_.result() != CURLE_OK) {
        fail(transfer_.result(), transfer_.reason());
    }
}

/// What came packed must not become a tree that is out of all proportion to it.
uint64_t CurlXmlRequest::mostNodes() const {
    constexpr uint64_t NODES_OF_A_SMALL_BODY = 3'000'000;
    constexpr uint64_t NODES_PER_BYTE = 3;
    const uint64_t received = body_.received();
    return body_.size() > received ? std::max(NODES_OF_A_SMALL_BODY, NODES_PER_BYTE * received)
                                   : ANY_NUMBER_OF_NODES;
}

void CurlXmlRequest::loadInto(XmlDocument& document) {
    static_cast<LibxmlDocument&>(document).loadText(body_.bytes(), transfer_.charset(),
                                                    mostNodes());
}

}  // namespace intake
