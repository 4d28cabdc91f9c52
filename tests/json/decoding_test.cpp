#include <gtest/gtest.h>

#include "tests/json/sample_records.h"

namespace baseapi::sample {
namespace {

using Kind = DecodingError::Kind;

template <class T>
std::optional<DecodingError> read(std::string text, T& record) {
    return decode(text, record);
}

TEST(Decoding, ReadsARecordWithItsBaseAndItsNestedRecords) {
    Tree tree;
    const auto error = read(R"({"code": 7, "files": [{"size": 1}, {"size": 2, "name": "b"}], "msg": "m",
                               "trees": [{"leaf": {"size": 3}}]})",
                            tree);
    ASSERT_FALSE(error) << error->description();
    EXPECT_EQ(tree.code, 7);
    EXPECT_EQ(tree.msg, "m");
    ASSERT_EQ(tree.files->size(), 2U);
    EXPECT_EQ(tree.files->at(1).name, "b");
    EXPECT_EQ(tree.trees->at(0).leaf->size, 3);
}

TEST(Decoding, NamesThePlaceOfAFailure) {
    Tree tree;
    const auto error = read(R"({"files": [{"size": 1}, {"size": "2"}]})", tree);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, Kind::typeMismatch);
    EXPECT_EQ(error->path, "files[1].size");
    EXPECT_EQ(error->subject, "int64");
    EXPECT_EQ(error->description(), "type mismatch: int64 at files[1].size (found a string)");
}

}  // namespace
}  // namespace baseapi::sample
