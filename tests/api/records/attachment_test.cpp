#include "baseapi/api/records/attachment.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(AttachmentRecords, BaseAttachmentIsItsWireText) {
    BaseAttachment record;
    record.usage = "usage-1";
    record.hash = "hash-1";
    record.sha256 = "sha256-1";
    expectWireText(record, R"({"usage":"usage-1","hash":"hash-1","sha256":"sha256-1"})");
}

TEST(AttachmentRecords, AttachmentIsItsWireText) {
    Attachment record;
    record.assetId = "assetId-1";
    record.length = 5368709120;
    record.versionId = "versionId-1";
    record.mimeType = "mimeType-1";
    record.createdTime = "createdTime-1";
    record.modifiedTime = "modifiedTime-1";
    record.attributes = AnyMap{{{"a", JSONValue{nullptr}}, {"b", JSONValue{std::int64_t{2}}}}};
    record.asset = Asset{.id = "id-1"};
    record.usage = "usage-1";
    record.hash = "hash-1";
    record.sha256 = "sha256-1";
    expectWireText(record,
                   R"({"assetId":"assetId-1","length":5368709120,"versionId":"versionId-1",)"
                   R"("mimeType":"mimeType-1","createdTime":"createdTime-1","modifiedTime":"modifiedTime-1",)"
                   R"("attributes":{"a":null,"b":2},"asset":{"id":"id-1"},"usage":"usage-1","hash":"hash-1",)"
                   R"("sha256":"sha256-1"})");
}

TEST(AttachmentRecords, FileListAttachmentIsItsWireText) {
    FileListAttachment record;
    record.asset = FileListAsset{.mimeType = "mimeType-1"};
    record.usage = "usage-1";
    record.hash = "hash-1";
    record.sha256 = "sha256-1";
    expectWireText(
        record,
        R"({"asset":{"mimeType":"mimeType-1"},"usage":"usage-1","hash":"hash-1","sha256":"sha256-1"})");
}

TEST(AttachmentRecords, AttachmentMetadataIsItsWireText) {
    AttachmentMetadata record;
    record.usage = "usage-1";
    record.hash = "hash-1";
    record.sha256 = "sha256-1";
    record.asset = AssetMetadata{.id = "id-1"};
    expectWireText(record,
                   R"({"usage":"usage-1","hash":"hash-1","sha256":"sha256-1","asset":{"id":"id-1"}})");
}

}  // namespace
}  // namespace baseapi
