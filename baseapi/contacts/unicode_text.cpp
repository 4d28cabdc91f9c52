#include "baseapi/contacts/unicode_text.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace baseapi {
namespace {

bool isASCII(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isLineEnd(UChar32 letter) {
    return (letter >= 0x0A && letter <= 0x0D) || letter == 0x85 || letter == 0x2028 || letter == 0x2029;
}

/// By the first byte.
constexpr auto mayBeginLineEnd = [] {
    std::array<bool, 256> table{};
    for (const auto byte : {0x0A, 0x0B, 0x0C, 0x0D, 0xC2, 0xE2}) table[static_cast<std::size_t>(byte)] = true;
    return table;
}();

bool isBlank(UChar32 letter) {
    return u_isblank(letter);
}

bool isWhitespace(UChar32 letter) {
    return isBlank(letter) || isLineEnd(letter);
}

/// The letter that begins at `at`, which goes on behind it; negative where the bytes are none.
UChar32 nextLetter(std::string_view text, std::size_t& at) {
    UChar32 letter;
    U8_NEXT(text.data(), at, text.size(), letter);
    return letter;
}

/// The letter that ends at the text's end, and its length; negative where the bytes are none.
UChar32 lastLetter(std::string_view text, std::size_t& length) {
    const auto tail = text.substr(text.size() - std::min<std::size_t>(text.size(), U8_MAX_LENGTH));
    const auto size = static_cast<std::int32_t>(tail.size());
    auto begin = size;
    UChar32 letter;
    U8_PREV(tail.data(), 0, begin, letter);
    length = static_cast<std::size_t>(size - begin);
    return letter;
}

template <class Function>
std::string_view without(std::string_view text, Function isDropped) {
    while (!text.empty()) {
        std::size_t length = 0;
        if (!isDropped(nextLetter(text, length))) break;
        text.remove_prefix(length);
    }
    while (!text.empty()) {
        std::size_t length = 0;
        if (!isDropped(lastLetter(text, length))) break;
        text.remove_suffix(length);
    }
    return text;
}

}  // namespace

std::string upperCased(std::string_view text) {
    std::string upper;
    if (isASCII(text)) {
        upper.resize(text.size());
        std::ranges::transform(text, upper.begin(), [](char c) { return c >= 'a' && c <= 'z' ? c - 32 : c; });
    } else {
        icu::StringByteSink<std::string> sink(&upper);
        UErrorCode status = U_ZERO_ERROR;
        icu::CaseMap::utf8ToUpper("", 0, text, sink, nullptr, status);
    }
    return upper;
}

std::string lowerCased(std::string_view text) {
    std::string lower;
    if (isASCII(text)) {
        lower.resize(text.size());
        std::ranges::transform(text, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
    } else {
        icu::StringByteSink<std::string> sink(&lower);
        UErrorCode status = U_ZERO_ERROR;
        icu::CaseMap::utf8ToLower("", 0, text, sink, nullptr, status);
    }
    return lower;
}

std::string_view withoutBlanksAround(std::string_view text) {
    return without(text, isBlank);
}

std::string_view withoutWhitespaceAround(std::string_view text) {
    return without(text, isWhitespace);
}

void appendDecimalDigits(std::string_view text, std::string& digits) {
    for (std::size_t at = 0; at < text.size();) {
        const auto begin = at;
        if (const char c = text[at]; static_cast<unsigned char>(c) < 0x80) {
            if (c >= '0' && c <= '9') digits += c;
            ++at;
            continue;
        }
        if (u_isdigit(nextLetter(text, at))) digits.append(text, begin, at - begin);
    }
}

std::size_t lineEndLength(std::string_view text) {
    std::size_t length = 0;
    return !text.empty() && isLineEnd(nextLetter(text, length)) ? length : 0;
}

std::size_t findLineEnd(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at)
        if (mayBeginLineEnd[static_cast<unsigned char>(text[at])] && lineEndLength(text.substr(at)) > 0)
            return at;
    return text.size();
}

}  // namespace baseapi
