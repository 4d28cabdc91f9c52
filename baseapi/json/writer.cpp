#include "baseapi/json/writer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "baseapi/json/base64.h"
#include "baseapi/json/decimal.h"
#include "baseapi/json/lenient_int64.h"
#include "baseapi/json/path.h"
#include "baseapi/json/utf8.h"

namespace baseapi::inline v1::json {
namespace {

template <class T>
const T& as(const void* place) {
    return *static_cast<const T*>(place);
}

/// The number of an enumeration's case, whatever the enumeration.
int caseAt(const void* place) {
    int number = 0;
    std::memcpy(&number, place, sizeof(number));
    return number;
}

/// Whether a byte ends the run that can be copied as it is.
constexpr std::array<bool, 256> needsEscape = [] {
    std::array<bool, 256> table{};
    for (std::size_t byte = 0; byte < 0x20; ++byte) table[byte] = true;
    table['"'] = table['\\'] = true;
    return table;
}();

std::string escaped(char byte) {
    switch (byte) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        case '\b':
            return "\\b";
        case '\f':
            return "\\f";
        default: {
            constexpr std::string_view digits = "0123456789abcdef";
            const auto code = static_cast<unsigned char>(byte);
            return {'\\', 'u', '0', '0', digits[code >> 4U], digits[code & 15U]};
        }
    }
}

}  // namespace

bool Writer::writeRecord(const RecordCodec& codec, const void* record) {
    if (!enter()) return false;
    out_.put('{');
    for (const Field& field : codec.fields) {
        const void* value = static_cast<const char*>(record) + field.offset;
        if (field.presence) value = field.presence->peek(value);
        if (value == nullptr) continue;
        out_.advance(field.key.copyTo(out_.place(Key::room)));
        if (!writeValue(*field.type, value)) return inside(field.key.name());
        out_.put(',');
    }
    out_.close('}');
    --depth_;
    return true;
}

bool Writer::writeValue(const Type& type, const void* value) {
    switch (type.kind) {
        case Kind::string:
            return writeString(as<std::string>(value));
        case Kind::int64:
            return writeInteger(as<std::int64_t>(value));
        case Kind::uint32:
            return writeInteger(as<std::uint32_t>(value));
        case Kind::lenientInt64:
            return writeInteger(as<LenientInt64>(value).value);
        case Kind::real:
            return writeReal(as<double>(value));
        case Kind::boolean:
            return writeWord(as<bool>(value) ? "true" : "false");
        case Kind::textEnumeration:
            return writeTextEnumeration(type, value);
        case Kind::numberEnumeration:
            return writeInteger(std::int64_t{caseAt(value)});
        case Kind::record:
            return writeRecord(type.record(), value);
        case Kind::array:
            return writeArray(type, value);
        case Kind::stringMap:
            return writeStringMap(as<std::map<std::string, std::string>>(value));
        case Kind::json:
            return writeJSON(as<JSONValue>(value));
        case Kind::anyMap:
            return writeMap(as<AnyMap>(value).values);
        case Kind::flatMap:
            return writeFlatMap(as<FlatMap>(value).values);
        case Kind::embeddedMap:
            return writeEmbedded(as<EmbeddedMap>(value).values, &Writer::writeMap);
        case Kind::embeddedDocument:
            return writeEmbedded(as<EmbeddedDocument>(value).document, &Writer::writeJSON);
    }
    return false;
}

// ---- scalars

bool Writer::writeWord(std::string_view word) {
    out_.put(word);
    return true;
}

template <class Integer>
bool Writer::writeInteger(Integer value) {
    out_.advance(putDecimal(out_.place(longestDecimal), value));
    return true;
}

bool Writer::writeReal(double value) {
    if (!std::isfinite(value)) return fail("a number that is not finite");
    constexpr std::size_t longestReal = 32;
    char* place = out_.place(longestReal);
    out_.advance(std::to_chars(place, place + longestReal, value).ptr);
    return true;
}

bool Writer::writeString(std::string_view text) {
    out_.put('"');
    bool ascii = true;
    std::size_t plain = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        ascii &= byte < 0x80;
        if (!needsEscape[byte]) continue;
        out_.put(text.substr(plain, at - plain));
        out_.put(escaped(text[at]));
        plain = at + 1;
    }
    out_.put(text.substr(plain));
    out_.put('"');
    return ascii || isValidUTF8(text) || fail("text that is not UTF-8");
}

bool Writer::writeTextEnumeration(const Type& type, const void* value) {
    const auto place = static_cast<std::size_t>(caseAt(value));
    return place < type.texts.size() ? writeString(type.texts[place]) : fail("no case of the enumeration");
}

// ---- containers

bool Writer::writeArray(const Type& type, const void* array) {
    if (!enter()) return false;
    out_.put('[');
    const std::size_t start = out_.size();
    const std::size_t count = type.array->size(array);
    const char* element = static_cast<const char*>(type.array->data(array));
    for (std::size_t index = 0; index < count; ++index, element += type.element->size) {
        if (!writeValue(*type.element, element)) return inside(index);
        out_.put(',');
        if (index == 0) out_.expect((out_.size() - start) * (count - 1));
    }
    out_.close(']');
    --depth_;
    return true;
}

bool Writer::writeStringMap(const std::map<std::string, std::string>& map) {
    out_.put('{');
    for (const auto& [key, value] : map) {
        if (!writeKey(key) || !writeString(value)) return inside(key);
        out_.put(',');
    }
    out_.close('}');
    return true;
}

bool Writer::writeMap(const JSONValue::Map& map) {
    if (!enter()) return false;
    out_.put('{');
    for (const auto& [key, value] : map) {
        if (!writeKey(key) || !writeJSON(value)) return inside(key);
        out_.put(',');
    }
    out_.close('}');
    --depth_;
    return true;
}

bool Writer::writeFlatMap(const JSONValue::Map& map) {
    out_.put('{');
    for (const auto& [key, value] : map) {
        const auto& held = value.value;
        const bool flat = std::holds_alternative<std::string>(held) || std::holds_alternative<bool>(held) ||
                          std::holds_alternative<std::int64_t>(held) || std::holds_alternative<double>(held);
        if (!flat) continue;
        if (!writeKey(key) || !writeJSON(value)) return inside(key);
        out_.put(',');
    }
    out_.close('}');
    return true;
}

bool Writer::writeJSON(const JSONValue& value) {
    struct Visitor {
        Writer& writer;
        bool operator()(std::nullptr_t) const { return writer.writeWord("null"); }
        bool operator()(const std::string& text) const { return writer.writeString(text); }
        bool operator()(std::int64_t number) const { return writer.writeInteger(number); }
        bool operator()(double number) const { return writer.writeReal(number); }
        bool operator()(bool truth) const { return writer.writeWord(truth ? "true" : "false"); }
        bool operator()(const JSONValue::Array& array) const { return writer.writeJSONArray(array); }
        bool operator()(const JSONValue::Map& map) const { return writer.writeMap(map); }
        bool operator()(const std::any&) const { return writer.fail("Unsupported type"); }
    };
    return std::visit(Visitor{*this}, value.value);
}

bool Writer::writeJSONArray(const JSONValue::Array& array) {
    if (!enter()) return false;
    out_.put('[');
    for (std::size_t index = 0; index < array.size(); ++index) {
        if (!writeJSON(array[index])) return inside(index);
        out_.put(',');
    }
    out_.close(']');
    --depth_;
    return true;
}

template <class Document>
bool Writer::writeEmbedded(const Document& document, bool (Writer::*write)(const Document&)) {
    std::string text;
    Writer inner(text);
    if (!(inner.*write)(document)) {
        error = std::move(inner.error);
        return false;
    }
    inner.flush();
    return writeString(toBase64(text));
}

bool Writer::writeKey(std::string_view key) {
    if (!writeString(key)) return false;
    out_.put(':');
    return true;
}

// ---- limits and failures

bool Writer::tooDeep() {
    return fail("nested deeper than " + std::to_string(maxDepth) + " levels");
}

bool Writer::fail(std::string detail) {
    error = {"", std::move(detail)};
    return false;
}

bool Writer::inside(std::string_view key) {
    prependKey(error.path, key);
    return false;
}

bool Writer::inside(std::size_t index) {
    prependIndex(error.path, index);
    return false;
}

}  // namespace baseapi::inline v1::json
