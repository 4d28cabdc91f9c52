#include "baseapi/api/records/page_info.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(PageInfoRecords, PageInfoIsItsWireText) {
    PageInfo record;
    record.pageSize = 11;
    record.pageCursor = "pageCursor-1";
    expectWireText(record, R"({"pageSize":11,"pageCursor":"pageCursor-1"})");
}

TEST(PageInfoRecords, ThePageSizeMustBeThereAndTheCursorNeedNot) {
    expectFailure<PageInfo>(R"({"pageCursor":"c"})", DecodingError::Kind::keyNotFound, "");
    expectFailure<PageInfo>(R"({"pageSize":null})", DecodingError::Kind::valueNotFound, "pageSize");
    expectFailure<PageInfo>(R"({"pageSize":"10"})", DecodingError::Kind::typeMismatch, "pageSize");
    EXPECT_EQ(decoded<PageInfo>(R"({"pageSize":10})").pageCursor, std::nullopt);
}

TEST(PageInfoRecords, HasAccessors) {
    PageInfo page;
    EXPECT_EQ(page.getPageSize(), 0);
    EXPECT_EQ(page.getPageCursor(), std::nullopt);
    page.setPageSize(50);
    page.setPageCursor("next");
    EXPECT_EQ(page.getPageSize(), 50);
    EXPECT_EQ(page.getPageCursor(), "next");
    EXPECT_EQ(encode(page), R"({"pageSize":50,"pageCursor":"next"})");
}

}  // namespace
}  // namespace baseapi
