#include "cli/contact_records.h"

#include <gtest/gtest.h>

namespace quillbox {
namespace {

baseapi::RecordDetailBean record(const std::string& createTime, const std::string& properties,
                                 std::int64_t status = 1) {
    baseapi::RecordDetailBean bean;
    bean.createTime = createTime;
    bean.properties = properties;
    bean.status = status;
    return bean;
}

std::string counts(int count, int errorCode = 0) {
    return R"({"backupCount":)" + std::to_string(count) + R"(,"errorCode":)" + std::to_string(errorCode) +
           "}";
}

TEST(ContactRecordsTest, TheNewestFinishedBackupThatSucceededCounts) {
    EXPECT_EQ(contactsOfLastBackup({record("2026-01-01", counts(1)), record("2026-01-03", counts(3)),
                                    record("2026-01-02", counts(2))}),
              3);
    EXPECT_EQ(contactsOfLastBackup({record("2026-01-01", counts(1)), record("2026-01-02", counts(2), 0),
                                    record("2026-01-03", counts(3, 100009))}),
              1);
}

TEST(ContactRecordsTest, WhatDoesNotSayHowManyIsAbsent) {
    EXPECT_EQ(contactsOfLastBackup(std::vector<baseapi::RecordDetailBean>{}), std::nullopt);
    for (const char* properties : {"", "[]", "no JSON", "{}", R"({"errorCode":0})",
                                   R"({"backupCount":"7","errorCode":0})", R"({"backupCount":7})"})
        EXPECT_EQ(contactsOfLastBackup({record("2026-01-01", properties)}), std::nullopt) << properties;
    EXPECT_EQ(contactsOfLastBackup({baseapi::RecordDetailBean{}}), std::nullopt);
}

TEST(ContactRecordsTest, AnEmptyBookIsAlwaysWarnedOf) {
    EXPECT_EQ(contactWarning(0, std::nullopt), "the address book is empty");
    EXPECT_EQ(contactWarning(0, 0), "the address book is empty");
    EXPECT_EQ(contactWarning(0, 1), "the address book is empty; the last backup holds 1 contact");
}

TEST(ContactRecordsTest, LessThanHalfOfTheLastBackupIsWarnedOf) {
    EXPECT_EQ(contactWarning(1, std::nullopt), "");
    EXPECT_EQ(contactWarning(5, 10), "");
    EXPECT_EQ(contactWarning(20, 10), "");
    EXPECT_EQ(contactWarning(4, 10),
              "the address book holds 4 contacts, far fewer than the 10 of the last backup");
}

}  // namespace
}  // namespace quillbox
