#include "platform/linux/CurlXmlRequest.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <memory>

#include "platform/linux/LibxmlDocument.h"
#include "platform/linux/media_type.h"
#include "platform/linux/xml_errors.h"

namespace intake {

namespace {

constexpr const char* USER_AGENT = "NXR/1.0";
constexpr std::array<std::string_view, 3> SCHEMES{"http://", "https://", "ftp://"};
constexpr size_t MAX_BODY = 0x7FFFFFFF;  // no larger document is parsed
constexpr std::string_view WHITE_SPACE = " \t\r\n";

/// The signs of a header's name.
constexpr std::string_view TOKEN_SIGNS =
    "!#$%&'*+-.^_`|~0123456789"
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

struct UrlDeleter {
    void operator()(CURLU* url) const { curl_url_cleanup(url); }
};

struct ListDeleter {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using HeaderList = std::unique_ptr<curl_slist, ListDeleter>;

struct CurlString {
    CurlString() = default;
    ~CurlString() { curl_free(text); }
    CurlString(const CurlString&) = delete;
    CurlString& operator=(const CurlString&) = delete;

    char* text = nullptr;
};

bool hasOurScheme(std::string_view url) {
    return std::any_of(SCHEMES.begin(), SCHEMES.end(),
                       [url](std::string_view scheme) { return url.starts_with(scheme); });
}

/// The URL with what may not stand in one escaped, and its scheme in lower case.
std::string checkedUrl(const std::string& url) {
    constexpr unsigned FLAGS = CURLU_URLENCODE | CURLU_PATH_AS_IS;
    const std::unique_ptr<CURLU, UrlDeleter> parsed(curl_url());
    CurlString checked;
    CURLUcode result = curl_url_set(parsed.get(), CURLUPART_URL, url.c_str(), FLAGS);
    if (result == CURLUE_OK) {
        result = curl_url_get(parsed.get(), CURLUPART_URL, &checked.text, 0);
    }
    if (result == CURLUE_OK && !hasOurScheme(checked.text)) {
        result = CURLUE_UNSUPPORTED_SCHEME;
    }
    if (result != CURLUE_OK) {
        throwInvalidRequest("\"" + url + "\" is not a URL: " + curl_url_strerror(result));
    }
    return checked.text;
}

std::string trimmed(const std::string& text) {
    const size_t start = text.find_first_not_of(WHITE_SPACE);
    const size_t end = text.find_last_not_of(WHITE_SPACE) + 1;
    return start == std::string::npos ? "" : text.substr(start, end - start);
}

/// As libcurl takes it: one without a value ends in a semicolon.
std::string toLine(const std::string& name, const std::string& value) {
    return value.empty() ? name + ";" : name + ": " + value;
}

}  // namespace

CurlXmlRequest::CurlXmlRequest(const EndMark& endMark) : transfer_(endMark) {
    if (!transfer_.isReady()) {
        throwTransferError(CURLE_FAILED_INIT, "libcurl could not be set up");
    }
    CURL* const transfer = transfer_.handle();
    curl_easy_setopt(transfer, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(transfer, CURLOPT_USERAGENT, USER_AGENT);
    curl_easy_setopt(transfer, CURLOPT_HEADERFUNCTION, onHeader);
    curl_easy_setopt(transfer, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(transfer, CURLOPT_WRITEFUNCTION, onBody);
    curl_easy_setopt(transfer, CURLOPT_WRITEDATA, this);
}

void CurlXmlRequest::open(const std::string& url, const std::string* user,
                          const std::string* password) {
    curl_easy_setopt(transfer_.handle(), CURLOPT_URL, checkedUrl(url).c_str());
    setCredentials(user, password);
}

void CurlXmlRequest::setCredentials(const std::string* user, const std::string* password) {
    if (user == nullptr) {
        return;
    }
    curl_easy_setopt(transfer_.handle(), CURLOPT_HTTPAUTH,
                     CURLAUTH_BASIC | CURLAUTH_DIGEST | CURLAUTH_NTLM);
    curl_easy_setopt(transfer_.handle(), CURLOPT_USERNAME, user->c_str());
    curl_easy_setopt(transfer_.handle(), CURLOPT_PASSWORD,
                     password == nullptr ? "" : password->c_str());
}

void CurlXmlRequest::setHeader(const std::string& name, const std::string& value) {
    const Header header{trimmed(name), trimmed(value)};
    if (header.name.empty() || header.name.find_first_not_of(TOKEN_SIGNS) != std::string::npos ||
        header.value.find_first_of("\r\n") != std::string::npos) {
        throwInvalidRequest("\"" + header.name + "\" cannot be sent as a header");
    }
    const auto same = std::find_if(headers_.begin(), headers_.end(), [&](const Header& each) {
        return strcasecmp(each.name.c_str(), header.name.c_str()) == 0;
    });
    if (same == headers_.end()) {
        headers_.push_back(header);
    } else {
        same->value += ", " + header.value;
    }
}

void CurlXmlRequest::send() {
    HeaderList list;
    for (const Header& each : headers_) {
        list.reset(curl_slist_append(list.release(), toLine(each.name, each.value).c_str()));
    }
    curl_easy_setopt(transfer_.handle(), CURLOPT_HTTPHEADER, list.get());
    body_.clear();
    withinHeader_ = false;
    outOfMemory_ = false;
    transfer_.restart();
    if (!transfer_.drive([] { return false; })) {
        throwGivenUp("libcurl");
    }
    curl_easy_setopt(transfer_.handle(), CURLOPT_HTTPHEADER, nullptr);
    failUnlessComplete();
}

void CurlXmlRequest::failUnlessComplete() const {
    if (outOfMemory_) {
        throw std::bad_alloc();
    }
    if (transfer_.result() == CURLE_OK && withinHeader_) {
        throwTransferError(CURLE_PARTIAL_FILE,
                           "The connection was closed within the header of the response");
    }
    if (transfer_.result() == CURLE_WRITE_ERROR) {
        throwTransferError(CURLE_WRITE_ERROR, "The response is larger than 2 GB");
    }
    if (transfer_.refusedRedirect()) {  // the code alone does not tell it from a foreign response
        throwTransferError(CURLE_TOO_MANY_REDIRECTS, transfer_.reason());
    }
    if (transfer_.result() != CURLE_OK) {
        throwTransferError(transfer_.result(), transfer_.reason());
    }
}

void CurlXmlRequest::loadInto(XmlDocument& document) {
    const char* mediaType = nullptr;
    curl_easy_getinfo(transfer_.handle(), CURLINFO_CONTENT_TYPE, &mediaType);
    static_cast<LibxmlDocument&>(document).loadText(
        body_, charsetOf(mediaType == nullptr ? "" : mediaType));
}

size_t CurlXmlRequest::onHeader(char* data, size_t size, size_t count, void* self) {
    static_cast<CurlXmlRequest*>(self)->noteHeader({data, size * count});
    return size * count;
}

/// Takes the lines of every response of a transfer; of FTP all that the server says.
void CurlXmlRequest::noteHeader(std::string_view line) {
    if (line.starts_with("HTTP/")) {
        withinHeader_ = true;
    } else if (line.find_first_not_of(WHITE_SPACE) == std::string_view::npos) {
        withinHeader_ = false;
        transfer_.stayOnHttps();
    }
}

/// Taking less than was offered fails the transfer.
size_t CurlXmlRequest::onBody(char* data, size_t size, size_t count, void* self) {
    auto& request = *static_cast<CurlXmlRequest*>(self);
    const size_t length = size * count;
    if (length > MAX_BODY - request.body_.size()) {
        return 0;
    }
    try {
        request.body_.append(data, length);
        return length;
    } catch (const std::exception&) {  // nothing may fly through the library
        request.outOfMemory_ = true;
        return 0;
    }
}

}  // namespace intake
