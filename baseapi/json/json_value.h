#pragma once

#include <any>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// One value of any JSON type, held as a dynamically typed value.
///
/// A number that is an integer of 64 bits is held as `std::int64_t`, any other number as `double`; `nullptr`
/// is the null marker. A `std::any` stands for a host's value that JSON does not know: it can be held but not
/// encoded.
struct JSONValue {
    /// In their order.
    using Array = std::vector<JSONValue>;
    /// By key; the order of the text is not kept.
    using Map = std::map<std::string, JSONValue, std::less<>>;

    std::variant<std::nullptr_t, std::string, std::int64_t, double, bool, Array, Map, std::any> value;
};

/// Equal when both hold equal values of one type; values that JSON does not know are equal to nothing.
BASEAPI_API bool operator==(const JSONValue& left, const JSONValue& right);

/// An object of any JSON values. Nested arrays and objects stay what they are; null becomes the null marker.
struct AnyMap {
    JSONValue::Map values;
    bool operator==(const AnyMap&) const = default;
};

/// An object of flat values: strings, integers, doubles and booleans. A value of another type is passed over
/// in both directions, and what is no object at all reads as absent. Only useful as `std::optional<FlatMap>`.
struct FlatMap {
    JSONValue::Map values;
    bool operator==(const FlatMap&) const = default;
};

/// An object inside a string: the wire holds base 64 text of a JSON document. A document that is no object
/// reads as absent; text that cannot be parsed fails the record. Only useful as `std::optional<EmbeddedMap>`.
struct EmbeddedMap {
    JSONValue::Map values;
    bool operator==(const EmbeddedMap&) const = default;
};

/// As `EmbeddedMap`, for a document of any kind.
struct EmbeddedDocument {
    JSONValue document;
    bool operator==(const EmbeddedDocument&) const = default;
};

/// A JSON key that is known only at run time. `intValue` is absent for a key made from a text.
struct GenericCodingKeys {
    std::string stringValue;
    std::optional<std::int64_t> intValue;

    explicit GenericCodingKeys(std::string key) : stringValue(std::move(key)) {}
    explicit GenericCodingKeys(std::int64_t key) : stringValue(std::to_string(key)), intValue(key) {}

    /// The key.
    const std::string& description() const { return stringValue; }
    /// The key.
    const std::string& debugDescription() const { return stringValue; }
};

}  // namespace baseapi::inline v1
