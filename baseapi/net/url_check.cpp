#include "baseapi/net/url_check.h"

#include <algorithm>
#include <array>
#include <boost/url/encode.hpp>
#include <boost/url/parse.hpp>
#include <boost/url/rfc/unreserved_chars.hpp>
#include <boost/url/url.hpp>

namespace baseapi::inline v1 {
namespace {

std::string escaped(std::string_view text) {
    return boost::urls::encode(text, boost::urls::unreserved_chars);
}

/// The last addresses that a thread has seen to be URLs, the newest first: each upload creates and completes
/// its file at the same two, whatever the addresses of the parts in between.
class KnownURLs {
  public:
    bool has(std::string_view text) {
        const auto found = std::ranges::find(known_, text);
        if (text.empty() || found == known_.end()) return false;
        std::rotate(known_.begin(), found, found + 1);
        return true;
    }

    void add(std::string_view text) {
        if (text.size() > longest) return;
        std::rotate(known_.begin(), known_.end() - 1, known_.end());
        known_.front() = text;
    }

  private:
    /// A longer address is not worth a thread's memory.
    static constexpr std::size_t longest = 1024;

    std::array<std::string, 4> known_;
};

bool parsesAsURL(std::string_view text) {
    const auto url = boost::urls::parse_uri_reference(text);
    if (!url) return false;
    // The parser takes "http://host:80x" for the port 80 and the path "x".
    const std::string_view path = url->encoded_path();
    return !url->has_authority() || path.empty() || path.starts_with('/');
}

}  // namespace

bool isURL(std::string_view text) {
    thread_local KnownURLs known;
    if (known.has(text)) return true;
    if (!parsesAsURL(text)) return false;
    known.add(text);
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
