#include "baseapi/api/records/asset.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(AssetRecords, AssetIsItsWireText) {
    Asset record;
    record.id = "id-1";
    record.versionId = "versionId-1";
    record.version = 11;
    record.mimeType = "mimeType-1";
    record.keepPolicy = 12;
    record.state = 13;
    record.createdTime = "createdTime-1";
    record.modifiedTime = "modifiedTime-1";
    record.lastModifyingUser = "lastModifyingUser-1";
    record.resource = Resource{.id = "id-1"};
    record.cipher = Cipher{.algorithm = "algorithm-1"};
    record.attributes = AnyMap{{{"a", JSONValue{nullptr}}, {"b", JSONValue{std::int64_t{2}}}}};
    record.properties = std::map<std::string, std::string>{{"k", "v"}};
    expectWireText(record, R"({"id":"id-1","versionId":"versionId-1","version":11,"mimeType":"mimeType-1",)"
                           R"("keepPolicy":12,"state":13,"createdTime":"createdTime-1",)"
                           R"("modifiedTime":"modifiedTime-1","lastModifyingUser":"lastModifyingUser-1",)"
                           R"("resource":{"id":"id-1"},"cipher":{"algorithm":"algorithm-1"},)"
                           R"("attributes":{"a":null,"b":2},"properties":{"k":"v"}})");
}

TEST(AssetRecords, FileListAssetIsItsWireText) {
    FileListAsset record;
    record.mimeType = "mimeType-1";
    record.resource = FileListResource{.object = FileListSliceObject{.id = "id-1"}};
    expectWireText(record, R"({"mimeType":"mimeType-1","resource":{"object":{"id":"id-1"}}})");
}

TEST(AssetRecords, AssetMetadataIsItsWireText) {
    AssetMetadata record;
    record.id = "id-1";
    record.versionId = "versionId-1";
    record.version = 11;
    record.mimeType = "mimeType-1";
    record.state = 12;
    record.createdTime = "createdTime-1";
    record.modifiedTime = "modifiedTime-1";
    record.resource = ResourceMetadata{.id = "id-1"};
    record.attributes = EmbeddedMap{{{"a", JSONValue{std::int64_t{1}}}}};
    expectWireText(
        record, R"({"id":"id-1","versionId":"versionId-1","version":11,"mimeType":"mimeType-1","state":12,)"
                R"("createdTime":"createdTime-1","modifiedTime":"modifiedTime-1","resource":{"id":"id-1"},)"
                R"("attributes":"eyJhIjoxfQ=="})");
}

}  // namespace
}  // namespace baseapi
