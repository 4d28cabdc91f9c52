// Any text ends in a record or in an error; what we write we read back equal; and a text that the reader
// takes is JSON by another parser's judgement too.

#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/json/sample_records.h"

namespace {

using namespace baseapi;

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// What the document parser says. It refuses numbers beyond 64 bits, which are JSON all the same.
simdjson::error_code judge(std::string_view text) {
    simdjson::dom::parser parser;
    return parser.parse(simdjson::padded_string(text)).error();
}

bool isJSON(std::string_view text) {
    const auto code = judge(text);
    return code == simdjson::SUCCESS || code == simdjson::NUMBER_ERROR;
}

/// The first trip may still change a dynamic number: 1e-999 is read as the double 0, written as 0 and from
/// then on an integer.
template <class T>
T throughText(const T& record) {
    auto text = encode(record);
    require(text.has_value(), "what was read can be written");
    T again;
    require(!decode(*text, again), "what was written can be read");
    return again;
}

JSONValue throughText(const JSONValue& value) {
    auto text = writeJSON(value);
    require(text.has_value(), "what was read can be written");
    auto again = parseJSON(*text);
    require(again.has_value(), "what was written can be read");
    return *again;
}

template <class T>
void tryRecord(std::string_view bytes, DecodingMode mode) {
    std::string text(bytes);
    T record;
    if (const auto error = decode(text, record, mode)) {
        require(!error->description().empty(), "an error says what it is");
        require(error->kind == DecodingError::Kind::dataCorrupted || isJSON(bytes),
                "broken text comes first");
        return;
    }
    require(text == bytes, "the text stays");
    require(isJSON(bytes), "only JSON is taken");
    const T ours = throughText(record);
    require(ours == throughText(ours), "what we write reads back equal");
}

void tryValue(std::string_view bytes) {
    std::string text(bytes);
    DecodingError error;
    const auto value = parseJSON(text, &error);
    if (!value) {
        const bool limit = error.kind == DecodingError::Kind::typeMismatch ||
                           error.detail.find("surrogate") != std::string::npos ||
                           error.detail.find("deeper") != std::string::npos;
        require(limit || judge(bytes) != simdjson::SUCCESS, "all JSON is taken");
        return;
    }
    require(isJSON(bytes), "only JSON is taken");
    const JSONValue ours = throughText(*value);
    require(ours == throughText(ours), "what we write reads back equal");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    tryRecord<sample::Everything>(bytes, DecodingMode::strict);
    tryRecord<sample::Everything>(bytes, DecodingMode::overlay);
    tryRecord<sample::Tree>(bytes, DecodingMode::strict);
    tryRecord<sample::Sparse>(bytes, DecodingMode::strict);
    tryRecord<sample::Device>(bytes, DecodingMode::strict);
    tryValue(bytes);
    return 0;
}
