#pragma once

#include <boost/json.hpp>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillboxd {

namespace json = boost::json;

/// The type that a request's value must have where the key is present and not null.
enum class Type { text, texts, integer, integers, number, boolean, words, textMap, anyMap, record, records };

struct Field {
    std::string_view key;
    Type type;
    std::span<const Field> shape = {};  ///< of a record or of each record of a list
};

/// The keys of a request record that have a type here. Other keys are ignored.
using Shape = std::span<const Field>;

/// Parses a request's body and compares it with its shape; throws ApiError with the place that does not fit.
json::object parseRecord(std::string_view body, Shape shape);

// Readers for a record that has passed parseRecord. A missing key and null count as absent.
const json::value* present(const json::object& record, std::string_view key);
std::optional<std::string> optionalText(const json::object& record, std::string_view key);
std::string text(const json::object& record, std::string_view key, std::string_view otherwise = "");
std::vector<std::string> texts(const json::object& record, std::string_view key);
std::int64_t integer(const json::object& record, std::string_view key, std::int64_t otherwise);
bool flag(const json::object& record, std::string_view key, bool otherwise);
json::object record(const json::object& outer, std::string_view key);

/// The text of a key that must be there and not be empty.
std::string requiredText(const json::object& record, std::string_view key);
std::int64_t requiredInteger(const json::object& record, std::string_view key);

}  // namespace quillboxd
