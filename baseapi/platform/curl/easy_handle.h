#pragma once

#include <curl/curl.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>

namespace baseapi::inline v1 {

/// One of libcurl's transfers. What it is told stays until it is told otherwise, from one use to the next.
class EasyHandle {
  public:
    EasyHandle() : parts_(curl_url()), easy_(curl_easy_init()) {
        if (!parts_ || !easy_) throw std::bad_alloc();
    }

    CURL* get() const { return easy_.get(); }

    template <class Value>
    void set(CURLoption option, Value value) {
        const auto code = curl_easy_setopt(easy_.get(), option, value);
        if (code != CURLE_OK) throw std::runtime_error(curl_easy_strerror(code));
    }

    /// The URL is taken apart here, once for all transfers in a row that go to it: libcurl would take it
    /// apart and put it together for each.
    void setURL(const std::string& url) {
        if (url == url_) return;
        url_.clear();
        if (curl_url_set(parts_.get(), CURLUPART_URL, url.c_str(), CURLU_PATH_AS_IS) != CURLUE_OK) {
            throw std::runtime_error(curl_easy_strerror(CURLE_URL_MALFORMAT));
        }
        // The text is what libcurl follows a relative redirect from.
        set(CURLOPT_URL, url.c_str());
        set(CURLOPT_CURLU, parts_.get());
        url_ = url;
    }

    /// That of the last use; empty before the first.
    const std::string& url() const { return url_; }

    template <class Value>
    Value info(CURLINFO which) const {
        Value value{};
        curl_easy_getinfo(easy_.get(), which, &value);
        return value;
    }

    /// The value of a header of the last answer, null where it has none.
    const char* header(const char* name) const {
        curl_header* found = nullptr;
        const auto code = curl_easy_header(easy_.get(), name, 0, CURLH_HEADER, -1, &found);
        return code == CURLHE_OK ? found->value : nullptr;
    }

  private:
    struct Deleter {
        void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
        void operator()(CURLU* parts) const { curl_url_cleanup(parts); }
    };
    std::string url_;
    std::unique_ptr<CURLU, Deleter> parts_;
    std::unique_ptr<CURL, Deleter> easy_;
};

}  // namespace baseapi::inline v1
