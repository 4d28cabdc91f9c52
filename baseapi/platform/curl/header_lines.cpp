#include "baseapi/platform/curl/header_lines.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace baseapi::inline v1 {
namespace {

/// What libcurl would send of its own accord.
constexpr std::array<std::string_view, 3> kUnwanted{"Accept", "Content-Type", "Expect"};

bool sameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() && ::strncasecmp(left.data(), right.data(), left.size()) == 0;
}

constexpr auto kTokenCharacters = [] {
    std::array<bool, 256> table{};
    for (unsigned char letter = 'a'; letter <= 'z'; ++letter) table[letter] = true;
    for (unsigned char letter = 'A'; letter <= 'Z'; ++letter) table[letter] = true;
    for (unsigned char letter = '0'; letter <= '9'; ++letter) table[letter] = true;
    for (const unsigned char mark : std::string_view("!#$%&'*+-.^_`|~")) table[mark] = true;
    return table;
}();

std::string_view trimmed(std::string_view text) {
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
}

}  // namespace

bool hasControlCharacter(std::string_view text) {
    // To the end whatever it finds: so the compiler looks at many characters at once.
    unsigned char found = 0;
    for (const unsigned char letter : text)
        found |= static_cast<unsigned char>(letter < 0x20) | static_cast<unsigned char>(letter == 0x7f);
    return found != 0;
}

bool isToken(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](unsigned char letter) { return kTokenCharacters[letter]; });
}

HeaderLines::HeaderLines(const std::vector<HttpHeader>& headers, std::string_view encodings) {
    std::size_t size = 64;
    for (const auto& [name, value] : headers) size += name.size() + value.size() + 3;
    text_.reserve(size);
    starts_.reserve(headers.size() + kUnwanted.size() + 2);

    for (const auto& [name, value] : headers) {
        if (!sameName(name, "Content-Length")) add(name, value);
    }
    const auto given = [&](std::string_view name) {
        return std::any_of(headers.begin(), headers.end(),
                           [&](const HttpHeader& header) { return sameName(header.name, name); });
    };
    for (const auto unwanted : kUnwanted) {
        if (!given(unwanted)) addLine(unwanted, ":", {});
    }
    if (!encodings.empty() && !given("Accept-Encoding")) add("Accept-Encoding", encodings);
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

}  // namespace baseapi::inline v1
