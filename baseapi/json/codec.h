#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "baseapi/json/json_value.h"
#include "baseapi/json/record.h"
#include "baseapi/platform/export.h"

namespace baseapi::inline v1 {

/// Why a text did not decode, and where.
struct BASEAPI_API DecodingError {
    /// What is wrong with the text.
    enum class Kind { keyNotFound, valueNotFound, typeMismatch, dataCorrupted };

    Kind kind = Kind::dataCorrupted;
    /// The missing key (keyNotFound) or the expected type (valueNotFound, typeMismatch); empty for
    /// dataCorrupted.
    std::string subject;
    /// The place in the text, such as "files[3].size"; empty for the outermost value.
    std::string path;
    /// What was found there.
    std::string detail;

    /// One line for people: kind, subject, path and detail.
    std::string description() const;
};

/// Why a record did not encode, such as "Unsupported type", and where.
struct BASEAPI_API EncodingError {
    std::string path;
    std::string detail;

    /// One line for people: path and detail.
    std::string description() const;
};

/// How the keys of a text meet the fields of a record.
enum class DecodingMode {
    /// A key that cannot be absent must be there.
    strict,
    /// The keys that are there are laid over the record as it stands; missing ones change nothing.
    overlay,
};

/// Everything the library knows of a record type at run time. The tables behind it are compiled once per
/// family.
struct RecordCodec;

/// The codec of `T`; defined where the family of the record is compiled.
template <Record T>
const RecordCodec& codecOf();

/// The record type's name, such as "FilesListBean".
BASEAPI_API std::string_view recordName(const RecordCodec& codec);

// The same by codec, for code that is written without `T`. `record` is the address of a record of the codec's
// type. A value of any nesting, size or encoding ends in a record or in an error.

/// Reads `text` into `record`. Grows the capacity of `text` where the reader needs room behind its end; its
/// content stays. After an error the record is valid, with unspecified content.
BASEAPI_API std::optional<DecodingError> decode(const RecordCodec& codec, std::string& text, void* record,
                                                DecodingMode mode = DecodingMode::strict);

/// Appends the record's JSON object to `text`. After an error `text` is as it was.
BASEAPI_API std::optional<EncodingError> encode(const RecordCodec& codec, const void* record,
                                                std::string& text);

/// The value of any JSON text, a single string or number included. `error` receives the reason where there is
/// none. Grows the capacity of `text` as `decode` does.
BASEAPI_API std::optional<JSONValue> parseJSON(std::string& text, DecodingError* error = nullptr);

/// The JSON text of a value, or nothing where it has no JSON form.
BASEAPI_API std::optional<std::string> writeJSON(const JSONValue& value);

/// Reads a record of type `T` from JSON text.
template <Record T>
std::optional<DecodingError> decode(std::string& text, T& record, DecodingMode mode = DecodingMode::strict) {
    return decode(codecOf<T>(), text, static_cast<void*>(&record), mode);
}

/// The JSON text of a record, or nothing where it has no JSON form (text that is not UTF-8, a value JSON does
/// not know).
template <Record T>
std::optional<std::string> encode(const T& record) {
    std::string text;
    if (encode(codecOf<T>(), &record, text)) return std::nullopt;
    return text;
}

}  // namespace baseapi::inline v1
