#include "baseapi/net/url_check.h"

#include <boost/url/encode.hpp>
#include <boost/url/parse.hpp>
#include <boost/url/rfc/unreserved_chars.hpp>
#include <boost/url/url.hpp>

namespace baseapi::inline v1 {
namespace {

std::string escaped(std::string_view text) {
    return boost::urls::encode(text, boost::urls::unreserved_chars);
}

/// A longer address is not worth a thread's memory.
constexpr std::size_t longestKnown = 1024;

bool parsesAsURL(std::string_view text) {
    const auto url = boost::urls::parse_uri_reference(text);
    if (!url) return false;
    // The parser takes "http://host:80x" for the port 80 and the path "x".
    const std::string_view path = url->encoded_path();
    return !url->has_authority() || path.empty() || path.starts_with('/');
}

}  // namespace

bool isURL(std::string_view text) {
    // Most calls go to the address of the call before.
    thread_local std::string known;
    if (text == known && !text.empty()) return true;
    if (!parsesAsURL(text)) return false;
    if (text.size() <= longestKnown) known = text;
    return true;
}

std::string withQueryItems(std::string_view text, const std::map<std::string, std::string>& items) {
    // Written here because the library's own list of parameters leaves brackets in names as they are.
    std::string query;
    for (const auto& [name, value] : items) {
        if (!query.empty()) query += '&';
        query += escaped(name) + '=' + escaped(value);
    }
    boost::urls::url url(text);
    url.remove_query();
    if (!query.empty()) url.set_encoded_query(query);
    return {url.data(), url.size()};
}

}  // namespace baseapi::inline v1
