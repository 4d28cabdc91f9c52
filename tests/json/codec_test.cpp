#include "baseapi/json/codec.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <cmath>
#include <concepts>
#include <functional>
#include <random>
#include <thread>

#include "tests/json/reading.h"

namespace baseapi::sample {
namespace {

TEST(Codec, KnowsTheNameOfItsRecord) {
    EXPECT_EQ(recordName(codecOf<Tree>()), "Tree");
    EXPECT_EQ(recordName(codecOf<Leaf>()), "Leaf");
}

TEST(Codec, LeavesTheTextAsItIs) {
    std::string text = R"({"size":1,"name":"a\nb"})";
    const std::string before = text;
    Leaf leaf;
    ASSERT_FALSE(decode(text, leaf));
    EXPECT_EQ(text, before);
}

TEST(Codec, IsUsableAgainAfterAnError) {
    readBadly<Tree>(R"({"files":[{"size":1},{"size":)");
    readBadly<Tree>(R"({"files":1})");
    EXPECT_EQ(readWell<Tree>(R"({"code":1})").code, 1);
}

TEST(Overlay, ChangesOnlyWhatTheTextHas) {
    Leaf leaf{5, "old"};
    std::string text = R"({"name":"new"})";
    ASSERT_FALSE(decode(text, leaf, DecodingMode::overlay));
    EXPECT_EQ(leaf, (Leaf{5, "new"}));
}

TEST(Overlay, MakesAValueAbsentForANull) {
    Leaf leaf{5, "old"};
    std::string text = R"({"name":null})";
    ASSERT_FALSE(decode(text, leaf, DecodingMode::overlay));
    EXPECT_EQ(leaf, (Leaf{5, std::nullopt}));
}

TEST(Overlay, LaysARecordOverTheOneThatCannotBeAbsent) {
    Everything all;
    all.leaf = {5, "old"};
    std::string text = R"({"leaf":{"name":"new"}})";
    ASSERT_FALSE(decode(text, all, DecodingMode::overlay));
    EXPECT_EQ(all.leaf, (Leaf{5, "new"}));
}

TEST(Overlay, LetsTheMembersOfAnArrayStartFromTheirDefaults) {
    Everything all;
    all.maybeLeaves = {{1, "x"}, {2, "y"}};
    std::string text = R"({"maybeLeaves":[{"name":"new"}]})";
    ASSERT_FALSE(decode(text, all, DecodingMode::overlay));
    EXPECT_EQ(all.maybeLeaves, (std::vector<Leaf>{{0, "new"}}));
}

TEST(Overlay, StillFailsOnWrongTypesAndNulls) {
    EXPECT_EQ(readBadly<Leaf>(R"({"size":"1"})", DecodingMode::overlay).kind, Kind::typeMismatch);
    EXPECT_EQ(readBadly<Leaf>(R"({"size":null})", DecodingMode::overlay).kind, Kind::valueNotFound);
}

TEST(Overlay, StartsARecordOfGivenFieldsWithoutThem) {
    static_assert(!std::default_initializable<Ticket>);
    EXPECT_EQ(readWell<Ticket>("{}", DecodingMode::overlay).number, 0);
    EXPECT_EQ(readWell<Ticket>(R"({"number":3})", DecodingMode::overlay).number, 3);
}

TEST(Codec, ForgetsWhatARecordOfGivenFieldsHeldBefore) {
    Ticket ticket(5);
    std::string text = "{}";
    EXPECT_TRUE(decode(text, ticket));
    EXPECT_EQ(ticket.number, 0);
}

// ---- what is written is read back equal

class Random {
  public:
    explicit Random(unsigned seed) : engine_(seed) {}

    std::size_t below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(engine_);
    }
    bool truth() { return below(2) == 1; }
    std::int64_t integer() {
        const auto bits = static_cast<std::int64_t>(engine_());
        return bits >> below(64);
    }
    double real() {
        return std::uniform_real_distribution<double>(-1, 1)(engine_) * std::pow(10.0, below(30));
    }
    std::string text() {
        static constexpr const char* pieces[] = {"a", "\"", "\\",   "\n", "\x01", "é",
                                                 "😀", "/",  "size", " ",  "\x7F", "{}"};
        std::string text;
        for (std::size_t count = below(40); count > 0; --count) text += pieces[below(std::size(pieces))];
        if (truth()) text += '\0';
        return text;
    }
    Leaf leaf() { return {integer(), maybe(text())}; }
    std::map<std::string, std::string> labels() {
        std::map<std::string, std::string> labels;
        for (std::size_t count = below(4); count > 0; --count) labels[text()] = text();
        return labels;
    }
    JSONValue value(int depth) {
        switch (below(depth > 0 ? 7 : 5)) {
            case 0:
                return {nullptr};
            case 1:
                return {text()};
            case 2:
                return {integer()};
            case 3:
                return {std::uniform_real_distribution<double>(0.1, 0.9)(engine_)};
            case 4:
                return {truth()};
            case 5: {
                JSONValue::Array array;
                for (std::size_t count = below(4); count > 0; --count) array.push_back(value(depth - 1));
                return {std::move(array)};
            }
            default:
                return {map(depth - 1)};
        }
    }
    JSONValue::Map map(int depth) {
        JSONValue::Map map;
        for (std::size_t count = below(4); count > 0; --count) map[text()] = value(depth);
        return map;
    }
    JSONValue::Map flatMap() {
        JSONValue::Map map;
        for (std::size_t count = below(4); count > 0; --count) {
            if (auto flat = value(0); !std::holds_alternative<std::nullptr_t>(flat.value)) map[text()] = flat;
        }
        return map;
    }
    template <class T>
    std::optional<T> maybe(T value) {
        return truth() ? std::optional<T>(std::move(value)) : std::nullopt;
    }
    template <class Make>
    auto several(Make make) {
        std::vector<decltype(make())> list;
        for (std::size_t count = below(5); count > 0; --count) list.push_back(make());
        return list;
    }

    Everything everything() {
        Everything all;
        all.text = text();
        all.integer = integer();
        all.small = static_cast<std::uint32_t>(integer());
        all.real = real();
        all.truth = truth();
        all.leaf = leaf();
        all.texts = several([&] { return text(); });
        all.labels = labels();
        all.any = value(3);
        all.device = {integer()};
        all.attributes = {map(3)};
        all.maybeText = maybe(text());
        all.maybeInteger = maybe(integer());
        all.maybeSmall = maybe(static_cast<std::uint32_t>(integer()));
        all.maybeReal = maybe(real());
        all.maybeTruth = maybe(truth());
        all.maybeLeaf = maybe(leaf());
        all.maybeLeaves = maybe(several([&] { return leaf(); }));
        all.maybeIntegers = maybe(several([&] { return integer(); }));
        all.maybeMatrix = maybe(several([&] { return several([&] { return real(); }); }));
        all.maybeLabels = maybe(labels());
        if (truth()) all.maybeAny = JSONValue{text()};  // a null would come back as absent
        if (truth()) all.sharedLeaf = leaf();
        if (truth()) all.sharedLeaves = several([&] { return leaf(); });
        all.properties = maybe(AnyMap{map(3)});
        all.flat = maybe(FlatMap{flatMap()});
        all.embedded = maybe(EmbeddedMap{map(3)});
        all.document = maybe(EmbeddedDocument{value(3)});
        return all;
    }

  private:
    std::mt19937_64 engine_;
};

TEST(Codec, ReadsBackEqualWhatItWrote) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        const Everything all = Random(seed).everything();
        auto text = encode(all);
        ASSERT_TRUE(text) << seed;
        EXPECT_EQ(readWell<Everything>(*text), all) << seed << "\n" << *text;
    }
}

TEST(Codec, WritesTheSameTextOverAndOverAgain) {
    const Everything all = Random(1).everything();
    EXPECT_EQ(encode(all), encode(all));
}

// ---- threads

void runOnSmallStack(std::size_t stackSize, std::function<void()> work) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, stackSize), 0);
    pthread_t thread{};
    const auto run = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

TEST(Codec, GetsByWithASmallStackHoweverDeepTheText) {
    // Without optimisation, and the more under a sanitizer, a function's frame is several times as large.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr std::size_t stackSize = 6 << 20;
#elif defined(__OPTIMIZE__)
    constexpr std::size_t stackSize = 256 << 10;
#else
    constexpr std::size_t stackSize = 1 << 20;
#endif
    runOnSmallStack(stackSize, [] {
        for (const int levels : {250, 510, 600, 100'000}) {
            for (const char* key : {"any", "unknown", "maybeMatrix"}) {
                std::string text = "{\"" + std::string(key) + "\":" + nested("[", "]", levels) + "}";
                Everything all;
                const auto error = decode(text, all, DecodingMode::overlay);
                EXPECT_EQ(error.has_value(), levels > 511 || key == std::string("maybeMatrix"));
                if (!error) {
                    EXPECT_TRUE(encode(all));
                    EXPECT_TRUE(all == Everything(all));
                }
            }
            std::string text = nested("{\"trees\":[", "]}", levels);
            Tree tree;
            EXPECT_EQ(decode(text, tree).has_value(), levels > 256) << "each of them is two levels";
        }
    });
}

TEST(Codec, WorksOnSeveralThreadsAtOnce) {
    std::vector<std::thread> threads;
    for (unsigned first = 0; first < 4; ++first) {
        threads.emplace_back([first] {
            for (unsigned seed = first; seed < 200; seed += 4) {
                const Everything all = Random(seed).everything();
                EXPECT_EQ(readWell<Everything>(*encode(all)), all);
            }
        });
    }
    for (auto& thread : threads) thread.join();
}

}  // namespace
}  // namespace baseapi::sample
