#include "baseapi/json/number.h"

#include <charconv>
#include <string>

namespace baseapi::inline v1::json {
namespace {

/// Takes a run of digits from the front.
std::string_view takeDigits(std::string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && text[count] >= '0' && text[count] <= '9') ++count;
    const std::string_view digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

bool take(std::string_view& text, char either, char other) {
    if (text.empty() || (text.front() != either && text.front() != other)) return false;
    text.remove_prefix(1);
    return true;
}

struct Parts {
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;
    std::string_view exponent;
    bool negativeExponent = false;
};

std::optional<Parts> split(std::string_view text) {
    Parts parts;
    parts.negative = take(text, '-', '-');
    parts.whole = takeDigits(text);
    if (parts.whole.empty() || (parts.whole.size() > 1 && parts.whole.front() == '0')) return std::nullopt;
    if (take(text, '.', '.')) {
        parts.fraction = takeDigits(text);
        if (parts.fraction.empty()) return std::nullopt;
    }
    if (take(text, 'e', 'E')) {
        parts.negativeExponent = !text.empty() && text.front() == '-';
        take(text, '+', '-');
        parts.exponent = takeDigits(text);
        if (parts.exponent.empty()) return std::nullopt;
    }
    if (!text.empty()) return std::nullopt;
    return parts;
}

/// The exponent, or a value far beyond any text's length where it is too large to matter.
std::int64_t exponentOf(const Parts& parts) {
    constexpr std::int64_t huge = std::int64_t{1} << 60;
    if (parts.exponent.empty()) return 0;
    const std::int64_t value = parseInteger(parts.exponent).value_or(huge);
    return parts.negativeExponent ? -value : value;
}

}  // namespace

bool isNumber(std::string_view text) {
    return split(text).has_value();
}

std::optional<std::int64_t> exactInteger(std::string_view number) {
    const auto parts = split(number);
    if (!parts) return std::nullopt;
    std::string digits(parts->whole);
    digits += parts->fraction;
    digits.erase(0, digits.find_first_not_of('0'));
    if (digits.empty()) return 0;

    const std::size_t length = digits.find_last_not_of('0') + 1;
    const std::int64_t exponent = exponentOf(*parts) + static_cast<std::int64_t>(digits.size() - length) -
                                  static_cast<std::int64_t>(parts->fraction.size());
    constexpr std::int64_t maxDigits = 19;
    if (exponent < 0 || exponent > maxDigits || length > maxDigits) return std::nullopt;
    digits.resize(length);
    digits.append(static_cast<std::size_t>(exponent), '0');
    if (parts->negative) digits.insert(0, 1, '-');
    return parseInteger(digits);
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

}  // namespace baseapi::inline v1::json
