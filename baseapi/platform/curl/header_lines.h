#pragma once

#include <curl/curl.h>

#include <string>
#include <string_view>
#include <vector>

#include "baseapi/platform/http_transport.h"

namespace baseapi::inline v1 {

/// The head of a request in the form that libcurl takes, in one piece of memory.
class HeaderLines {
  public:
    /// Nothing is sent but these and what HTTP itself needs: none of libcurl's own defaults. A
    /// `Content-Length` is left out, since it follows from the body. Throws std::invalid_argument where a
    /// header would break the head.
    /// `encodings`, unless empty, is the `Accept-Encoding` of a request that has none.
    explicit HeaderLines(const std::vector<HttpHeader>& headers, std::string_view encodings = {});

    /// Throws as the constructor does.
    void add(std::string_view name, std::string_view value);

    /// Lives until the next `add`, and as long as this object stays where it is.
    curl_slist* list();

  private:
    void addLine(std::string_view name, std::string_view separator, std::string_view value);

    std::string text_;
    std::vector<std::size_t> starts_;
    std::vector<curl_slist> nodes_;
};

/// Whether the text has a character that would end a line or could be taken for its end.
bool hasControlCharacter(std::string_view text);

/// Whether the text is a token by RFC 9110, as a verb and a header's name are.
bool isToken(std::string_view text);

}  // namespace baseapi::inline v1
