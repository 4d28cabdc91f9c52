#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "quillboxd/store/contents.h"

namespace quillboxd {

using Headers = std::vector<std::pair<std::string, std::string>>;

/// The first value of a header, whatever the case of its name; null where there is none.
const std::string* findHeader(const Headers& headers, std::string_view name);

/// The head of a request.
struct Request {
    std::string verb;
    std::string target;  ///< path and query as they came
    Headers headers;

    std::string_view path() const { return std::string_view(target).substr(0, target.find('?')); }
    std::string_view query() const;  ///< without the "?"
    const std::string* header(std::string_view name) const { return findHeader(headers, name); }

    std::optional<std::string> parameter(std::string_view name) const;
};

/// The decoded value of a parameter in a query; throws ApiError for what is no UTF-8.
std::optional<std::string> queryParameter(std::string_view query, std::string_view name);

/// An answer: its body stands in `body`, or in the store as `pieces`.
struct Reply {
    int status = 200;
    std::string contentType = "application/json; charset=utf-8";
    Headers headers = {};
    std::string body = {};
    std::vector<Piece> pieces = {};
    bool closes = false;  ///< the connection ends after it

    std::int64_t bodyLength() const;
};

/// The head of an answer, ready to send.
std::string writeHead(const Reply& reply, bool keepAlive);

/// Decodes every valid %XX; all else stays as it is.
std::string decodePercent(std::string_view text);

/// Encodes all but the unreserved characters.
std::string encodePercent(std::string_view text);

bool equalsIgnoringCase(std::string_view a, std::string_view b);

}  // namespace quillboxd
