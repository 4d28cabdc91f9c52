#include "baseapi/json/writer.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "baseapi/json/base64.h"
#include "baseapi/json/lenient_int64.h"
#include "baseapi/json/path.h"

namespace baseapi::json {
namespace {

template <class T>
const T& as(const void* place) {
    return *static_cast<const T*>(place);
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
    out_.append('{');
    for (const Field& field : codec.fields) {
        const void* value = static_cast<const char*>(record) + field.offset;
        if (field.presence) value = field.presence->peek(value);
        if (value == nullptr) continue;
        out_.append(field.quotedKey);
        if (!writeValue(*field.type, value)) return inside(field.key());
        out_.append(',');
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
            out_.appendNumber(as<std::int64_t>(value));
            return true;
        case Kind::uint32:
            out_.appendNumber(as<std::uint32_t>(value));
            return true;
        case Kind::lenientInt64:
            out_.appendNumber(as<LenientInt64>(value).value);
            return true;
        case Kind::real:
            return writeReal(as<double>(value));
        case Kind::boolean:
            out_.append(as<bool>(value) ? std::string_view("true") : std::string_view("false"));
            return true;
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

bool Writer::writeString(std::string_view text) {
    char* start = out_.room(text.size() + 2);
    *start = '"';
    out_.advance(1);
    bool ascii = true;
    std::size_t plain = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        ascii &= byte < 0x80;
        if (!needsEscape[byte]) continue;
        out_.append(text.substr(plain, at - plain));
        out_.append(escaped(text[at]));
        plain = at + 1;
    }
    out_.append(text.substr(plain));
    out_.append('"');
    return ascii || simdjson::validate_utf8(text.data(), text.size()) || fail("text that is not UTF-8");
}

bool Writer::writeReal(double value) {
    if (!std::isfinite(value)) return fail("a number that is not finite");
    out_.appendNumber(value);
    return true;
}

bool Writer::writeArray(const Type& type, const void* array) {
    if (!enter()) return false;
    out_.append('[');
    const std::size_t count = type.array->size(array);
    const char* element = static_cast<const char*>(type.array->data(array));
    for (std::size_t index = 0; index < count; ++index, element += type.element->size) {
        if (!writeValue(*type.element, element)) return inside(index);
        out_.append(',');
    }
    out_.close(']');
    --depth_;
    return true;
}

bool Writer::writeStringMap(const std::map<std::string, std::string>& map) {
    out_.append('{');
    for (const auto& [key, value] : map) {
        if (!writeKey(key) || !writeString(value)) return inside(key);
        out_.append(',');
    }
    out_.close('}');
    return true;
}

bool Writer::writeMap(const JSONValue::Map& map) {
    if (!enter()) return false;
    out_.append('{');
    for (const auto& [key, value] : map) {
        if (!writeKey(key) || !writeJSON(value)) return inside(key);
        out_.append(',');
    }
    out_.close('}');
    --depth_;
    return true;
}

bool Writer::writeFlatMap(const JSONValue::Map& map) {
    out_.append('{');
    for (const auto& [key, value] : map) {
        const auto& held = value.value;
        const bool flat = std::holds_alternative<std::string>(held) || std::holds_alternative<bool>(held) ||
                          std::holds_alternative<std::int64_t>(held) || std::holds_alternative<double>(held);
        if (!flat) continue;
        if (!writeKey(key) || !writeJSON(value)) return inside(key);
        out_.append(',');
    }
    out_.close('}');
    return true;
}

bool Writer::writeJSON(const JSONValue& value) {
    struct Visitor {
        Writer& writer;
        bool operator()(std::nullptr_t) const {
            writer.out_.append(std::string_view("null"));
            return true;
        }
        bool operator()(const std::string& text) const { return writer.writeString(text); }
        bool operator()(std::int64_t number) const {
            writer.out_.appendNumber(number);
            return true;
        }
        bool operator()(double number) const { return writer.writeReal(number); }
        bool operator()(bool truth) const {
            writer.out_.append(truth ? std::string_view("true") : std::string_view("false"));
            return true;
        }
        bool operator()(const JSONValue::Array& array) const { return writer.writeJSONArray(array); }
        bool operator()(const JSONValue::Map& map) const { return writer.writeMap(map); }
        bool operator()(const std::any&) const { return writer.fail("Unsupported type"); }
    };
    return std::visit(Visitor{*this}, value.value);
}

bool Writer::writeJSONArray(const JSONValue::Array& array) {
    if (!enter()) return false;
    out_.append('[');
    for (std::size_t index = 0; index < array.size(); ++index) {
        if (!writeJSON(array[index])) return inside(index);
        out_.append(',');
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
    inner.finish();
    return writeString(toBase64(text));
}

bool Writer::writeKey(std::string_view key) {
    if (!writeString(key)) return false;
    out_.append(':');
    return true;
}

bool Writer::enter() {
    if (++depth_ <= maxDepth) return true;
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

}  // namespace baseapi::json
