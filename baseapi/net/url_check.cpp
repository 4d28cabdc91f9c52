#include "baseapi/net/url_check.h"

#include <boost/url/parse.hpp>
#include <boost/url/url.hpp>

namespace baseapi {

bool isURL(std::string_view text) {
    const auto url = boost::urls::parse_uri_reference(text);
    if (!url) return false;
    // The parser takes "http://host:80x" for the port 80 and the path "x".
    const std::string_view path = url->encoded_path();
    return !url->has_authority() || path.empty() || path.starts_with('/');
}

std::string withQueryItems(std::string_view text, const std::map<std::string, std::string>& items) {
    boost::urls::url url(text);
    url.remove_query();
    for (const auto& [name, value] : items) url.params().append({name, value});
    return {url.data(), url.size()};
}

}  // namespace baseapi
