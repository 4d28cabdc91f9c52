#include "baseapi/api/records/slice_object.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(SliceObjectRecords, SliceObjectIsItsWireText) {
    SliceObject record;
    record.id = "id-1";
    record.number = 11;
    record.start = 4294967296;
    record.sha256 = "sha256-1";
    record.length = 5368709120;
    record.bucket = "bucket-1";
    record.createdTime = "createdTime-1";
    record.modifiedTime = "modifiedTime-1";
    record.uploadUrl = EndpointURL{.url = "url-1"};
    record.downloadUrl = EndpointURL{.url = "url-1"};
    record.uploadId = "uploadId-1";
    record.attributes = FlatMap{{{"a", JSONValue{true}}, {"b", JSONValue{1.5}}}};
    record.properties = std::map<std::string, std::string>{{"k", "v"}};
    record.images = std::vector<Images>{Images{.process = "process-1"}};
    expectWireText(record,
                   R"({"id":"id-1","number":11,"start":4294967296,"sha256":"sha256-1","length":5368709120,)"
                   R"("bucket":"bucket-1","createdTime":"createdTime-1","modifiedTime":"modifiedTime-1",)"
                   R"("uploadUrl":{"url":"url-1"},"downloadUrl":{"url":"url-1"},"uploadId":"uploadId-1",)"
                   R"("attributes":{"a":true,"b":1.5},"properties":{"k":"v"},)"
                   R"("images":[{"process":"process-1"}]})");
}

TEST(SliceObjectRecords, FileListSliceObjectIsItsWireText) {
    FileListSliceObject record;
    record.id = "id-1";
    record.start = 4294967296;
    record.downloadUrl = EndpointURLMetadata{.url = "url-1"};
    record.images = std::vector<Images>{Images{.process = "process-1"}};
    expectWireText(record, R"({"id":"id-1","start":4294967296,"downloadUrl":{"url":"url-1"},)"
                           R"("images":[{"process":"process-1"}]})");
}

TEST(SliceObjectRecords, SliceObjectMetadataIsItsWireText) {
    SliceObjectMetadata record;
    record.id = "id-1";
    record.start = 4294967296;
    record.downloadUrl = EndpointURLMetadata{.url = "url-1"};
    record.images = std::vector<Images>{Images{.process = "process-1"}};
    expectWireText(record, R"({"id":"id-1","start":4294967296,"downloadUrl":{"url":"url-1"},)"
                           R"("images":[{"process":"process-1"}]})");
}

TEST(SliceObjectRecords, AttributesThatAreNoObjectAreAbsent) {
    for (const auto* text :
         {R"({"attributes":[1]})", R"({"attributes":"a"})", R"({"attributes":null})", "{}"}) {
        EXPECT_FALSE(decoded<SliceObject>(text).attributes) << text;
    }
}

TEST(SliceObjectRecords, AttributesPassOverWhatIsNotFlat) {
    const auto attributes =
        decoded<SliceObject>(R"({"attributes":{"a":[1],"b":2,"c":null,"d":{}}})").attributes;
    ASSERT_TRUE(attributes);
    EXPECT_EQ(*attributes, (FlatMap{{{"b", JSONValue{std::int64_t{2}}}}}));
}

}  // namespace
}  // namespace baseapi
