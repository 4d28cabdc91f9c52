#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "baseapi/net/url_check.h"

namespace {

bool isHex(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool mayStandInURL(char c) {
    constexpr std::string_view marks = "-._~:/?#[]@!$&'()*+,;=%";
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           marks.find(c) != std::string_view::npos;
}

bool percentSequencesAreWhole(std::string_view text) {
    for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1)) {
        if (at + 2 >= text.size() || !isHex(text[at + 1]) || !isHex(text[at + 2])) return false;
    }
    return true;
}

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

/// What is taken for a URL cannot end a request line, and stays a URL when its query is replaced.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (!baseapi::isURL(text)) return 0;

    require(std::all_of(text.begin(), text.end(), mayStandInURL));
    require(percentSequencesAreWhole(text));
    require(std::count(text.begin(), text.end(), '#') <= 1);
    const std::string path(text.substr(0, text.find_first_of("?#")));
    require(baseapi::isURL(path));

    const std::string value(text.rbegin(), text.rend());
    require(baseapi::isURL(baseapi::withQueryItems(text, {{"name", value}, {value, ""}})));
    return 0;
}
