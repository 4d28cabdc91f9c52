#include "baseapi/core/preferences.h"

#include <gmock/gmock.h>

#include <limits>

#include "baseapi/json/define_codec.h"
#include "baseapi/platform/platform.h"
#include "tests/support/test_platform.h"

namespace baseapi {

struct Pet {
    std::string name;
    std::optional<std::int64_t> age;
    BASEAPI_FIELDS(Pet, name, age)
};
struct Shop {
    std::vector<Pet> pets;
    BASEAPI_FIELDS(Shop, pets)
};

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PreferencesTest : public testing::Test {
  protected:
    PreferencesTest() { preferences.clear(); }

    Preferences& preferences = Preferences::shared();
};

TEST_F(PreferencesTest, AreOneInstance) {
    EXPECT_EQ(&Preferences::shared(), &Preferences::shared());
}

TEST_F(PreferencesTest, GiveBackATextOrTheDefault) {
    EXPECT_EQ(preferences.getString("missing", "x"), "x");
    preferences.putString("backup_lock_id_100", "lock");
    EXPECT_EQ(preferences.getString("backup_lock_id_100", ""), "lock");
    preferences.putString("backup_lock_id_100", "");
    EXPECT_EQ(preferences.getString("backup_lock_id_100", "x"), "");
}

TEST_F(PreferencesTest, RemoveTheKeyOfAnAbsentText) {
    preferences.putString("key", "text");
    preferences.putString("key", std::nullopt);
    EXPECT_FALSE(preferences.contains("key"));
    EXPECT_EQ(preferences.getString("key", "x"), "x");
}

TEST_F(PreferencesTest, IgnoreTheDefaultsOfNumbersAndBooleans) {
    EXPECT_EQ(preferences.getInt("missing", 7), 0);
    EXPECT_EQ(preferences.getBool("missing", true), false);
    EXPECT_EQ(preferences.getDouble("missing", 7.5), 0);
    EXPECT_EQ(preferences.getFloat("missing", 7.5F), 0);
}

TEST_F(PreferencesTest, GiveBackNumbersAndBooleans) {
    preferences.putInt("int", std::numeric_limits<std::int64_t>::min());
    preferences.putBool("bool", true);
    preferences.putDouble("double", 0.1);
    preferences.putFloat("float", 0.1F);
    EXPECT_EQ(preferences.getInt("int", 7), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(preferences.getBool("bool", false), true);
    EXPECT_EQ(preferences.getDouble("double", 0), 0.1);
    EXPECT_EQ(preferences.getFloat("float", 0), 0.1F);
}

TEST_F(PreferencesTest, TellAStoredZeroFromAMissingKeyByContains) {
    preferences.putInt("zero", 0);
    EXPECT_EQ(preferences.getInt("zero", 7), preferences.getInt("missing", 7));
    EXPECT_TRUE(preferences.contains("zero"));
    EXPECT_FALSE(preferences.contains("missing"));
}

TEST_F(PreferencesTest, ReplaceAValueOfAnotherType) {
    preferences.putInt("key", 5);
    preferences.putString("key", "text");
    EXPECT_EQ(preferences.getString("key", ""), "text");
    EXPECT_EQ(preferences.getInt("key", 7), 0);
}

TEST_F(PreferencesTest, GiveBackAnArrayOfTheAskedType) {
    const std::vector<std::string> texts{"a", "", "你"};
    preferences.putArray("texts", texts);
    preferences.putArray("numbers", std::vector<std::int64_t>{1, -2});
    preferences.putArray("doubles", std::vector<double>{1, 0.5});
    preferences.putArray("flags", std::vector<bool>{true, false});
    EXPECT_EQ(preferences.getArray<std::string>("texts", {}), texts);
    EXPECT_THAT(preferences.getArray<std::int64_t>("numbers", {}), ElementsAre(1, -2));
    EXPECT_THAT(preferences.getArray<double>("doubles", {}), ElementsAre(1, 0.5));
    EXPECT_THAT(preferences.getArray<bool>("flags", {}), ElementsAre(true, false));
}

TEST_F(PreferencesTest, GiveTheDefaultForAnArrayOfAnotherTypeOrNone) {
    preferences.putArray("texts", std::vector<std::string>{"1", "2"});
    preferences.putArray("mixed", JSONValue::Array{{std::int64_t{1}}, {std::string("2")}});
    EXPECT_THAT(preferences.getArray<std::int64_t>("texts", {7}), ElementsAre(7));
    EXPECT_THAT(preferences.getArray<std::int64_t>("mixed", {7}), ElementsAre(7));
    EXPECT_THAT(preferences.getArray<std::string>("mixed", {"x"}), ElementsAre("x"));
    EXPECT_THAT(preferences.getArray<std::string>("missing", {"x"}), ElementsAre("x"));
    EXPECT_EQ(preferences.getArray<JSONValue>("mixed", {}).size(), 2U);
}

TEST_F(PreferencesTest, KeepAnEmptyArrayWhichIsOneOfAnyType) {
    preferences.putArray("empty", std::vector<std::string>{});
    EXPECT_TRUE(preferences.contains("empty"));
    EXPECT_THAT(preferences.getArray<std::int64_t>("empty", {7}), IsEmpty());
}

TEST_F(PreferencesTest, GiveBackAMapOfAnyValues) {
    const JSONValue::Map map{{"text", {std::string("a")}},
                             {"number", {std::int64_t{5}}},
                             {"nothing", {nullptr}},
                             {"inner", {JSONValue::Map{{"list", {JSONValue::Array{{0.5}, {true}}}}}}}};
    preferences.putDictionary("map", map);
    EXPECT_EQ(preferences.getDictionary("map", {}), map);
    EXPECT_EQ(preferences.getDictionary("missing", map), map);
    preferences.putArray("array", std::vector<bool>{true});
    EXPECT_EQ(preferences.getDictionary("array", map), map);
}

TEST_F(PreferencesTest, DoNotStoreAMapThatJSONCannotHold) {
    preferences.putDictionary("map", {{"odd", {std::any(5)}}});
    EXPECT_FALSE(preferences.contains("map"));
}

TEST_F(PreferencesTest, GiveBackAnEqualRecord) {
    const Shop shop{{{"cat", 3}, {"dog", std::nullopt}}};
    preferences.putObject("shop", shop);
    EXPECT_EQ(preferences.getObject<Shop>("shop"), shop);
}

TEST_F(PreferencesTest, GiveNothingForARecordThatDoesNotDecodeOrIsNotThere) {
    preferences.putObject("pet", Pet{"cat", 3});
    EXPECT_FALSE(preferences.getObject<Shop>("pet"));
    EXPECT_FALSE(preferences.getObject<Shop>("missing"));
    platform().store->put("bytes", KeyValueStore::Bytes{"no JSON"});
    EXPECT_FALSE(preferences.getObject<Pet>("bytes"));
    EXPECT_TRUE(preferences.contains("bytes"));
}

TEST_F(PreferencesTest, DoNotStoreARecordThatJSONCannotHold) {
    preferences.putObject("pet", Pet{"\xff", std::nullopt});
    EXPECT_FALSE(preferences.contains("pet"));
}

TEST_F(PreferencesTest, RemoveOneKeyOrAll) {
    preferences.putInt("a", 1);
    preferences.putInt("b", 2);
    preferences.remove("a");
    preferences.remove("missing");
    EXPECT_FALSE(preferences.contains("a"));
    EXPECT_TRUE(preferences.contains("b"));
    preferences.sync();
    preferences.clear();
    EXPECT_FALSE(preferences.contains("b"));
}

}  // namespace
}  // namespace baseapi
