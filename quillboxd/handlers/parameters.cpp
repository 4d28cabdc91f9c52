#include "quillboxd/handlers/parameters.h"

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

}  // namespace quillboxd
