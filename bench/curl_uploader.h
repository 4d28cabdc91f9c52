#pragma once

#include <curl/curl.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "bench/curl_headers.h"

namespace bench {

/// Uploads small files one after the other by three calls each on one connection: create, content, complete.
class CurlUploader {
  public:
    explicit CurlUploader(const std::string& host);

    void upload(const std::filesystem::path& file);

  private:
    struct Cleanup {
        void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
    };
    using Easy = std::unique_ptr<CURL, Cleanup>;

    void send(const char* verb, const std::string& url, std::string_view body);

    const std::string create_;
    const std::string content_;
    const std::string complete_;
    const HeaderList headers_ = operationHeaders();
    const Easy easy_{curl_easy_init()};
    std::string answer_;
};

}  // namespace bench
