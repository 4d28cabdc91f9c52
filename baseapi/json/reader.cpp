#include "baseapi/json/reader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "baseapi/json/base64.h"
#include "baseapi/json/lenient_int64.h"
#include "baseapi/json/number.h"
#include "baseapi/json/path.h"

namespace baseapi::inline v1::json {
namespace {

using simdjson::ondemand::json_type;

/// What a node of a map costs beside its key and value.
constexpr std::size_t nodeOverhead = 48;

bool isSpace(char byte) {
    return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t';
}

/// The bytes of a scalar: from its first character to the next token, without the space between them.
std::string_view tokenOf(simdjson::ondemand::value& value) {
    std::string_view token = value.raw_json_token();
    while (!token.empty() && isSpace(token.back())) token.remove_suffix(1);
    return token;
}

/// Whether the value begins with a character, which tells its type.
bool leads(simdjson::ondemand::value& value, char byte) {
    return *value.raw_json_token().data() == byte;
}

bool atEnd(simdjson::ondemand::document& document) {
    return document.current_location().error() == simdjson::OUT_OF_BOUNDS;
}

bool isPlain(std::string_view text) {
    return std::memchr(text.data(), '\\', text.size()) == nullptr;
}

std::string describe(simdjson::ondemand::value& value) {
    json_type type{};
    if (value.type().get(type)) return "found something else";
    switch (type) {
        case json_type::array:
            return "found an array";
        case json_type::object:
            return "found an object";
        case json_type::string:
            return "found a string";
        case json_type::number:
            return "found the number " + std::string(tokenOf(value).substr(0, 40));
        case json_type::boolean:
            return "found a boolean";
        case json_type::null:
            return "found null";
    }
    return {};
}

std::string_view nameOf(const Type& type) {
    switch (type.kind) {
        case Kind::string:
        case Kind::textEnumeration:
        case Kind::embeddedMap:
        case Kind::embeddedDocument:
            return "string";
        case Kind::int64:
        case Kind::lenientInt64:
        case Kind::numberEnumeration:
            return "int64";
        case Kind::uint32:
            return "uint32";
        case Kind::real:
            return "double";
        case Kind::boolean:
            return "bool";
        case Kind::record:
            return type.record().name;
        case Kind::array:
            return "array";
        case Kind::stringMap:
        case Kind::anyMap:
        case Kind::flatMap:
            return "map";
        case Kind::json:
            return "JSONValue";
    }
    return {};
}

std::string joined(std::span<const std::string_view> texts) {
    std::string line;
    for (const auto text : texts) line.append(line.empty() ? "" : ", ").append(text);
    return line;
}

template <class T>
T& as(void* place) {
    return *static_cast<T*>(place);
}

}  // namespace

Reader::Reader(std::size_t textSize, DecodingMode mode)
    : mode_(mode), budget_((std::size_t{64} << 20) + 16 * textSize) {}

// ---- documents

bool Reader::readDocument(Parser& parser, std::string& text, const RecordCodec& codec, void* record) {
    return onlyValue(parser, text, [&](Value& value) { return readRecord(codec, value, record); });
}

bool Reader::readDocument(Parser& parser, std::string& text, JSONValue& value) {
    return onlyValue(parser, text, [&](Value& root) { return readJSON(root, value); });
}

bool Reader::checkDocument(Parser& parser, std::string& text) {
    return onlyValue(parser, text, [&](Value& value) { return skip(value); });
}

template <class Read>
bool Reader::onlyValue(Parser& parser, std::string& text, Read read) {
    const std::size_t start = text.find_first_not_of(" \t\r\n");
    if (start == text.npos) return corrupted("the text is empty");
    // The parser hands out a document of one scalar only by a second set of functions.
    if (text[start] != '{' && text[start] != '[') return onlyElement(parser, '[' + text + ']', read);

    text.reserve(text.size() + simdjson::SIMDJSON_PADDING);
    simdjson::ondemand::document document;
    Value value;
    if (const auto code = parser.iterate(text).get(document)) return corrupted(code);
    if (const auto code = document.get_value().get(value)) return corrupted(code);
    if (!read(value)) return false;
    return atEnd(document) || corrupted("something follows the end of the document");
}

template <class Read>
bool Reader::onlyElement(Parser& parser, const std::string& text, Read read) {
    std::string padded;
    padded.reserve(text.size() + simdjson::SIMDJSON_PADDING);
    padded = text;
    simdjson::ondemand::document document;
    simdjson::ondemand::array array;
    if (const auto code = parser.iterate(padded).get(document)) return corrupted(code);
    if (const auto code = document.get_array().get(array)) return corrupted(code);
    std::size_t count = 0;
    for (auto element : array) {
        if (element.error()) return corrupted(element.error());
        Value value = element.value_unsafe();
        if (count++ > 0) break;
        if (!read(value)) return false;
    }
    return (count == 1 && atEnd(document)) || corrupted("the document is not one value");
}

// ---- records

bool Reader::readRecord(const RecordCodec& codec, Value& value, void* record) {
    RecordCodec::FieldSet seen;
    std::size_t previous = RecordCodec::notFound;
    const auto readMember = [&](Member& member) {
        std::size_t index = codec.followerOf(previous);
        if (index == RecordCodec::notFound || !codec.fields[index].key.matches(member.key().raw())) {
            std::string_view key;
            if (!keyOf(member, key)) return false;
            index = codec.find(key);
            if (index == RecordCodec::notFound) return skip(member.value()) || inside(key);
            codec.setFollower(previous, index);
        }
        const Field& field = codec.fields[index];
        void* place = static_cast<char*>(record) + field.offset;
        // A key that comes twice counts the last time, with nothing left of the first.
        if (field.mergesWhenReadTwice() && seen[index]) field.type->record().renew(place);
        if (!readField(codec, field, member.value(), place)) return inside(field.key.name());
        seen.set(index);
        previous = index;
        return true;
    };
    if (!forEachMember(value, codec.name, readMember)) return false;
    return mode_ == DecodingMode::overlay || (codec.required & ~seen).none() || missing(codec, seen);
}

bool Reader::missing(const RecordCodec& codec, const RecordCodec::FieldSet& seen) {
    std::size_t index = 0;
    while (!codec.required[index] || seen[index]) ++index;
    error = {DecodingError::Kind::keyNotFound, std::string(codec.fields[index].key.name()), "",
             std::string(codec.name) + " cannot be without it"};
    return false;
}

bool Reader::readField(const RecordCodec& codec, const Field& field, Value& value, void* place) {
    if (leads(value, 'n')) return takeNull(value) && setNull(codec, field, place);
    const Kind kind = field.type->kind;
    if (field.presence == nullptr) return readValue(*field.type, value, place);
    if (kind == Kind::string && field.presence->inPlace) {  // by far the most frequent
        return readText(value, as<std::optional<std::string>>(place));
    }
    if (kind == Kind::flatMap && !leads(value, '{')) {
        field.presence->reset(place);
        return skip(value);
    }
    if (kind == Kind::embeddedMap || kind == Kind::embeddedDocument) return readEmbedded(field, value, place);
    return charge(field.presence->heapSize) && readValue(*field.type, value, field.presence->engage(place));
}

bool Reader::setNull(const RecordCodec& codec, const Field& field, void* place) {
    const Type& type = *field.type;
    if (field.presence) {
        field.presence->reset(place);
        return true;
    }
    if (type.kind == Kind::json) {
        as<JSONValue>(place).value = nullptr;
        return true;
    }
    if (type.zero && (codec.lenient || type.kind == Kind::lenientInt64)) {
        type.zero(place);
        return true;
    }
    error = {DecodingError::Kind::valueNotFound, std::string(nameOf(type)), "", "found null"};
    return false;
}

bool Reader::readEmbedded(const Field& field, Value& value, void* holder) {
    std::string encoded;
    if (!readString(value, encoded)) return false;
    auto text = fromBase64(encoded);
    if (!text) return corrupted("the string is not base 64");
    Parser parser;  // the outer text still needs its own
    JSONValue document;
    if (!readDocument(parser, *text, document)) return false;
    if (field.type->kind == Kind::embeddedDocument) {
        as<EmbeddedDocument>(field.presence->engage(holder)).document = std::move(document);
    } else if (auto* map = std::get_if<JSONValue::Map>(&document.value)) {
        as<EmbeddedMap>(field.presence->engage(holder)).values = std::move(*map);
    } else {
        field.presence->reset(holder);
    }
    return true;
}

// ---- values

bool Reader::readValue(const Type& type, Value& value, void* place) {
    switch (type.kind) {
        case Kind::string:
            return readString(value, as<std::string>(place));
        case Kind::int64:
            return readInt64(value, as<std::int64_t>(place));
        case Kind::uint32:
            return readUint32(value, as<std::uint32_t>(place));
        case Kind::real:
            return readReal(value, as<double>(place));
        case Kind::boolean:
            return readBoolean(value, as<bool>(place));
        case Kind::lenientInt64:
            return readLenientInt64(value, as<LenientInt64>(place).value);
        case Kind::textEnumeration:
            return readTextEnumeration(type, value, place);
        case Kind::numberEnumeration:
            return readNumberEnumeration(type, value, place);
        case Kind::record:
            return readRecord(type.record(), value, place);
        case Kind::array:
            return readArray(type, value, place);
        case Kind::stringMap:
            return readStringMap(value, as<std::map<std::string, std::string>>(place));
        case Kind::json:
            return readJSON(value, as<JSONValue>(place));
        case Kind::anyMap:
            return readMap(value, as<AnyMap>(place).values);
        case Kind::flatMap:
            return readFlatMap(value, as<FlatMap>(place).values);
        case Kind::embeddedMap:
        case Kind::embeddedDocument:
            break;  // read together with their absence
    }
    return false;
}

bool Reader::takeText(Value& value, std::string_view& text) {
    const std::string_view token = tokenOf(value);
    if (token.empty() || token.front() != '"') return mismatch("string", value);
    // The parser has seen to it that the token ends with the string's own closing quote.
    text = token.substr(1, token.size() - 2);
    if (isPlain(text)) {
        simdjson::ondemand::raw_json_string consumed;
        return value.get_raw_json_string().get(consumed) == simdjson::SUCCESS;
    }
    if (const auto code = value.get_string().get(text)) return corrupted(code);
    return simdjson::validate_utf8(text.data(), text.size()) || corrupted("half a surrogate pair");
}

bool Reader::readText(Value& value, std::optional<std::string>& out) {
    std::string_view text;
    if (!takeText(value, text)) return false;
    out.emplace(text);
    return true;
}

bool Reader::readString(Value& value, std::string& out) {
    std::string_view text;
    if (!takeText(value, text)) return false;
    out.assign(text);
    return true;
}

bool Reader::readInt64(Value& value, std::int64_t& out) {
    if (value.get_int64().get(out) == simdjson::SUCCESS) return true;
    const auto exact = exactInteger(tokenOf(value));
    if (!exact) return mismatch("int64", value);
    out = *exact;
    return true;
}

bool Reader::readUint32(Value& value, std::uint32_t& out) {
    std::int64_t wide = 0;
    if (!readInt64(value, wide)) {
        if (error.kind == DecodingError::Kind::typeMismatch) error.subject = "uint32";
        return false;
    }
    if (wide < 0 || wide > std::numeric_limits<std::uint32_t>::max()) return mismatch("uint32", value);
    out = static_cast<std::uint32_t>(wide);
    return true;
}

bool Reader::readReal(Value& value, double& out) {
    double read = 0;
    const bool good = value.get_double().get(read) == simdjson::SUCCESS && std::isfinite(read);
    if (!good) return mismatch("double", value);
    out = read;
    return true;
}

bool Reader::readBoolean(Value& value, bool& out) {
    return value.get_bool().get(out) == simdjson::SUCCESS || mismatch("bool", value);
}

bool Reader::readLenientInt64(Value& value, std::int64_t& out) {
    out = 0;
    json_type type{};
    if (!typeOfValue(value, type)) return false;
    if (type == json_type::number) {
        JSONValue number;
        bool fits = true;
        if (!readNumber(value, number, fits)) return false;
        if (const auto* integer = std::get_if<std::int64_t>(&number.value)) out = *integer;
        return true;
    }
    if (type != json_type::string) return skip(value);
    std::string digits;
    if (!readString(value, digits)) return false;
    out = parseInteger(digits).value_or(0);
    return true;
}

bool Reader::readTextEnumeration(const Type& type, Value& value, void* place) {
    std::string_view text;
    if (!takeText(value, text)) return false;
    const auto found = std::find(type.texts.begin(), type.texts.end(), text);
    if (found == type.texts.end()) return corrupted("none of " + joined(type.texts));
    const auto which = static_cast<int>(found - type.texts.begin());
    std::memcpy(place, &which, sizeof(which));
    return true;
}

bool Reader::readNumberEnumeration(const Type& type, Value& value, void* place) {
    std::int64_t number = 0;
    if (!readInt64(value, number)) return false;
    const auto found = std::find(type.numbers.begin(), type.numbers.end(), number);
    const int which = found == type.numbers.end() ? type.unknown : *found;
    std::memcpy(place, &which, sizeof(which));
    return true;
}

// ---- containers

bool Reader::readArray(const Type& type, Value& value, void* array) {
    type.array->clear(array);
    std::size_t capacity = 0;
    return forEachElement(value, "array", [&](std::size_t index, Value& element) {
        if (index == capacity) {
            // The old array lives until the new one is filled, but not longer.
            const std::size_t before = capacity * type.element->size;
            capacity = std::max<std::size_t>(2 * capacity, 1 + 63 / type.element->size);
            if (!charge(capacity * type.element->size)) return false;
            type.array->reserve(array, capacity);
            budget_ += before;
        }
        return readValue(*type.element, element, type.array->append(array));
    });
}

bool Reader::readStringMap(Value& value, std::map<std::string, std::string>& out) {
    out.clear();
    return forEachMember(value, "map", [&](Member& member) {
        std::string_view key;
        if (!keyOf(member, key)) return false;
        if (!charge(nodeOverhead + 2 * sizeof(std::string))) return false;
        return readString(member.value(), out[std::string(key)]) || inside(key);
    });
}

bool Reader::readMap(Value& value, JSONValue::Map& out) {
    out.clear();
    return forEachMember(value, "map", [&](Member& member) {
        std::string_view key;
        if (!keyOf(member, key)) return false;
        if (!charge(nodeOverhead + sizeof(std::string) + sizeof(JSONValue))) return false;
        return readJSON(member.value(), out[std::string(key)]) || inside(key);
    });
}

bool Reader::readFlatMap(Value& value, JSONValue::Map& out) {
    out.clear();
    return forEachMember(value, "map", [&](Member& member) {
        std::string_view key;
        json_type type{};
        if (!keyOf(member, key) || !typeOfValue(member.value(), type)) return false;
        if (type == json_type::array || type == json_type::object || type == json_type::null) {
            out.erase(std::string(key));
            return skip(member.value()) || inside(key);
        }
        if (!charge(nodeOverhead + sizeof(std::string) + sizeof(JSONValue))) return false;
        JSONValue& held = out[std::string(key)];
        bool fits = true;
        if (type == json_type::number) {
            if (!readNumber(member.value(), held, fits)) return inside(key);
            if (!fits) out.erase(std::string(key));
            return true;
        }
        return readJSON(member.value(), held) || inside(key);
    });
}

bool Reader::readJSON(Value& value, JSONValue& out) {
    json_type type{};
    if (!typeOfValue(value, type)) return false;
    bool fits = true;
    switch (type) {
        case json_type::string:
            return readString(value, out.value.emplace<std::string>());
        case json_type::number:
            if (!readNumber(value, out, fits)) return false;
            return fits || mismatch("JSONValue", "Unsupported type");
        case json_type::boolean:
            return readBoolean(value, out.value.emplace<bool>());
        case json_type::array:
            return readJSONArray(value, out.value.emplace<JSONValue::Array>());
        case json_type::object:
            return readMap(value, out.value.emplace<JSONValue::Map>());
        case json_type::null:
            out.value = nullptr;
            return takeNull(value);
    }
    return false;
}

bool Reader::readJSONArray(Value& value, JSONValue::Array& out) {
    return forEachElement(value, "array", [&](std::size_t, Value& element) {
        if (out.size() == out.capacity()) {
            const std::size_t before = out.capacity() * sizeof(JSONValue);
            const std::size_t capacity = std::max<std::size_t>(2 * out.capacity(), 1);
            if (!charge(capacity * sizeof(JSONValue))) return false;
            out.reserve(capacity);
            budget_ += before;
        }
        return readJSON(element, out.emplace_back());
    });
}

bool Reader::readNumber(Value& value, JSONValue& out, bool& fits) {
    std::int64_t integer = 0;
    double real = 0;
    fits = true;
    if (!value.get_int64().get(integer)) {
        out.value = integer;
        return true;
    }
    const std::string_view token = tokenOf(value);
    if (!isNumber(token)) return corrupted(simdjson::NUMBER_ERROR);
    if (const auto exact = exactInteger(token)) {
        out.value = *exact;
    } else if (!value.get_double().get(real) && std::isfinite(real)) {
        out.value = real;
    } else {
        fits = false;
    }
    return true;
}

bool Reader::skip(Value& value) {
    json_type type{};
    if (!typeOfValue(value, type)) return false;
    bool ignored = false;
    std::string_view text;
    switch (type) {
        case json_type::string:
            return takeText(value, text);
        case json_type::number:
            return isNumber(tokenOf(value)) || corrupted(simdjson::NUMBER_ERROR);
        case json_type::boolean:
            return !value.get_bool().get(ignored) || corrupted("neither true nor false");
        case json_type::null:
            return takeNull(value);
        case json_type::array:
            return forEachElement(value, "array", [&](std::size_t, Value& element) { return skip(element); });
        case json_type::object:
            return forEachMember(value, "map", [&](Member& member) {
                return keyOf(member, text) && (skip(member.value()) || inside(text));
            });
    }
    return false;
}

template <class Visit>
bool Reader::forEachMember(Value& value, std::string_view expected, Visit visit) {
    simdjson::ondemand::object object;
    if (value.get_object().get(object)) return mismatch(expected, value);
    if (!enter()) return false;
    for (auto item : object) {
        if (item.error()) return corrupted(item.error());
        if (!visit(item.value_unsafe())) return false;
    }
    --depth_;
    return true;
}

template <class Visit>
bool Reader::forEachElement(Value& value, std::string_view expected, Visit visit) {
    simdjson::ondemand::array array;
    if (value.get_array().get(array)) return mismatch(expected, value);
    if (!enter()) return false;
    std::size_t index = 0;
    for (auto item : array) {
        if (item.error()) return corrupted(item.error());
        if (!visit(index, item.value_unsafe())) return inside(index);
        ++index;
    }
    --depth_;
    return true;
}

bool Reader::keyOf(Member& member, std::string_view& key) {
    const char* raw = member.key().raw();
    const char* end = raw;
    while (*end != '"' && *end != '\\') ++end;
    key = {raw, static_cast<std::size_t>(end - raw)};
    if (*end == '"') return true;
    if (const auto code = member.unescaped_key().get(key)) return corrupted(code);
    return simdjson::validate_utf8(key.data(), key.size()) || corrupted("half a surrogate pair in a key");
}

bool Reader::typeOfValue(Value& value, json_type& type) {
    const auto code = value.type().get(type);
    return code == simdjson::SUCCESS || corrupted(code);
}

bool Reader::takeNull(Value& value) {
    bool null = false;
    return value.is_null().get(null) == simdjson::SUCCESS || corrupted("not null, but begins like it");
}

// ---- limits and failures

bool Reader::tooDeep() {
    return corrupted("nested deeper than " + std::to_string(maxDepth) + " levels");
}

bool Reader::tooLarge() {
    return corrupted("the record would take far more memory than its text");
}

bool Reader::corrupted(std::string detail) {
    error = {DecodingError::Kind::dataCorrupted, "", "", std::move(detail)};
    return false;
}

bool Reader::corrupted(simdjson::error_code code) {
    return corrupted(simdjson::error_message(code));
}

bool Reader::mismatch(std::string_view expected, Value& value) {
    // Where the value is broken rather than of another type, the check of the whole text will say so.
    return mismatch(expected, describe(value));
}

bool Reader::mismatch(std::string_view expected, std::string detail) {
    error = {DecodingError::Kind::typeMismatch, std::string(expected), "", std::move(detail)};
    return false;
}

bool Reader::inside(std::string_view key) {
    prependKey(error.path, key);
    return false;
}

bool Reader::inside(std::size_t index) {
    prependIndex(error.path, index);
    return false;
}

}  // namespace baseapi::inline v1::json
