#include "baseapi/api/records/filter.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(FilterRecords, FilterIsItsWireText) {
    Filter record;
    record.keyWord = "keyWord-1";
    record.containerId = "containerId-1";
    record.parentFolder = "parentFolder-1";
    record.fileType = "fileType-1";
    record.updateTimeRange = "updateTimeRange-1";
    record.ownerId = "ownerId-1";
    expectWireText(record,
                   R"({"keyWord":"keyWord-1","containerId":"containerId-1","parentFolder":"parentFolder-1",)"
                   R"("fileType":"fileType-1","updateTimeRange":"updateTimeRange-1","ownerId":"ownerId-1"})");
}

}  // namespace
}  // namespace baseapi
