#include "cli/text.h"

#include <wchar.h>

#include <cstdint>
#include <cstdio>
#include <vector>

namespace quillbox {
namespace {

constexpr char32_t broken = 0xFFFFFFFF;

struct Character {
    /// `broken` for a byte that begins no character.
    char32_t code = broken;
    std::string_view bytes;
};

char32_t smallestOfLength(std::size_t length) {
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return smallest[length];
}

/// The character at the beginning of a text that is not empty.
Character firstCharacter(std::string_view text) {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const Character no{broken, text.substr(0, 1)};
    if (byte(0) < 0x80) return {byte(0), text.substr(0, 1)};
    const std::size_t length = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : 2;
    if (byte(0) < 0xC0 || byte(0) > 0xF4 || text.size() < length) return no;
    char32_t code = byte(0) & (0x7F >> length);
    for (std::size_t index = 1; index < length; ++index) {
        if ((byte(index) & 0xC0) != 0x80) return no;
        code = code << 6 | (byte(index) & 0x3F);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < smallestOfLength(length) || code > 0x10FFFF || surrogate) return no;
    return {code, text.substr(0, length)};
}

template <class Visit>
void eachCharacter(std::string_view text, Visit&& visit) {
    while (!text.empty()) {
        const auto character = firstCharacter(text);
        visit(character);
        text.remove_prefix(character.bytes.size());
    }
}

bool turnsDirection(char32_t code) {
    return code == 0x200E || code == 0x200F || code == 0x061C || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

bool needsSpelling(char32_t code) {
    const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0);
    return control || code == 0x2028 || code == 0x2029 || turnsDirection(code);
}

std::string spelled(char32_t code) {
    if (code == '\n') return "\\n";
    if (code == '\r') return "\\r";
    if (code == '\t') return "\\t";
    char digits[16];
    std::snprintf(digits, sizeof digits, code < 0x100 ? "\\x%02x" : "\\u%04x", static_cast<unsigned>(code));
    return digits;
}

std::size_t columnsOf(const Character& character) {
    if (character.code == broken) return 1;
    const int width = ::wcwidth(static_cast<wchar_t>(character.code));
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

}  // namespace

std::string repairUtf8(std::string_view text) {
    std::string repaired;
    repaired.reserve(text.size());
    eachCharacter(text, [&](const Character& character) {
        repaired += character.code == broken ? std::string_view("\uFFFD") : character.bytes;
    });
    return repaired;
}

bool isUtf8(std::string_view text) {
    bool valid = true;
    eachCharacter(text, [&](const Character& character) { valid = valid && character.code != broken; });
    return valid;
}

std::string harmless(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    eachCharacter(text, [&](const Character& character) {
        if (character.code == broken)
            result += "\uFFFD";
        else if (needsSpelling(character.code))
            result += spelled(character.code);
        else
            result += character.bytes;
    });
    return result;
}

std::size_t columns(std::string_view text) {
    std::size_t sum = 0;
    eachCharacter(text, [&](const Character& character) { sum += columnsOf(character); });
    return sum;
}

std::string shortened(std::string_view text, std::size_t width) {
    if (columns(text) <= width) return std::string(text);
    if (width == 0) return {};
    std::vector<Character> characters;
    eachCharacter(text, [&](const Character& character) { characters.push_back(character); });

    // The end of a name tells more than its middle: it keeps a third of the room.
    const std::size_t endWidth = (width - 1) / 3;
    std::size_t endBegin = characters.size();
    for (std::size_t used = 0; endBegin > 0; --endBegin) {
        used += columnsOf(characters[endBegin - 1]);
        if (used > endWidth) break;
    }
    std::string result;
    std::size_t used = 0;
    for (const auto& character : characters) {
        used += columnsOf(character);
        if (used > width - 1 - endWidth) break;
        result += character.bytes;
    }
    result += "…";
    for (; endBegin < characters.size(); ++endBegin) result += characters[endBegin].bytes;
    return result;
}

}  // namespace quillbox
