#include "baseapi/json/path.h"

namespace baseapi::inline v1::json {
namespace {

/// A key, cut between two characters where it is long.
std::string shortened(std::string_view key) {
    constexpr std::size_t longest = 64;
    if (key.size() <= longest) return std::string(key);
    std::size_t end = longest;
    while (end > 0 && (static_cast<unsigned char>(key[end]) & 0xC0U) == 0x80U) --end;
    return std::string(key.substr(0, end)) + "...";
}

void prepend(std::string& path, std::string step) {
    if (!path.empty() && path.front() != '[') step += '.';
    path.insert(0, step);
}

}  // namespace

void prependKey(std::string& path, std::string_view key) {
    prepend(path, shortened(key));
}

void prependIndex(std::string& path, std::size_t index) {
    prepend(path, '[' + std::to_string(index) + ']');
}

}  // namespace baseapi::inline v1::json
