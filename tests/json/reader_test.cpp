#include <gtest/gtest.h>

#include <limits>
#include <thread>

#include "tests/json/reading.h"

namespace baseapi::sample {
namespace {

// ---- keys

TEST(Reader, ReadsARecordWithItsBaseAndItsNestedRecords) {
    const auto tree =
        readWell<Tree>(R"({"code": 7, "files": [{"size": 1}, {"size": 2, "name": "b"}], "msg": "m",
                           "trees": [{"leaf": {"size": 3}, "code": 8}]})");
    EXPECT_EQ(tree.code, 7);
    EXPECT_EQ(tree.msg, "m");
    ASSERT_EQ(tree.files->size(), 2U);
    EXPECT_EQ(tree.files->at(0).size, 1);
    EXPECT_EQ(tree.files->at(1).name, "b");
    EXPECT_EQ(tree.trees->at(0).leaf->size, 3);
    EXPECT_EQ(tree.trees->at(0).code, 8);
}

TEST(Reader, LeavesAllOwnFieldsAbsentWhenOnlyTheBaseIsThere) {
    const auto tree = readWell<Tree>(R"({"code": 0})");
    EXPECT_EQ(tree.code, 0);
    EXPECT_FALSE(tree.msg || tree.files || tree.leaf || tree.trees);
}

TEST(Reader, TakesKeysInAnyOrder) {
    const auto leaf = readWell<Leaf>(R"({"name":"n","size":4})");
    EXPECT_EQ(leaf.size, 4);
    EXPECT_EQ(leaf.name, "n");
}

TEST(Reader, PassesOverKeysItDoesNotKnow) {
    const auto leaf = readWell<Leaf>(
        R"({"siz":1,"sizes":2,"":3,"Size":4,"x":{"size":[5,{"a":null}],"b":"\n\u0041"},"size":6,"y":1e400,"z":false})");
    EXPECT_EQ(leaf.size, 6);
}

TEST(Reader, MatchesEscapedKeys) {
    const auto leaf = readWell<Leaf>(R"({"\u0073ize":1,"n\u0061me":"n","\"size":7})");
    EXPECT_EQ(leaf.size, 1);
    EXPECT_EQ(leaf.name, "n");
}

TEST(Reader, LetsTheLastOfTwoEqualKeysWin) {
    const auto tree = readWell<Tree>(
        R"({"leaf":{"size":1,"name":"x"},"files":[{"size":1},{"size":2}],"code":1,
            "leaf":{"size":2},"files":[{"size":3}],"code":2})");
    EXPECT_EQ(tree.leaf->size, 2);
    EXPECT_FALSE(tree.leaf->name) << "nothing of the first is left";
    ASSERT_EQ(tree.files->size(), 1U);
    EXPECT_EQ(tree.files->at(0).size, 3);
    EXPECT_EQ(tree.code, 2);
}

TEST(Reader, LeavesNothingOfAnEarlierRequiredRecordUnderTheSameKey) {
    const auto read = [](const std::string& leaves) {
        return readBadly<Everything>("{" + leaves + "}", DecodingMode::strict);
    };
    EXPECT_EQ(read(R"("leaf":{"size":1},"leaf":{"name":"x"})").subject, "size");

    Everything all;
    std::string text = R"({"leaf":{"size":1,"name":"x"},"leaf":{"size":2}})";
    ASSERT_FALSE(decode(text, all, DecodingMode::overlay));
    EXPECT_EQ(all.leaf, (Leaf{2, std::nullopt}));
}

TEST(Reader, TakesANullAfterAValueAsAbsent) {
    EXPECT_FALSE(readWell<Leaf>(R"({"size":1,"name":"x","name":null})").name);
}

TEST(Reader, ForgetsWhatTheRecordHeldBefore) {
    Leaf leaf{9, "old"};
    std::string text = R"({"size":1})";
    ASSERT_FALSE(decode(text, leaf));
    EXPECT_EQ(leaf, (Leaf{1, std::nullopt}));
}

// ---- absent values

TEST(Reader, TakesAMissingKeyAndANullAsAbsent) {
    EXPECT_FALSE(readWell<Leaf>(R"({"size":1})").name);
    EXPECT_FALSE(readWell<Leaf>(R"({"size":1,"name":null})").name);
    const auto all = readWell<Tree>(R"({"code":null,"msg":null,"files":null,"leaf":null,"trees":null})");
    EXPECT_FALSE(all.code || all.msg || all.files || all.leaf || all.trees);
}

TEST(Reader, FailsWithoutAKeyThatCannotBeAbsent) {
    const auto error = readBadly<Tree>(R"({"files":[{"size":1},{"name":"x"}]})");
    EXPECT_EQ(error.kind, Kind::keyNotFound);
    EXPECT_EQ(error.subject, "size");
    EXPECT_EQ(error.path, "files[1]");
    EXPECT_EQ(error.description(), "key not found: size at files[1] (Leaf cannot be without it)");
}

TEST(Reader, FailsWithANullForAKeyThatCannotBeAbsent) {
    const auto error = readBadly<Tree>(R"({"leaf":{"size":null}})");
    EXPECT_EQ(error.kind, Kind::valueNotFound);
    EXPECT_EQ(error.subject, "int64");
    EXPECT_EQ(error.path, "leaf.size");
    EXPECT_EQ(error.description(), "value not found: int64 at leaf.size (found null)");
}

TEST(Reader, GivesALenientRecordItsDefaults) {
    for (const char* text : {"{}", R"({"favorite":null,"size":null,"id":null})",
                             R"({"favorite":true,"size":5,"favorite":null,"size":null})"}) {
        const auto sparse = readWell<Sparse>(text);
        EXPECT_FALSE(sparse.favorite) << text;
        EXPECT_EQ(sparse.size, 0) << text;
        EXPECT_FALSE(sparse.id) << text;
    }
}

TEST(Reader, StillFailsOnAWrongTypeInALenientRecord) {
    EXPECT_EQ(readBadly<Sparse>(R"({"size":"1"})").kind, Kind::typeMismatch);
    EXPECT_EQ(readBadly<Sparse>(R"({"favorite":0})").kind, Kind::typeMismatch);
}

// ---- types

struct WrongType {
    const char* text;
    const char* subject;
    const char* path;
    const char* detail;
};

class WrongTypes : public testing::TestWithParam<WrongType> {};

TEST_P(WrongTypes, FailTheRecord) {
    const auto& [text, subject, path, detail] = GetParam();
    const auto error = readBadly<Everything>(text, DecodingMode::overlay);
    EXPECT_EQ(error.kind, Kind::typeMismatch);
    EXPECT_EQ(error.subject, subject);
    EXPECT_EQ(error.path, path);
    EXPECT_EQ(error.detail, detail);
}

INSTANTIATE_TEST_SUITE_P(
    Reader, WrongTypes,
    testing::Values(
        WrongType{R"({"text":1})", "string", "text", "found the number 1"},
        WrongType{R"({"text":true})", "string", "text", "found a boolean"},
        WrongType{R"({"maybeText":["a"]})", "string", "maybeText", "found an array"},
        WrongType{R"({"integer":"1"})", "int64", "integer", "found a string"},
        WrongType{R"({"integer":true})", "int64", "integer", "found a boolean"},
        WrongType{R"({"integer":1.5})", "int64", "integer", "found the number 1.5"},
        WrongType{R"({"maybeInteger":1e400})", "int64", "maybeInteger", "found the number 1e400"},
        WrongType{R"({"integer":9223372036854775808})", "int64", "integer",
                  "found the number 9223372036854775808"},
        WrongType{R"({"small":-1})", "uint32", "small", "found the number -1"},
        WrongType{R"({"maybeSmall":4294967296})", "uint32", "maybeSmall", "found the number 4294967296"},
        WrongType{R"({"small":"1"})", "uint32", "small", "found a string"},
        WrongType{R"({"small":0.5})", "uint32", "small", "found the number 0.5"},
        WrongType{R"({"real":"1"})", "double", "real", "found a string"},
        WrongType{R"({"maybeReal":1e400})", "double", "maybeReal", "found the number 1e400"},
        WrongType{R"({"real":false})", "double", "real", "found a boolean"},
        WrongType{R"({"truth":1})", "bool", "truth", "found the number 1"},
        WrongType{R"({"maybeTruth":"true"})", "bool", "maybeTruth", "found a string"},
        WrongType{R"({"leaf":[]})", "Leaf", "leaf", "found an array"},
        WrongType{R"({"maybeLeaf":"x"})", "Leaf", "maybeLeaf", "found a string"},
        WrongType{R"({"sharedLeaf":1})", "Leaf", "sharedLeaf", "found the number 1"},
        WrongType{R"({"texts":{}})", "array", "texts", "found an object"},
        WrongType{R"({"texts":["a",null]})", "string", "texts[1]", "found null"},
        WrongType{R"({"maybeMatrix":[[1],[2,"3"]]})", "double", "maybeMatrix[1][1]", "found a string"},
        WrongType{R"({"labels":[]})", "map", "labels", "found an array"},
        WrongType{R"({"labels":{"a":"b","c":1}})", "string", "labels.c", "found the number 1"},
        WrongType{R"({"properties":[1]})", "map", "properties", "found an array"},
        WrongType{R"({"properties":{"a":[{"b":1e999}]}})", "JSONValue", "properties.a[0].b",
                  "Unsupported type"},
        WrongType{R"({"embedded":{}})", "string", "embedded", "found an object"},
        WrongType{R"({"document":1})", "string", "document", "found the number 1"},
        WrongType{R"([])", "Everything", "", "found an array"},
        WrongType{R"("x")", "Everything", "", "found a string"},
        WrongType{R"(null)", "Everything", "", "found null"}));

TEST(Reader, ReadsATextAsItsCase) {
    const auto lamp = readWell<Lamp>(R"({"colour":"GREEN","before":"\u0052ED"})");
    EXPECT_EQ(lamp.colour, Lamp::Colour::green);
    EXPECT_EQ(lamp.before, Lamp::Colour::red);
    EXPECT_EQ(readWell<Lamp>(R"({"colour":"RED","before":null})").before, std::nullopt);
}

TEST(Reader, FailsOnATextThatIsNoCase) {
    for (const auto* text : {"BLUE", "red", "RE", "REDS", ""}) {
        const auto error = readBadly<Lamp>(std::string(R"({"colour":"RED","before":")") + text + "\"}");
        EXPECT_EQ(error.description(), "data corrupted at before (none of RED, GREEN)") << text;
    }
    EXPECT_EQ(readBadly<Lamp>(R"({"colour":"BLUE"})").path, "colour");
}

TEST(Reader, FailsOnACaseThatIsNoText) {
    const auto error = readBadly<Lamp>(R"({"colour":1})");
    EXPECT_EQ(error.description(), "type mismatch: string at colour (found the number 1)");
    EXPECT_EQ(readBadly<Lamp>("{}").kind, Kind::keyNotFound);
    EXPECT_EQ(readBadly<Lamp>(R"({"colour":null})").kind, Kind::valueNotFound);
}

TEST(Reader, ReadsANumberAsItsCase) {
    using State = Valve::State;
    const auto valve = readWell<Valve>(R"({"state":1,"before":7.0})");
    EXPECT_EQ(valve.state, State::open);
    EXPECT_EQ(valve.before, State::stuck);
    EXPECT_EQ(readWell<Valve>(R"({"state":0,"before":null})").before, std::nullopt);
    EXPECT_EQ(readWell<Valve>(R"({"state":0})").state, State::shut);
}

TEST(Reader, ReadsANumberThatIsNoCaseAsUnknown) {
    for (const char* number :
         {"2", "6", "8", "-1", "-3", "4294967296", "4294967297", "-9223372036854775808"}) {
        const auto valve = readWell<Valve>(std::string(R"({"state":1,"before":)") + number + "}");
        EXPECT_EQ(valve.before, Valve::State::unknown) << number;
    }
}

TEST(Reader, FailsOnACaseThatIsNoInteger) {
    const auto error = readBadly<Valve>(R"({"state":"1"})");
    EXPECT_EQ(error.description(), "type mismatch: int64 at state (found a string)");
    for (const char* value : {"1.5", "true", "9223372036854775808", "[1]", "{}"})
        EXPECT_EQ(readBadly<Valve>(std::string(R"({"state":)") + value + "}").kind, Kind::typeMismatch)
            << value;
    EXPECT_EQ(readBadly<Valve>("{}").description(), "key not found: state (Valve cannot be without it)");
    EXPECT_EQ(readBadly<Valve>(R"({"state":null})").description(),
              "value not found: int64 at state (found null)");
}

TEST(Reader, FailsWhenATextStandsForANumber) {
    EXPECT_EQ(readBadly<Page>(R"({"pageSize":"10"})").kind, Kind::typeMismatch);
}

// ---- numbers

TEST(Reader, TakesAnIntegerHoweverItIsSpelled) {
    const auto read = [](const std::string& number) {
        return readWell<Page>("{\"pageSize\":" + number + "}").pageSize;
    };
    EXPECT_EQ(read("1.0"), 1);
    EXPECT_EQ(read("1e3"), 1000);
    EXPECT_EQ(read("-0"), 0);
    EXPECT_EQ(read("0E-5"), 0);
    EXPECT_EQ(read("12500e-2"), 125);
    EXPECT_EQ(read("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(read("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(read("9223372036854775807.000"), std::numeric_limits<std::int64_t>::max());
}

TEST(Reader, TakesDoublesExactly) {
    const auto read = [](const std::string& number) {
        return *readWell<Everything>("{\"maybeReal\":" + number + "}", DecodingMode::overlay).maybeReal;
    };
    EXPECT_EQ(read("0.1"), 0.1);
    EXPECT_EQ(read("5"), 5.0);
    EXPECT_EQ(read("123456789012345678901234567890"), 123456789012345678901234567890.0);
    EXPECT_EQ(read("2.2250738585072014e-308"), std::numeric_limits<double>::min());
    EXPECT_EQ(read("1.7976931348623157E+308"), std::numeric_limits<double>::max());
    EXPECT_EQ(read("1e-400"), 0.0);
}

// ---- strings

TEST(Reader, TakesTextAsItIs) {
    const auto read = [](const std::string& text) {
        return *readWell<Leaf>("{\"size\":0,\"name\":\"" + text + "\"}").name;
    };
    EXPECT_EQ(read(""), "");
    EXPECT_EQ(read("é😀\u007F"), "é😀\u007F");
    EXPECT_EQ(read(R"(\"\\\/\b\f\n\r\t)"), "\"\\/\b\f\n\r\t");
    EXPECT_EQ(read(R"(\u00e9\uD83D\ude00)"), "é😀");
    EXPECT_EQ(read(R"(a\u0000b)"), std::string("a\0b", 3));
    EXPECT_EQ(read(R"(\\\")"), "\\\"");
}

TEST(Reader, TakesAHugeText) {
    const std::string huge(20 << 20, 'x');
    EXPECT_EQ(readWell<Leaf>("{\"size\":0,\"name\":\"" + huge + "\"}").name, huge);
    EXPECT_EQ(readWell<Leaf>("{\"size\":0,\"name\":\"" + huge + "\\n\"}").name, huge + "\n");
    EXPECT_EQ(readWell<Leaf>("{\"" + huge + "\":1,\"size\":3}").size, 3);
}

TEST(Reader, TakesSpaceWhereJSONAllowsIt) {
    const auto leaf = readWell<Leaf>("\r\n\t { \"size\" \n:\t1 \r, \"name\" : \"n\"\t } \n");
    EXPECT_EQ(leaf, (Leaf{1, "n"}));
}

// ---- broken texts

class BrokenTexts : public testing::TestWithParam<std::string> {};

TEST_P(BrokenTexts, AreCorruptedData) {
    for (const auto mode : {DecodingMode::strict, DecodingMode::overlay}) {
        const auto error = readBadly<Tree>(GetParam(), mode);
        EXPECT_EQ(error.kind, Kind::dataCorrupted) << error.description();
        EXPECT_FALSE(error.detail.empty());
        EXPECT_EQ(error.subject, "");
    }
}

std::vector<std::string> brokenTexts() {
    using namespace std::string_literals;
    return {
        "",
        " \n",
        "{",
        "}",
        "{}}",
        "{} {}",
        "{},",
        "{}x",
        "{}\0"s,
        "\xEF\xBB\xBF{}",
        "tru",
        "nul",
        "1 2",
        "1],[2",
        R"({"code":1)",
        R"({"leaf":{"size":1})",
        R"({"code":1,})",
        R"({,"code":1})",
        R"({"code" 1})",
        R"({"code"})",
        R"({"code":})",
        R"({code:1})",
        R"({'code':1})",
        R"({"code":1 "msg":"x"})",
        R"({"files":[{"size":1},]})",
        R"({"files":[,{"size":1}]})",
        R"({"files":[{"size":1} {"size":2}]})",
        R"({"files":[{"size":1}})",
        R"({"files":[}})",
        R"({"code":1])",
        R"({"msg":"a})",
        R"({"msg":"a":1})",
        // numbers
        R"({"code":01})",
        R"({"code":+1})",
        R"({"code":1.})",
        R"({"code":.5})",
        R"({"code":1e})",
        R"({"code":-})",
        R"({"code":0x10})",
        R"({"code":1_0})",
        R"({"code":NaN})",
        R"({"code":1.0.0})",
        // words
        R"({"code":nul})",
        R"({"code":nulls})",
        R"({"x":tru})",
        R"({"x":falsey})",
        R"({"x":True})",
        // strings
        R"({"msg":"\q"})",
        R"({"msg":"\u12"})",
        R"({"msg":"\u12G4"})",
        "{\"msg\":\"a\nb\"}",
        "{\"msg\":\"a\x01\"}",
        R"({"msg":"\ud800"})",
        R"({"msg":"\udc00"})",
        R"({"msg":"\ud800\ud800"})",
        R"({"msg":"\ud83dx"})",
        R"({"\ud800":1})",
        R"({"\q":1})",
        "{\"msg\":\"\xFF\"}",
        "{\"msg\":\"\xC3\"}",
        "{\"msg\":\"\xC0\xAF\"}",
        "{\"msg\":\"\xED\xA0\x80\"}",
        "{\"\xC3(\":1}",
        // inside what nobody wants
        R"({"x":[1,2)",
        R"({"x":[1 2]})",
        R"({"x":{"a"}})",
        R"({"x":{"a":"b":1}})",
        R"({"x":[}]})",
        R"({"x":{]})",
        R"({"x":01})",
        R"({"x":"\q"})",
        R"({"x":{"\q":1}})",
        R"({"x":"\ud800"})",
        R"({"x":[1,]})",
        R"({"x":{"a":1,}})",
        R"({"x":-})",
        // together with a wrong type before it
        R"({"code":"1","x":[})",
        R"({"code":"1"} x)",
        R"({"msg":1,"code":01})",
        R"([1,2)",
    };
}

INSTANTIATE_TEST_SUITE_P(Reader, BrokenTexts, testing::ValuesIn(brokenTexts()));

TEST(Reader, NamesThePlaceOfABrokenValue) {
    const auto error = readBadly<Tree>(R"({"files":[{"size":1},{"size":01}]})");
    EXPECT_EQ(error.path, "files[1].size");
    EXPECT_EQ(readBadly<Tree>(R"({"unknown":{"a":[0,"\q"]}})").path, "unknown.a[1]");
}

TEST(Reader, CutsALongKeyInAPathBetweenTwoCharacters) {
    std::string key = "x";
    for (int count = 0; count < 100; ++count) key += "é";
    const auto error = readBadly<Tree>("{\"" + key + "\":01}");
    EXPECT_EQ(error.path, key.substr(0, 63) + "...");
}

TEST(Reader, GivesTheSameErrorForTheSameText) {
    for (const auto& text : brokenTexts()) {
        EXPECT_EQ(readBadly<Tree>(text).description(), readBadly<Tree>(text).description());
    }
}

// ---- limits

TEST(Reader, ReadsFiveHundredAndTwelveLevels) {
    readWell<Leaf>("{\"size\":1,\"x\":" + nested("[", "]", 511) + "}");
    readWell<Everything>("{\"any\":" + nested("[", "]", 511) + "}", DecodingMode::overlay);
    const auto error = readBadly<Leaf>("{\"size\":1,\"x\":" + nested("[", "]", 512) + "}");
    EXPECT_EQ(error.detail, "nested deeper than 512 levels");
    EXPECT_EQ(readBadly<Everything>("{\"any\":" + nested("[", "]", 512) + "}", DecodingMode::overlay).detail,
              "nested deeper than 512 levels");
}

TEST(Reader, RefusesAHundredThousandLevels) {
    constexpr int levels = 100'000;
    const std::string inner = nested("[", "]", levels);
    for (const auto& text :
         {inner, "{\"x\":" + inner + "}", "{\"trees\":" + inner + "}", std::string(levels, '['),
          nested("{\"x\":", "}", levels), nested("{\"trees\":[", "]}", levels)}) {
        EXPECT_EQ(readBadly<Tree>(text).kind, Kind::dataCorrupted);
    }
    EXPECT_EQ(readBadly<Everything>("{\"any\":" + inner + "}").kind, Kind::dataCorrupted);
}

TEST(Reader, EndsAListOfEmptyRecordsBeforeItFillsTheMemory) {
    std::string text = "{\"trees\":[";
    constexpr std::size_t size = 100'000'000;
    text.reserve(size + 100);
    while (text.size() < size) text += "{},";
    text.back() = ']';
    text += '}';
    const auto error = readBadly<Tree>(std::move(text));
    EXPECT_EQ(error.kind, Kind::dataCorrupted);
    EXPECT_EQ(error.detail, "the record would take far more memory than its text");
    EXPECT_TRUE(error.path.starts_with("trees[")) << error.path;
}

TEST(Reader, EndsAnArrayOfSmallValuesBeforeItFillsTheMemory) {
    std::string text = "{\"any\":[";
    while (text.size() < 10'000'000) text += "0,";
    text.back() = ']';
    text += '}';
    EXPECT_EQ(readBadly<Everything>(std::move(text), DecodingMode::overlay).detail,
              "the record would take far more memory than its text");
}

TEST(Reader, TakesAPageOfAHundredThousandRecords) {
    std::string text = "{\"files\":[";
    for (int count = 0; count < 100'000; ++count) text += R"({"size":1,"name":"some name or other"},)";
    text.back() = ']';
    EXPECT_EQ(readWell<Tree>(text + "}").files->size(), 100'000U);
}

}  // namespace
}  // namespace baseapi::sample
