#include "baseapi/platform/curl/content_range.h"

#include <charconv>

namespace baseapi::inline v1 {
namespace {

/// Takes a number and the mark behind it off the text.
std::optional<std::int64_t> takeNumber(std::string_view& text, std::string_view mark) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < 0) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (!text.starts_with(mark)) return std::nullopt;
    text.remove_prefix(mark.size());
    return number;
}

}  // namespace

std::optional<ContentRange> parseContentRange(std::string_view text) {
    constexpr std::string_view kUnit = "bytes ";
    if (!text.starts_with(kUnit)) return std::nullopt;
    text.remove_prefix(kUnit.size());
    const auto first = takeNumber(text, "-");
    if (!first) return std::nullopt;
    const auto last = takeNumber(text, "/");
    if (!last || *last < *first) return std::nullopt;
    if (text == "*") return ContentRange{*first, *last, std::nullopt};
    const auto total = takeNumber(text, "");
    if (!total || !text.empty() || *total <= *last) return std::nullopt;
    return ContentRange{*first, *last, *total};
}

}  // namespace baseapi::inline v1
