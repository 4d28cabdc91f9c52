#include "baseapi/platform/curl/header_lines.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace baseapi {
namespace {

/// What libcurl would send of its own accord.
constexpr std::array<std::string_view, 3> kUnwanted{"Accept", "Content-Type", "Expect"};

bool sameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() && ::strncasecmp(left.data(), right.data(), left.size()) == 0;
}

bool isTokenCharacter(char letter) {
    constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9') || kMarks.find(letter) != std::string_view::npos;
}

std::string_view trimmed(std::string_view text) {
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
}

}  // namespace

bool hasControlCharacter(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; });
}

bool isToken(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isTokenCharacter);
}

HeaderLines::HeaderLines(const std::vector<HttpHeader>& headers) {
    std::size_t size = 64;
    for (const auto& [name, value] : headers) size += name.size() + value.size() + 3;
    text_.reserve(size);
    starts_.reserve(headers.size() + kUnwanted.size() + 2);

    for (const auto& [name, value] : headers) {
        if (!sameName(name, "Content-Length")) add(name, value);
    }
    for (const auto unwanted : kUnwanted) {
        const bool given = std::any_of(headers.begin(), headers.end(), [&](const HttpHeader& header) {
            return sameName(header.name, unwanted);
        });
        if (!given) addLine(unwanted, ":", {});
    }
}

void HeaderLines::add(std::string_view name, std::string_view value) {
    if (!isToken(name)) throw std::invalid_argument("a header's name is no HTTP token");
    if (hasControlCharacter(value)) {
        throw std::invalid_argument("the header " + std::string(name) + " has a control character");
    }
    // libcurl takes "Name:" for "do not send it", and "Name;" for a header that is sent empty.
    const auto content = trimmed(value);
    content.empty() ? addLine(name, ";", {}) : addLine(name, ": ", content);
}

void HeaderLines::addLine(std::string_view name, std::string_view separator, std::string_view value) {
    starts_.push_back(text_.size());
    text_.append(name).append(separator).append(value).push_back('\0');
}

curl_slist* HeaderLines::list() {
    nodes_.resize(starts_.size());
    for (std::size_t i = 0; i < starts_.size(); ++i) {
        nodes_[i] = {text_.data() + starts_[i], i + 1 < starts_.size() ? &nodes_[i + 1] : nullptr};
    }
    return nodes_.data();
}

}  // namespace baseapi
