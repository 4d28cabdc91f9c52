#include "baseapi/json/json_value.h"

#include <gtest/gtest.h>

#include "tests/json/reading.h"

namespace baseapi::sample {
namespace {

using namespace std::string_literals;

JSONValue parsed(std::string text) {
    DecodingError error;
    const auto value = parseJSON(text, &error);
    EXPECT_TRUE(value) << error.description();
    return value.value_or(JSONValue{});
}

TEST(JSONValue, HoldsTheFirstTypeThatFits) {
    EXPECT_EQ(parsed(R"("1")"), JSONValue{"1"s});
    EXPECT_EQ(parsed("1"), JSONValue{std::int64_t{1}});
    EXPECT_EQ(parsed("1.0"), JSONValue{std::int64_t{1}});
    EXPECT_EQ(parsed("1.5"), JSONValue{1.5});
    EXPECT_EQ(parsed("1e30"), JSONValue{1e30});
    EXPECT_EQ(parsed("9223372036854775808"), JSONValue{9223372036854775808.0});
    EXPECT_EQ(parsed("true"), JSONValue{true});
    EXPECT_EQ(parsed("false"), JSONValue{false});
    EXPECT_EQ(parsed("[]"), JSONValue{JSONValue::Array{}});
    EXPECT_EQ(parsed("{}"), JSONValue{JSONValue::Map{}});
    EXPECT_EQ(parsed("null"), JSONValue{nullptr});
}

TEST(JSONValue, HoldsNestedValues) {
    const JSONValue expected{JSONValue::Map{
        {"a",
         {JSONValue::Array{{std::int64_t{1}}, {JSONValue::Map{{"b", {nullptr}}}}, {JSONValue::Array{}}}}},
        {"c", {"é"s}},
    }};
    EXPECT_EQ(parsed(R"({"a":[1,{"b":null},[]],"c":"é"})"), expected);
}

TEST(JSONValue, RefusesANumberThatNoTypeHolds) {
    std::string text = R"({"a":1e400})";
    DecodingError error;
    EXPECT_FALSE(parseJSON(text, &error));
    EXPECT_EQ(error.kind, Kind::typeMismatch);
    EXPECT_EQ(error.path, "a");
    EXPECT_EQ(error.detail, "Unsupported type");
}

TEST(JSONValue, RefusesWhatIsNotOneDocument) {
    for (std::string text : {"", "1 2", "1,2", "[1],[2]", "1],[2", "\"a\" \"b\"", "nul", "]", "-"}) {
        EXPECT_FALSE(parseJSON(text)) << text;
    }
}

TEST(JSONValue, KeepsTheKeyOfANullAndWritesItBack) {
    const auto value = parsed(R"({"a": null})");
    EXPECT_EQ(writeJSON(value), R"({"a":null})");
}

TEST(JSONValue, WritesWhatItHolds) {
    EXPECT_EQ(writeJSON({"a\"b"s}), R"("a\"b")");
    EXPECT_EQ(writeJSON({std::int64_t{-5}}), "-5");
    EXPECT_EQ(writeJSON({0.1}), "0.1");
    EXPECT_EQ(writeJSON({true}), "true");
    EXPECT_EQ(writeJSON({JSONValue::Array{{false}, {nullptr}}}), "[false,null]");
    EXPECT_EQ(writeJSON({JSONValue::Map{}}), "{}");
}

TEST(JSONValue, HoldsAHostsValueButDoesNotWriteIt) {
    const JSONValue foreign{std::any(5)};
    EXPECT_FALSE(writeJSON(foreign));
    EXPECT_FALSE(foreign == foreign);
}

TEST(JSONValue, DiffersByTypeAndByValue) {
    EXPECT_FALSE(JSONValue{std::int64_t{1}} == JSONValue{1.0});
    EXPECT_FALSE(JSONValue{std::int64_t{1}} == JSONValue{true});
    EXPECT_FALSE(JSONValue{"a"s} == JSONValue{"b"s});
    EXPECT_FALSE(JSONValue{nullptr} == JSONValue{JSONValue::Map{}});
}

TEST(GenericCodingKeys, KnowsItsTextAndItsNumber) {
    EXPECT_EQ(GenericCodingKeys("12").stringValue, "12");
    EXPECT_FALSE(GenericCodingKeys("12").intValue);
    EXPECT_EQ(GenericCodingKeys(-12).stringValue, "-12");
    EXPECT_EQ(GenericCodingKeys(-12).intValue, -12);
    EXPECT_EQ(GenericCodingKeys(7).description(), "7");
    EXPECT_EQ(GenericCodingKeys("k").debugDescription(), "k");
}

// ---- full JSON

Everything overlaid(std::string text) {
    return readWell<Everything>(std::move(text), DecodingMode::overlay);
}
DecodingError refused(std::string text) {
    return readBadly<Everything>(std::move(text), DecodingMode::overlay);
}

std::string written(const Everything& record) {
    auto text = encode(record);
    EXPECT_TRUE(text);
    return text.value_or("");
}

bool contains(const std::string& text, const std::string& piece) {
    return text.find(piece) != text.npos;
}

TEST(AnyMap, KeepsEverythingOfTheObject) {
    const auto record = overlaid(R"({"properties":{"a":[1,{"b":null}],"c":null,"d":1.5}})");
    EXPECT_EQ(record.properties->values.size(), 3U);
    EXPECT_TRUE(contains(written(record), R"("properties":{"a":[1,{"b":null}],"c":null,"d":1.5})"));
}

TEST(AnyMap, IsAbsentForNullAndFailsForAnythingElse) {
    EXPECT_FALSE(overlaid(R"({"properties":null})").properties);
    EXPECT_EQ(refused(R"({"properties":"x"})").kind, Kind::typeMismatch);
}

// ---- flat values

TEST(FlatMap, HoldsOnlyFlatValues) {
    const auto record =
        overlaid(R"({"flat":{"s":"x","i":1,"d":1.5,"t":true,"a":[1],"o":{"x":1},"n":null,"h":1e400}})");
    const JSONValue::Map expected{
        {"s", {"x"s}},
        {"i", {std::int64_t{1}}},
        {"d", {1.5}},
        {"t", {true}},
    };
    EXPECT_EQ(record.flat->values, expected);
    EXPECT_EQ(overlaid(R"({"flat":{"a":[1],"b":2}})").flat->values,
              (JSONValue::Map{{"b", {std::int64_t{2}}}}));
}

TEST(FlatMap, IsAbsentWhenItIsNoObject) {
    for (const char* value : {"[1]", "null", "1", "\"x\"", "true", "[{\"a\":1}]"}) {
        EXPECT_FALSE(overlaid(std::string(R"({"flat":{"x":1},"flat":)") + value + "}").flat) << value;
    }
    EXPECT_FALSE(overlaid("{}").flat);
}

TEST(FlatMap, StillFailsWhereTheTextIsBroken) {
    EXPECT_EQ(refused(R"({"flat":[1,]})").kind, Kind::dataCorrupted);
    EXPECT_EQ(refused(R"({"flat":{"a":[01]}})").path, "flat.a[0]");
}

TEST(FlatMap, LetsTheLastOfTwoEqualKeysWin) {
    EXPECT_TRUE(overlaid(R"({"flat":{"a":1,"a":[1]}})").flat->values.empty());
    EXPECT_EQ(overlaid(R"({"flat":{"a":[1],"a":1}})").flat->values.size(), 1U);
}

TEST(FlatMap, PassesOverOtherValuesWhenItIsWritten) {
    Everything record;
    record.flat = FlatMap{{{"a", {JSONValue::Array{}}},
                           {"b", {std::int64_t{1}}},
                           {"c", {nullptr}},
                           {"d", {std::any(1)}},
                           {"e", {JSONValue::Map{}}},
                           {"f", {"x"s}}}};
    EXPECT_TRUE(contains(written(record), R"("flat":{"b":1,"f":"x"})"));
}

// ---- documents inside strings

TEST(EmbeddedMap, ReadsAndWritesAnObjectInsideAString) {
    const auto record = overlaid(R"({"embedded":"eyJhIjpbMSxudWxsXX0="})");  // {"a":[1,null]}
    EXPECT_EQ(record.embedded->values,
              (JSONValue::Map{{"a", {JSONValue::Array{{std::int64_t{1}}, {nullptr}}}}}));
    EXPECT_TRUE(contains(written(record), R"("embedded":"eyJhIjpbMSxudWxsXX0=")"));
}

TEST(EmbeddedMap, IsAbsentWhenTheDocumentIsNoObject) {
    for (const char* text : {"WzFd" /* [1] */, "MQ==" /* 1 */, "bnVsbA==" /* null */}) {
        const auto record = overlaid(std::string(R"({"embedded":"e30=","embedded":")") + text + "\"}");
        EXPECT_FALSE(record.embedded) << text;
    }
    EXPECT_FALSE(overlaid(R"({"embedded":null})").embedded);
}

TEST(EmbeddedMap, FailsTheRecordWhenItCannotBeParsed) {
    for (const char* text : {"", "e30", "e30=\\n", "e3 0=", "e3_-", "****", "e30==", "=", "ew==" /* { */,
                             "e30x" /* {}1 */, "/w==" /* a byte that is no UTF-8 */, "e30=e30="}) {
        const auto error = refused(std::string(R"({"embedded":")") + text + "\"}");
        EXPECT_EQ(error.kind, Kind::dataCorrupted) << text;
        EXPECT_EQ(error.path, "embedded") << text;
    }
    EXPECT_EQ(refused(R"({"embedded":"eyJhIjowMX0="})").path, "embedded.a");  // {"a":01}
}

TEST(EmbeddedDocument, TakesADocumentOfAnyKind) {
    EXPECT_EQ(overlaid(R"({"document":"WzFd"})").document->document,
              JSONValue{JSONValue::Array{{std::int64_t{1}}}});
    EXPECT_EQ(overlaid(R"({"document":"e30="})").document->document, JSONValue{JSONValue::Map{}});
    EXPECT_EQ(overlaid(R"({"document":"MQ=="})").document->document, JSONValue{std::int64_t{1}});
    EXPECT_EQ(overlaid(R"({"document":"bnVsbA=="})").document->document, JSONValue{nullptr});
    EXPECT_TRUE(contains(written(overlaid(R"({"document":"WzFd"})")), R"("document":"WzFd")"));
}

TEST(EmbeddedDocument, DoesNotWriteWhatJSONDoesNotKnow) {
    Everything record;
    record.document = EmbeddedDocument{{JSONValue::Array{{std::any(1)}}}};
    std::string text;
    const auto error = encode(codecOf<Everything>(), &record, text);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->path, "document[0]");
    EXPECT_EQ(error->detail, "Unsupported type");
}

}  // namespace
}  // namespace baseapi::sample
