#include "quillboxd/json.h"

#include <algorithm>
#include <limits>

#include "quillboxd/error.h"

namespace quillboxd {
namespace {

bool isInteger(const json::value& value) {
    return value.is_int64();
}

bool isWord(const json::value& value) {
    return value.is_int64() && value.get_int64() >= 0 &&
           value.get_int64() <= std::numeric_limits<std::uint32_t>::max();
}

template <class Predicate>
bool isArrayOf(const json::value& value, Predicate predicate) {
    return value.is_array() && std::all_of(value.get_array().begin(), value.get_array().end(), predicate);
}

bool isText(const json::value& value) {
    return value.is_string();
}
bool isObject(const json::value& value) {
    return value.is_object();
}

bool isTextMap(const json::value& value) {
    return value.is_object() && std::all_of(value.get_object().begin(), value.get_object().end(),
                                            [](const auto& entry) { return entry.value().is_string(); });
}

bool fits(const json::value& value, Type type) {
    switch (type) {
        case Type::text:
            return isText(value);
        case Type::texts:
            return isArrayOf(value, isText);
        case Type::integer:
            return isInteger(value);
        case Type::integers:
            return isArrayOf(value, isInteger);
        case Type::number:
            return value.is_number();
        case Type::boolean:
            return value.is_bool();
        case Type::words:
            return isArrayOf(value, isWord);
        case Type::textMap:
            return isTextMap(value);
        case Type::anyMap:
        case Type::record:
            return isObject(value);
        case Type::records:
            return isArrayOf(value, isObject);
    }
    return false;
}

std::string_view nameOf(Type type) {
    switch (type) {
        case Type::text:
            return "a text";
        case Type::texts:
            return "a list of texts";
        case Type::integer:
            return "an integer of 64 bits";
        case Type::integers:
            return "a list of integers of 64 bits";
        case Type::number:
            return "a number";
        case Type::boolean:
            return "true or false";
        case Type::words:
            return "a list of unsigned 32-bit integers";
        case Type::textMap:
            return "an object whose values are texts";
        case Type::anyMap:
        case Type::record:
            return "an object";
        case Type::records:
            return "a list of objects";
    }
    return "";
}

void check(const json::object& object, Shape shape, const std::string& place) {
    for (const auto& field : shape) {
        const auto* value = present(object, field.key);
        if (!value) continue;
        const std::string path = place + std::string(field.key);
        if (!fits(*value, field.type))
            badRequest("\"" + path + "\" must be " + std::string(nameOf(field.type)));
        if (field.type == Type::record) check(value->get_object(), field.shape, path + ".");
        if (field.type != Type::records) continue;
        std::size_t index = 0;
        for (const auto& element : value->get_array()) {
            check(element.get_object(), field.shape, path + "[" + std::to_string(index++) + "].");
        }
    }
}

}  // namespace

json::object parseRecord(std::string_view body, Shape shape) {
    json::error_code error;
    json::value value = json::parse({body.data(), body.size()}, error);
    if (error) badRequest("the body is not JSON: " + error.message());
    if (!value.is_object()) badRequest("the body must be a JSON object");
    check(value.get_object(), shape, "");
    return std::move(value.get_object());
}

const json::value* present(const json::object& record, std::string_view key) {
    const auto* value = record.if_contains({key.data(), key.size()});
    return value && !value->is_null() ? value : nullptr;
}

std::optional<std::string> optionalText(const json::object& record, std::string_view key) {
    const auto* value = present(record, key);
    if (!value) return std::nullopt;
    return std::string(value->get_string());
}

std::string text(const json::object& record, std::string_view key, std::string_view otherwise) {
    return optionalText(record, key).value_or(std::string(otherwise));
}

std::vector<std::string> texts(const json::object& record, std::string_view key) {
    std::vector<std::string> list;
    if (const auto* value = present(record, key))
        for (const auto& element : value->get_array()) list.emplace_back(element.get_string());
    return list;
}

std::int64_t integer(const json::object& record, std::string_view key, std::int64_t otherwise) {
    const auto* value = present(record, key);
    return value ? value->get_int64() : otherwise;
}

bool flag(const json::object& record, std::string_view key, bool otherwise) {
    const auto* value = present(record, key);
    return value ? value->get_bool() : otherwise;
}

json::object record(const json::object& outer, std::string_view key) {
    const auto* value = present(outer, key);
    return value ? value->get_object() : json::object();
}

std::string requiredText(const json::object& record, std::string_view key) {
    auto value = text(record, key);
    if (value.empty()) badRequest("\"" + std::string(key) + "\" is missing or empty");
    return value;
}

std::int64_t requiredInteger(const json::object& record, std::string_view key) {
    if (!present(record, key)) badRequest("\"" + std::string(key) + "\" is missing");
    return integer(record, key, 0);
}

}  // namespace quillboxd
