#include "baseapi/json/codec.h"

#include <new>
#include <utility>

#include "baseapi/json/reader.h"
#include "baseapi/json/schema.h"
#include "baseapi/json/simdjson_setup.h"
#include "baseapi/json/writer.h"

namespace baseapi::inline v1 {
namespace {

/// One parser a thread, whose memory is used again by the next text.
class ThreadParser {
  public:
    ThreadParser() { json::setUpSimdjson(); }
    ThreadParser(const ThreadParser&) = delete;
    ThreadParser& operator=(const ThreadParser&) = delete;
    /// One huge text must not leave the thread with a huge parser.
    ~ThreadParser() {
        constexpr std::size_t largestKept = std::size_t{4} << 20;
        if (parser().capacity() > largestKept) parser() = json::Reader::Parser();
    }

    static json::Reader::Parser& parser() {
        thread_local json::Reader::Parser parser;
        return parser;
    }
};

/// Runs `read` on a reader; what it finds wrong first is outweighed by a text that is no JSON at all.
template <class Read>
std::optional<DecodingError> readText(std::string& text, DecodingMode mode, Read read) {
    try {
        const ThreadParser lease;
        json::Reader reader(text.size(), mode);
        if (read(reader, lease.parser())) return std::nullopt;
        if (reader.error.kind == DecodingError::Kind::dataCorrupted) return std::move(reader.error);
        json::Reader grammar(text.size(), mode);
        const bool valid = grammar.checkDocument(lease.parser(), text);
        return std::move(valid ? reader.error : grammar.error);
    } catch (const std::bad_alloc&) {
        return DecodingError{DecodingError::Kind::dataCorrupted, "", "", "not enough memory"};
    }
}

std::string_view nameOf(DecodingError::Kind kind) {
    switch (kind) {
        case DecodingError::Kind::keyNotFound:
            return "key not found";
        case DecodingError::Kind::valueNotFound:
            return "value not found";
        case DecodingError::Kind::typeMismatch:
            return "type mismatch";
        case DecodingError::Kind::dataCorrupted:
            return "data corrupted";
    }
    return {};
}

}  // namespace

std::string DecodingError::description() const {
    std::string line(nameOf(kind));
    if (!subject.empty()) line += ": " + subject;
    if (!path.empty()) line += " at " + path;
    return line + " (" + detail + ')';
}

std::string EncodingError::description() const {
    return path.empty() ? "invalid value (" + detail + ')' : "invalid value at " + path + " (" + detail + ')';
}

std::optional<DecodingError> decode(const RecordCodec& codec, std::string& text, void* record,
                                    DecodingMode mode) {
    if (mode == DecodingMode::strict) codec.renew(record);
    return readText(text, mode, [&](json::Reader& reader, json::Reader::Parser& parser) {
        return reader.readDocument(parser, text, codec, record);
    });
}

std::optional<EncodingError> encode(const RecordCodec& codec, const void* record, std::string& text) {
    const std::size_t before = text.size();
    json::Writer writer(text);
    const bool written = writer.writeRecord(codec, record);
    if (written) {
        writer.flush();
        return std::nullopt;
    }
    text.resize(before);
    return std::move(writer.error);
}

std::optional<JSONValue> parseJSON(std::string& text, DecodingError* error) {
    JSONValue value;
    auto failure =
        readText(text, DecodingMode::strict, [&](json::Reader& reader, json::Reader::Parser& parser) {
            return reader.readDocument(parser, text, value);
        });
    if (!failure) return value;
    if (error) *error = std::move(*failure);
    return std::nullopt;
}

std::optional<std::string> writeJSON(const JSONValue& value) {
    std::string text;
    json::Writer writer(text);
    if (!writer.writeJSON(value)) return std::nullopt;
    writer.flush();
    return text;
}

}  // namespace baseapi::inline v1
