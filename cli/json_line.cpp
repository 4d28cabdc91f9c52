#include "cli/json_line.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "cli/text.h"

namespace quillbox {
namespace {

template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};

template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

std::string literalOf(std::string_view text) {
    return '"' + jsonEscaped(text) + '"';
}

std::string numberText(double value) {
    if (!std::isfinite(value)) return "null";
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return {digits, end};
}

/// The length of the string literal at the beginning of `json`, quotes included.
std::size_t literalLength(std::string_view json) {
    std::size_t end = 1;
    while (end < json.size() && json[end] != '"') end += json[end] == '\\' ? 2 : 1;
    return std::min(end + 1, json.size());
}

/// Hands over each string literal whole, and each other character.
template <class Literal, class Other>
void scan(std::string_view json, Literal&& literal, Other&& other) {
    while (!json.empty()) {
        const auto length = json.front() == '"' ? literalLength(json) : 1;
        const auto piece = json.substr(0, length);
        json.remove_prefix(length);
        if (piece.front() == '"')
            literal(piece, json);
        else
            other(piece.front(), json);
    }
}

bool isKey(std::string_view behind) {
    const auto next = behind.find_first_not_of(" \t\r\n");
    return next != std::string_view::npos && behind[next] == ':';
}

}  // namespace

std::string jsonEscaped(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size() + 2);
    for (const char character : repairUtf8(text)) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            escaped += '\\';
            escaped += character;
        } else if (byte < 0x20 || byte == 0x7F) {
            char spelled[8];
            std::snprintf(spelled, sizeof spelled, "\\u%04x", byte);
            escaped += spelled;
        } else {
            escaped += character;
        }
    }
    return escaped;
}

std::string JsonLine::text(const std::function<std::string(std::string)>& mask) const {
    std::string line = "{";
    for (const auto& [key, value] : fields_) {
        if (line.size() > 1) line += ',';
        line += literalOf(key) + ':';
        line += std::visit(Overloaded{[](std::nullptr_t) { return std::string("null"); },
                                      [](bool it) { return std::string(it ? "true" : "false"); },
                                      [](std::int64_t it) { return std::to_string(it); },
                                      [](double it) { return numberText(it); },
                                      [&](const std::string& it) { return literalOf(mask(it)); },
                                      [&](const Json& it) { return masked(it.text, mask); }},
                           value);
    }
    return line + '}';
}

std::string masked(std::string_view json, const std::function<std::string(std::string)>& mask) {
    std::string result;
    result.reserve(json.size());
    scan(
        json,
        [&](std::string_view literal, std::string_view behind) {
            result += isKey(behind) ? std::string(literal) : mask(std::string(literal));
        },
        [&](char other, std::string_view) { result += other; });
    return result;
}

std::string indented(std::string_view json) {
    std::string result;
    std::size_t depth = 0;
    const auto newLine = [&] { result.append("\n").append(2 * depth, ' '); };
    scan(
        json, [&](std::string_view literal, std::string_view) { result += literal; },
        [&](char other, std::string_view behind) {
            const bool opens = other == '{' || other == '[';
            const bool closes = other == '}' || other == ']';
            const bool pairEnds = !result.empty() && (result.back() == '{' || result.back() == '[');
            const bool pairIsEmpty = !behind.empty() && (behind.front() == '}' || behind.front() == ']');
            if (closes) --depth;
            if (closes && !pairEnds) newLine();
            result += other;
            if (opens) ++depth;
            if ((opens && !pairIsEmpty) || other == ',') newLine();
            if (other == ':') result += ' ';
        });
    return result;
}

}  // namespace quillbox
