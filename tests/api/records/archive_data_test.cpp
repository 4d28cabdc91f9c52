#include "baseapi/api/records/archive_data.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(ArchiveDataRecords, UncompressedFileinfoListIsItsWireText) {
    UncompressedFileinfoList record;
    record.code = "code-1";
    record.name = "name-1";
    record.type = "type-1";
    record.updateAt = "updateAt-1";
    record.fileSize = "fileSize-1";
    expectWireText(record, R"({"code":"code-1","name":"name-1","type":"type-1","updateAt":"updateAt-1",)"
                           R"("fileSize":"fileSize-1"})");
}

TEST(ArchiveDataRecords, ArchiveDataIsItsWireText) {
    ArchiveData record;
    record.uncompressedFileList = UncompressedFileinfoList{.code = "code-1"};
    record.taskKey = "taskKey-1";
    record.taskValue = EmbeddedDocument{JSONValue{JSONValue::Array{JSONValue{std::int64_t{1}}}}};
    record.taskId = "taskId-1";
    record.progress = 11;
    expectWireText(record,
                   R"({"uncompressedFileList":{"code":"code-1"},"taskKey":"taskKey-1","taskValue":"WzFd",)"
                   R"("taskId":"taskId-1","progress":11})");
}

TEST(ArchiveDataRecords, TheTaskValueIsADocumentOfAnyKind) {
    // {"a":1}, 7, null
    const auto value = [](const char* base64) {
        return decoded<ArchiveData>(R"({"progress":0,"taskValue":")" + std::string(base64) + "\"}").taskValue;
    };
    EXPECT_EQ(value("eyJhIjoxfQ==")->document,
              (JSONValue{JSONValue::Map{{"a", JSONValue{std::int64_t{1}}}}}));
    EXPECT_EQ(value("Nw==")->document, JSONValue{std::int64_t{7}});
    EXPECT_EQ(value("bnVsbA==")->document, JSONValue{nullptr});
}

TEST(ArchiveDataRecords, TheProgressMustBeThere) {
    expectFailure<ArchiveData>("{}", DecodingError::Kind::keyNotFound, "");
}

TEST(ArchiveDataRecords, TheListIsOneRecord) {
    expectFailure<ArchiveData>(R"({"progress":0,"uncompressedFileList":[]})",
                               DecodingError::Kind::typeMismatch, "uncompressedFileList");
}

}  // namespace
}  // namespace baseapi
