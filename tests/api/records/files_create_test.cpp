#include "baseapi/api/records/files_create.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(FilesCreate, FilesCreateBeanIsItsWireText) {
    FilesCreateBean record;
    record.createdTime = "createdTime-1";
    record.description = "description-1";
    record.mimeType = "mimeType-1";
    record.fileName = "fileName-1";
    record.fileType = "fileType-1";
    record.parentFolder = std::vector<std::string>{"a", "b"};
    record.sha256 = "sha256-1";
    record.length = 5368709120;
    record.uploadMode = "uploadMode-1";
    record.uploadType = 12;
    record.autoRename = 13;
    record.multiParts =
        std::vector<MultiPartInfo>{MultiPartInfo{.partNumber = 14, .partSize = 15, .partOffset = 4294967296}};
    record.containerId = "containerId-1";
    record.preHash = "preHash-1";
    record.proofCode = "proofCode-1";
    record.hidden = true;
    record.scene = "scene-1";
    expectWireText(
        record, R"({"createdTime":"createdTime-1","description":"description-1","mimeType":"mimeType-1",)"
                R"("fileName":"fileName-1","fileType":"fileType-1","parentFolder":["a","b"],)"
                R"("sha256":"sha256-1","length":5368709120,"uploadMode":"uploadMode-1","uploadType":12,)"
                R"("autoRename":13,"multiParts":[{"partNumber":14,"partSize":15,"partOffset":4294967296}],)"
                R"("containerId":"containerId-1","preHash":"preHash-1","proofCode":"proofCode-1",)"
                R"("hidden":true,"scene":"scene-1"})");
}

TEST(FilesCreate, FilesCreateResponseIsItsWireText) {
    FilesCreateResponse record;
    record.fileId = "fileId-1";
    record.rapidUpload = true;
    record.containerId = "containerId-1";
    record.fileName = "fileName-1";
    record.uploadId = "uploadId-1";
    record.parentFolder = std::vector<std::string>{"a", "b"};
    record.exist = true;
    record.multiParts =
        std::vector<MultiPartInfo>{MultiPartInfo{.partNumber = 11, .partSize = 12, .partOffset = 4294967296}};
    record.matchedPreHash = true;
    record.code = 14;
    record.msg = "msg-1";
    record.httpCode = 15;
    expectWireText(record,
                   R"({"fileId":"fileId-1","rapidUpload":true,"containerId":"containerId-1",)"
                   R"("fileName":"fileName-1","uploadId":"uploadId-1","parentFolder":["a","b"],"exist":true,)"
                   R"("multiParts":[{"partNumber":11,"partSize":12,"partOffset":4294967296}],)"
                   R"("matchedPreHash":true,"code":14,"msg":"msg-1","httpCode":15})");
}

}  // namespace
}  // namespace baseapi
