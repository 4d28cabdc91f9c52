#pragma once

#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "baseapi/json/codec.h"
#include "baseapi/json/json_value.h"
#include "baseapi/json/schema.h"

namespace baseapi::inline v1::json {

/// Reads one text, in one pass, into a record or a dynamic value. Every function gives false after a failure,
/// with `error` set; nothing is read after that.
class Reader {
  public:
    using Parser = simdjson::ondemand::parser;

    Reader(std::size_t textSize, DecodingMode mode);

    bool readDocument(Parser& parser, std::string& text, const RecordCodec& codec, void* record);
    bool readDocument(Parser& parser, std::string& text, JSONValue& value);
    /// Reads the text for its grammar alone.
    bool checkDocument(Parser& parser, std::string& text);

    DecodingError error;

  private:
    using Value = simdjson::ondemand::value;
    using Member = simdjson::ondemand::field;

    template <class Read>
    bool onlyValue(Parser& parser, std::string& text, Read read);
    template <class Read>
    bool onlyElement(Parser& parser, const std::string& text, Read read);

    bool readRecord(const RecordCodec& codec, Value& value, void* record);
    bool readField(const RecordCodec& codec, const Field& field, Value& value, void* place);
    bool readEmbedded(const Field& field, Value& value, void* holder);
    bool setNull(const RecordCodec& codec, const Field& field, void* place);
    bool missing(const RecordCodec& codec, const RecordCodec::FieldSet& seen);

    bool readValue(const Type& type, Value& value, void* place);
    /// The text is good until the next one is taken.
    bool takeText(Value& value, std::string_view& text);
    bool readString(Value& value, std::string& out);
    bool readText(Value& value, std::optional<std::string>& out);
    bool readInt64(Value& value, std::int64_t& out);
    bool readUint32(Value& value, std::uint32_t& out);
    bool readReal(Value& value, double& out);
    bool readBoolean(Value& value, bool& out);
    bool readLenientInt64(Value& value, std::int64_t& out);
    bool readTextEnumeration(const Type& type, Value& value, void* place);
    bool readNumberEnumeration(const Type& type, Value& value, void* place);
    bool readArray(const Type& type, Value& value, void* array);
    bool readStringMap(Value& value, std::map<std::string, std::string>& out);
    bool readMap(Value& value, JSONValue::Map& out);
    bool readFlatMap(Value& value, JSONValue::Map& out);
    bool readJSON(Value& value, JSONValue& out);
    bool readJSONArray(Value& value, JSONValue::Array& out);
    /// Leaves `out` as it is where the number fits neither an integer nor a double.
    bool readNumber(Value& value, JSONValue& out, bool& fits);
    /// Checks a value that nobody wants.
    bool skip(Value& value);

    template <class Visit>
    bool forEachMember(Value& value, std::string_view expected, Visit visit);
    template <class Visit>
    bool forEachElement(Value& value, std::string_view expected, Visit visit);
    bool keyOf(Member& member, std::string_view& key);
    bool typeOfValue(Value& value, simdjson::ondemand::json_type& type);
    bool takeNull(Value& value);

    bool enter() { return ++depth_ <= maxDepth || tooDeep(); }
    bool tooDeep();
    /// Takes what a value needs from what this text may have.
    bool charge(std::size_t bytes) {
        if (bytes > budget_) return tooLarge();
        budget_ -= bytes;
        return true;
    }
    bool tooLarge();
    bool corrupted(std::string detail);
    bool corrupted(simdjson::error_code code);
    bool mismatch(std::string_view expected, Value& value);
    bool mismatch(std::string_view expected, std::string detail);
    bool inside(std::string_view key);
    bool inside(std::size_t index);

    DecodingMode mode_;
    int depth_ = 0;
    std::size_t budget_;
};

}  // namespace baseapi::inline v1::json
