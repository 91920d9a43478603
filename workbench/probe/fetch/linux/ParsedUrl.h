#pragma once

#include <curl/curl.h>

#include <memory>
#include <string>

namespace probe {

/// A URL, taken apart by libcurl.
class ParsedUrl {
public:
    /// What is wrong with the URL, or CURLUE_OK.
    CURLUcode parse(const std::string& url, unsigned flags) {
        return curl_url_set(url_.get(), CURLUPART_URL, url.c_str(), flags);
    }

    void remove(CURLUPart part) { curl_url_set(url_.get(), part, nullptr, 0); }

    /// Empty when the URL has none.
    std::string part(CURLUPart part, unsigned flags = 0) const {
        char* text = nullptr;
        curl_url_get(url_.get(), part, &text, flags);
        const std::unique_ptr<char, Cleanup> owner(text);
        return text == nullptr ? "" : text;
    }

private:
    struct Cleanup {
        void operator()(CURLU* url) const { curl_url_cleanup(url); }
        void operator()(char* text) const { curl_free(text); }
    };
    std::unique_ptr<CURLU, Cleanup> url_{curl_url()};
};

}  // namespace probe
