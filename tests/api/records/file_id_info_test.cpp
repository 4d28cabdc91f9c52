#include "baseapi/api/records/file_id_info.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(FileIdInfoRecords, FileIdInfoIsItsWireText) {
    FileIdInfo record;
    record.fileId = "fileId-1";
    record.containerId = "containerId-1";
    expectWireText(record, R"({"fileId":"fileId-1","containerId":"containerId-1"})");
}

}  // namespace
}  // namespace baseapi
