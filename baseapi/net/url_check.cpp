#include "baseapi/net/url_check.h"

#include <boost/url/parse.hpp>
#include <boost/url/url.hpp>

namespace baseapi {

bool isURL(std::string_view text) {
    return boost::urls::parse_uri_reference(text).has_value();
}

std::string withQueryItems(std::string_view text, const std::map<std::string, std::string>& items) {
    boost::urls::url url(text);
    url.remove_query();
    for (const auto& [name, value] : items) url.params().append({name, value});
    return {url.data(), url.size()};
}

}  // namespace baseapi
