#pragma once

#include <curl/curl.h>

#include <memory>
#include <new>
#include <stdexcept>

namespace baseapi {

/// One of libcurl's transfers. What it is told stays until it is told otherwise, from one use to the next.
class EasyHandle {
  public:
    EasyHandle() : easy_(curl_easy_init()) {
        if (!easy_) throw std::bad_alloc();
    }

    CURL* get() const { return easy_.get(); }

    template <class Value>
    void set(CURLoption option, Value value) {
        const auto code = curl_easy_setopt(easy_.get(), option, value);
        if (code != CURLE_OK) throw std::runtime_error(curl_easy_strerror(code));
    }

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
    };
    std::unique_ptr<CURL, Deleter> easy_;
};

}  // namespace baseapi
