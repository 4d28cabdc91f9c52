#include "quillboxd/handlers/parameters.h"

#include <algorithm>
#include <charconv>

namespace quillboxd {

std::int64_t numberIn(std::string_view text, std::string_view what) {
    std::int64_t number = 0;
    const auto end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) badRequest(std::string(what) + " must be an integer of 64 bits");
    return number;
}

std::string requiredParameter(const Call& call, std::string_view name) {
    auto value = call.request.parameter(name);
    if (!value) badRequest("\"" + std::string(name) + "\" is missing in the query");
    return *std::move(value);
}

std::int64_t integerParameter(const Call& call, std::string_view name, std::int64_t otherwise) {
    const auto value = call.request.parameter(name).value_or("");
    return value.empty() ? otherwise : numberIn(value, "\"" + std::string(name) + "\" in the query");
}

std::int64_t pageSize(std::int64_t asked, std::string_view key) {
    constexpr std::int64_t largest = 1000;
    if (asked < 1) badRequest("\"" + std::string(key) + "\" must be at least 1");
    return std::min(asked, largest);
}

}  // namespace quillboxd
