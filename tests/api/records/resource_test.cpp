#include "baseapi/api/records/resource.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(ResourceRecords, ResourceIsItsWireText) {
    Resource record;
    record.id = "id-1";
    record.hash = "hash-1";
    record.length = 5368709120;
    record.sha256 = "sha256-1";
    record.type = 12;
    record.state = 13;
    record.sliceSize = 14;
    record.hfek = "hfek-1";
    record.iv = "iv-1";
    record.createdTime = "createdTime-1";
    record.modifiedTime = "modifiedTime-1";
    record.object = SliceObject{.id = "id-1"};
    record.attributes = EmbeddedMap{{{"a", JSONValue{std::int64_t{1}}}}};
    record.properties = std::map<std::string, std::string>{{"k", "v"}};
    expectWireText(record,
                   R"({"id":"id-1","hash":"hash-1","length":5368709120,"sha256":"sha256-1","type":12,)"
                   R"("state":13,"sliceSize":14,"hfek":"hfek-1","iv":"iv-1","createdTime":"createdTime-1",)"
                   R"("modifiedTime":"modifiedTime-1","object":{"id":"id-1"},"attributes":"eyJhIjoxfQ==",)"
                   R"("properties":{"k":"v"}})");
}

TEST(ResourceRecords, FileListResourceIsItsWireText) {
    FileListResource record;
    record.object = FileListSliceObject{.id = "id-1"};
    expectWireText(record, R"({"object":{"id":"id-1"}})");
}

TEST(ResourceRecords, ResourceMetadataIsItsWireText) {
    ResourceMetadata record;
    record.id = "id-1";
    record.length = 5368709120;
    record.sha256 = "sha256-1";
    record.object = SliceObjectMetadata{.id = "id-1"};
    expectWireText(record, R"({"id":"id-1","length":5368709120,"sha256":"sha256-1","object":{"id":"id-1"}})");
}

TEST(ResourceRecords, TheKeyOfTheSliceObjectIsObject) {
    EXPECT_FALSE(decoded<FileListResource>(R"({"obj":{"id":"1"}})").object);
    EXPECT_EQ(decoded<FileListResource>(R"({"object":{"id":"1"}})").object->id, "1");
    EXPECT_EQ(decoded<Resource>(R"({"object":{"id":"1"}})").object->id, "1");
    EXPECT_EQ(decoded<ResourceMetadata>(R"({"object":{"id":"1"}})").object->id, "1");
}

TEST(ResourceRecords, AttributesThatCannotBeParsedFail) {
    expectFailure<Resource>(R"({"attributes":"*"})", DecodingError::Kind::dataCorrupted, "attributes");
    expectFailure<Resource>(R"({"attributes":"eA=="})", DecodingError::Kind::dataCorrupted, "attributes");
}

TEST(ResourceRecords, AttributesThatAreNoObjectAreAbsent) {
    EXPECT_FALSE(decoded<Resource>(R"({"attributes":"WzFd"})").attributes);
}

}  // namespace
}  // namespace baseapi
