#pragma once

#include <boost/json.hpp>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillboxd_test {

namespace json = boost::json;

struct HttpAnswer {
    int status = 0;       ///< 0: no whole answer came
    std::string error;    ///< what went wrong then
    int errorNumber = 0;  ///< libcurl's number of it
    std::string body;
    std::vector<std::pair<std::string, std::string>> headers = {};  ///< names in lower case

    json::object object() const { return json::parse(body).as_object(); }
    std::string header(std::string_view name) const;
};

/// Sends one request on a connection of its own.
HttpAnswer send(const std::string& verb, const std::string& url, const std::vector<std::string>& headers = {},
                const std::string& body = "");

/// Writes bytes on a bare connection and reads until the other side ends it.
std::string exchangeRaw(std::uint16_t port, std::string_view bytes);

}  // namespace quillboxd_test
