#include "baseapi/api/records/download_link.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(DownloadLinkRecords, DownloadLinkIsItsWireText) {
    DownloadLink record;
    record.usage = "usage-1";
    record.downloadLink = "downloadLink-1";
    record.version = 11;
    expectWireText(record, R"({"usage":"usage-1","downloadLink":"downloadLink-1","version":11})");
}

}  // namespace
}  // namespace baseapi
