#include "baseapi/api/records/sort_info.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(SortInfoRecords, FileSortInfoIsItsWireText) {
    FileSortInfo record;
    record.sortType = 11;
    record.sortDirection = 12;
    expectWireText(record, R"({"sortType":11,"sortDirection":12})");
}

TEST(SortInfoRecords, SortInfoIsItsWireText) {
    SortInfo record;
    record.sortType = "sortType-1";
    record.sortDirection = "sortDirection-1";
    expectWireText(record, R"({"sortType":"sortType-1","sortDirection":"sortDirection-1"})");
}

TEST(SortInfoRecords, AListSortsByNumbersAndASearchByTexts) {
    expectFailure<FileSortInfo>(R"({"sortType":"1"})", DecodingError::Kind::typeMismatch, "sortType");
    expectFailure<SortInfo>(R"({"sortType":1})", DecodingError::Kind::typeMismatch, "sortType");
}

}  // namespace
}  // namespace baseapi
