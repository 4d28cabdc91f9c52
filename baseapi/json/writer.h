#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "baseapi/json/codec.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/schema.h"
#include "baseapi/json/text_buffer.h"

namespace baseapi::inline v1::json {

/// Appends JSON to a text. Every function gives false after a failure, with `error` set; what was appended
/// until then is worthless.
class Writer {
  public:
    explicit Writer(std::string& text) : out_(text) {}

    bool writeRecord(const RecordCodec& codec, const void* record);
    bool writeJSON(const JSONValue& value);
    /// To be called at the end, after success.
    void flush() { out_.flush(); }

    EncodingError error;

  private:
    bool writeValue(const Type& type, const void* value);
    bool writeWord(std::string_view word);
    template <class Integer>
    bool writeInteger(Integer value);
    bool writeReal(double value);
    bool writeTextEnumeration(const Type& type, const void* value);
    bool writeString(std::string_view text);
    bool writeArray(const Type& type, const void* array);
    bool writeStringMap(const std::map<std::string, std::string>& map);
    bool writeMap(const JSONValue::Map& map);
    bool writeFlatMap(const JSONValue::Map& map);
    bool writeJSONArray(const JSONValue::Array& array);
    template <class Document>
    bool writeEmbedded(const Document& document, bool (Writer::*write)(const Document&));
    bool writeKey(std::string_view key);

    bool enter() { return ++depth_ <= maxDepth || tooDeep(); }
    bool tooDeep();
    bool fail(std::string detail);
    bool inside(std::string_view key);
    bool inside(std::size_t index);

    TextBuffer out_;
    int depth_ = 0;
};

}  // namespace baseapi::inline v1::json
