#include <gtest/gtest.h>

#include <limits>

#include "tests/json/reading.h"

namespace baseapi::sample {
namespace {

TEST(Writer, LeavesOutWhatIsAbsent) {
    EXPECT_EQ(encode(Tree{}), "{}");
    EXPECT_EQ(encode(Page{}), R"({"pageSize":0})");
}

TEST(Writer, WritesTheDefaultsOfALenientRecord) {
    EXPECT_EQ(encode(Sparse{}), R"({"favorite":false,"size":0})");
}

TEST(Writer, PutsTheKeysOfTheBaseBehindItsOwnInOneObject) {
    Tree tree;
    tree.code = 7;
    tree.msg = "m";
    tree.files = {{1, "a"}, {2, std::nullopt}};
    EXPECT_EQ(encode(tree), R"({"files":[{"size":1,"name":"a"},{"size":2}],"code":7,"msg":"m"})");
}

TEST(Writer, WritesEmptyContainers) {
    Tree tree;
    tree.files.emplace();
    tree.trees = {Tree{}};
    EXPECT_EQ(encode(tree), R"({"files":[],"trees":[{}]})");
}

TEST(Writer, WritesEveryKindOfField) {
    Everything all;
    all.text = "t";
    all.small = 4294967295;
    all.real = -1.5;
    all.truth = true;
    all.texts = {"a", ""};
    all.labels = {{"k", "v"}, {"l", ""}};
    all.device = {9};
    all.maybeMatrix = {{1.5}, {}};
    all.sharedLeaf = Leaf{3, std::nullopt};
    all.sharedLeaves = std::vector<Leaf>{{4, "x"}};
    all.maybeAny = JSONValue{nullptr};
    EXPECT_EQ(encode(all),
              R"({"text":"t","integer":0,"small":4294967295,"real":-1.5,"truth":true,"leaf":{"size":0},)"
              R"("texts":["a",""],"labels":{"k":"v","l":""},"any":null,"device":9,"attributes":{},)"
              R"("maybeMatrix":[[1.5],[]],"maybeAny":null,"sharedLeaf":{"size":3},)"
              R"("sharedLeaves":[{"size":4,"name":"x"}]})");
}

TEST(Writer, WritesACaseAsItsText) {
    EXPECT_EQ(encode(Lamp{}), R"({"colour":"RED"})");
    EXPECT_EQ(encode(Lamp{Lamp::Colour::green, Lamp::Colour::red}), R"({"colour":"GREEN","before":"RED"})");
}

TEST(Writer, RefusesWhatIsNoCase) {
    for (const int number : {2, -1}) {
        Lamp lamp;
        lamp.before = static_cast<Lamp::Colour>(number);
        std::string text;
        const auto error = encode(codecOf<Lamp>(), &lamp, text);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->description(), "invalid value at before (no case of the enumeration)");
    }
}

TEST(Writer, WritesACaseAsItsNumber) {
    EXPECT_EQ(encode(Valve{}), R"({"state":-3})");
    EXPECT_EQ(encode(Valve{Valve::State::open, Valve::State::stuck}), R"({"state":1,"before":7})");
}

TEST(Writer, WritesTheEndsOfTheIntegers) {
    EXPECT_EQ(encode(Page{std::numeric_limits<std::int64_t>::min(), {}}),
              R"({"pageSize":-9223372036854775808})");
    EXPECT_EQ(encode(Page{std::numeric_limits<std::int64_t>::max(), {}}),
              R"({"pageSize":9223372036854775807})");
}

TEST(Writer, EscapesOnlyWhatJSONNeeds) {
    const auto write = [](std::string name) { return encode(Leaf{0, std::move(name)}).value_or("nothing"); };
    EXPECT_EQ(write("\"\\\b\f\n\r\t"), R"({"size":0,"name":"\"\\\b\f\n\r\t"})");
    EXPECT_EQ(write(std::string("a\0\x1F"
                                "b",
                                4)),
              R"({"size":0,"name":"a\u0000\u001fb"})");
    EXPECT_EQ(write("a/b\x7Fé😀<>&'"), "{\"size\":0,\"name\":\"a/b\x7Fé😀<>&'\"}");
    for (std::size_t length = 0; length < 40; ++length) {
        const std::string plain(length, 'x');
        EXPECT_EQ(write(plain + '\n' + plain), "{\"size\":0,\"name\":\"" + plain + "\\n" + plain + "\"}");
    }
}

TEST(Writer, EscapesKeysToo) {
    Everything all;
    all.labels = {{"a\"b", "c"}};
    EXPECT_NE(encode(all)->find(R"("labels":{"a\"b":"c"})"), std::string::npos);
}

struct Refusal {
    void (*spoil)(Everything&);
    const char* path;
    const char* detail;
};

class Refusals : public testing::TestWithParam<Refusal> {};

TEST_P(Refusals, LeaveTheTextAsItWas) {
    Everything all;
    GetParam().spoil(all);
    std::string text = "before";
    const auto error = encode(codecOf<Everything>(), &all, text);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->path, GetParam().path);
    EXPECT_EQ(error->detail, GetParam().detail);
    EXPECT_EQ(error->description(),
              std::string("invalid value at ") + GetParam().path + " (" + GetParam().detail + ")");
    EXPECT_EQ(text, "before");
    EXPECT_FALSE(encode(all));
}

INSTANTIATE_TEST_SUITE_P(
    Writer, Refusals,
    testing::Values(Refusal{[](Everything& all) { all.text = "\xFF"; }, "text", "text that is not UTF-8"},
                    Refusal{[](Everything& all) {
                                all.texts = {"a", "\xED\xA0\x80"};
                            },
                            "texts[1]", "text that is not UTF-8"},
                    Refusal{[](Everything& all) {
                                all.labels = {{"k", "\xC3"}};
                            },
                            "labels.k", "text that is not UTF-8"},
                    Refusal{[](Everything& all) {
                                all.maybeLeaves = {{1, "\x80"}};
                            },
                            "maybeLeaves[0].name", "text that is not UTF-8"},
                    Refusal{[](Everything& all) { all.real = std::numeric_limits<double>::infinity(); },
                            "real", "a number that is not finite"},
                    Refusal{[](Everything& all) { all.maybeReal = std::numeric_limits<double>::quiet_NaN(); },
                            "maybeReal", "a number that is not finite"},
                    Refusal{[](Everything& all) { all.any = {std::any(1)}; }, "any", "Unsupported type"},
                    Refusal{[](Everything& all) {
                                all.properties = AnyMap{{{"a", {JSONValue::Array{{1.5}, {std::any(1)}}}}}};
                            },
                            "properties.a[1]", "Unsupported type"},
                    Refusal{[](Everything& all) {
                                all.embedded = EmbeddedMap{{{"a", {std::any(1)}}}};
                            },
                            "embedded.a", "Unsupported type"}));

TEST(Writer, AppendsToTheText) {
    std::string text = "body: ";
    const Page page{1, "x"};
    ASSERT_FALSE(encode(codecOf<Page>(), &page, text));
    EXPECT_EQ(text, R"(body: {"pageSize":1,"pageCursor":"x"})");
}

TEST(Writer, TakesNoMoreMemoryForALongFirstElementThanItsText) {
    Everything all;
    all.texts.resize(100'000);
    all.texts.front().assign(1'000'000, 'x');
    const auto text = encode(all);
    ASSERT_TRUE(text.has_value());
    EXPECT_LT(text->capacity(), 4'000'000u);
}

TEST(Writer, RefusesADeepValueInsteadOfRunningOutOfStack) {
    JSONValue value;
    for (int level = 0; level < 600; ++level) value = {JSONValue::Array{std::move(value)}};
    EXPECT_FALSE(writeJSON(value));
}

}  // namespace
}  // namespace baseapi::sample
