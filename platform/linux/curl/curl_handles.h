#pragma once

#include <curl/curl.h>

#include <memory>

namespace intake {

/// Frees what libcurl gives by libcurl's own function for it.
template <auto Free>
struct CurlDeleter {
    template <class Handle>
    void operator()(Handle* handle) const {
        Free(handle);
    }
};

using CurlEasy = std::unique_ptr<CURL, CurlDeleter<curl_easy_cleanup>>;
using CurlMulti = std::unique_ptr<CURLM, CurlDeleter<curl_multi_cleanup>>;
using CurlUrl = std::unique_ptr<CURLU, CurlDeleter<curl_url_cleanup>>;
using CurlList = std::unique_ptr<curl_slist, CurlDeleter<curl_slist_free_all>>;
using CurlText = std::unique_ptr<char, CurlDeleter<curl_free>>;

/// A part of a URL; null when the URL has none.
inline CurlText partOf(const CurlUrl& url, CURLUPart part, unsigned flags = 0) {
    char* text = nullptr;
    curl_url_get(url.get(), part, &text, flags);
    return CurlText(text);
}

}  // namespace intake
