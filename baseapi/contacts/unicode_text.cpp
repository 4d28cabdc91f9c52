#include "baseapi/contacts/unicode_text.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>

namespace baseapi::inline v1 {
namespace {

bool isASCII(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

struct ByteCase {
    char lower;
    /// Whether it may begin a letter that has a case. None from U+3000 to U+9FFF, Chinese and Japanese, has
    /// one.
    bool mayBeCased;
};
constexpr auto byteCases = [] {
    std::array<ByteCase, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        const bool isUpper = byte >= 'A' && byte <= 'Z';
        table[byte] = {.lower = static_cast<char>(isUpper ? byte + 32 : byte),
                       .mayBeCased = byte >= 0xC0 && !(byte >= 0xE3 && byte <= 0xE9)};
    }
    return table;
}();

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
    if (letter < 0x80) return letter == ' ' || letter == '\t';
    return u_isblank(letter);
}

bool isWhitespace(UChar32 letter) {
    return isBlank(letter) || isLineEnd(letter);
}

/// The letter that begins at `at`, which goes on behind it; negative where the bytes are none.
UChar32 nextLetter(std::string_view text, std::size_t& at) {
    if (static_cast<unsigned char>(text[at]) < 0x80) return text[at++];
    UChar32 letter;
    U8_NEXT(text.data(), at, text.size(), letter);
    return letter;
}

/// The letter that ends at the text's end, and its length; negative where the bytes are none.
UChar32 lastLetter(std::string_view text, std::size_t& length) {
    length = 1;
    if (static_cast<unsigned char>(text.back()) < 0x80) return text.back();
    const auto tail = text.substr(text.size() - std::min<std::size_t>(text.size(), U8_MAX_LENGTH));
    const auto size = static_cast<std::int32_t>(tail.size());
    auto begin = size;
    UChar32 letter;
    U8_PREV(tail.data(), 0, begin, letter);
    length = static_cast<std::size_t>(size - begin);
    return letter;
}

bool isPrintedASCII(char c) {
    return c > ' ' && c < 0x7F;
}

/// By the first of three bytes: the letter is one from U+4000 to U+9FFF, which are Chinese.
bool beginsChinese(char c) {
    return c >= '\xE4' && c <= '\xE9';
}

bool beginsPlainly(std::string_view text) {
    return isPrintedASCII(text.front()) || beginsChinese(text.front());
}

bool endsPlainly(std::string_view text) {
    const auto isContinued = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    const auto size = text.size();
    return isPrintedASCII(text.back()) || (size >= 3 && beginsChinese(text[size - 3]) &&
                                           isContinued(text[size - 2]) && isContinued(text[size - 1]));
}

template <class Function>
std::string_view without(std::string_view text, Function isDropped) {
    // Nearly all texts; a look at a letter's own properties takes much longer.
    if (text.empty() || (beginsPlainly(text) && endsPlainly(text))) return text;
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

void appendLowerCased(std::string_view text, std::string& lower) {
    const auto begin = lower.size();
    lower.append(text);
    bool mayBeCased = false;
    for (char& c : std::span(lower).subspan(begin)) {
        const auto& row = byteCases[static_cast<unsigned char>(c)];
        c = row.lower;
        mayBeCased |= row.mayBeCased;
    }
    if (!mayBeCased) return;
    lower.resize(begin);
    icu::StringByteSink<std::string> sink(&lower);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, text, sink, nullptr, status);
}

std::string_view withoutBlanksAround(std::string_view text) {
    return without(text, isBlank);
}

std::string_view withoutWhitespaceAround(std::string_view text) {
    return without(text, isWhitespace);
}

void appendDecimalDigits(std::string_view text, std::string& digits) {
    const auto begin = digits.size();
    digits.append(text);
    char* kept = digits.data() + begin;
    const char* at = kept;
    const char* const end = at + text.size();
    while (at != end) {
        if (const char c = *at; static_cast<unsigned char>(c) < 0x80) {
            *kept = c;
            kept += c >= '0' && c <= '9';
            ++at;
        } else {
            std::size_t length = 0;
            if (u_isdigit(nextLetter({at, end}, length))) {
                std::memmove(kept, at, length);
                kept += length;
            }
            at += length;
        }
    }
    digits.resize(static_cast<std::size_t>(kept - digits.data()));
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

bool hasPlainLineEnds(std::string_view text) {
    if (text.empty()) return true;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto last = text.size() - 1;
    const auto isOther = [](std::uint8_t byte) {
        return static_cast<std::uint8_t>((byte == 0x0B) | (byte == 0x0C) | ((byte & 0xDF) == 0xC2));
    };
    // Without a branch, so that the compiler looks at many bytes at once.
    std::uint8_t other = isOther(bytes[last]) | (bytes[last] == '\r');
    for (std::size_t at = 0; at < last; ++at)
        other |=
            isOther(bytes[at]) | static_cast<std::uint8_t>((bytes[at] == '\r') & (bytes[at + 1] != '\n'));
    return other == 0;
}

}  // namespace baseapi::inline v1
