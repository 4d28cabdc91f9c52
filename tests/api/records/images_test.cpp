#include "baseapi/api/records/images.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(ImagesRecords, ImagesIsItsWireText) {
    Images record;
    record.process = "process-1";
    record.downloadUrl = EndpointURLMetadata{.url = "url-1"};
    expectWireText(record, R"({"process":"process-1","downloadUrl":{"url":"url-1"}})");
}

}  // namespace
}  // namespace baseapi
