#include "baseapi/contacts/contact_kinds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "baseapi/platform/address_book.h"

namespace {

using baseapi::EmailType;
using baseapi::PhoneNumberType;

TEST(PhoneNumberTypeTest, SevenKindsStandInTheirOrderWithTextAndLabel) {
    std::vector<std::pair<std::string_view, std::string_view>> rows;
    for (const PhoneNumberType type : PhoneNumberType::allCases)
        rows.emplace_back(type.rawValue(), type.cnLabel());
    EXPECT_THAT(rows, testing::ElementsAre(std::pair("HOME", baseapi::CNLabelHome),
                                           std::pair("CELL", baseapi::CNLabelPhoneNumberMobile),
                                           std::pair("WORK", baseapi::CNLabelWork),
                                           std::pair("WORK,FAX", baseapi::CNLabelPhoneNumberWorkFax),
                                           std::pair("HOME,FAX", baseapi::CNLabelPhoneNumberHomeFax),
                                           std::pair("PAGER", baseapi::CNLabelOther),
                                           std::pair("OTHER", baseapi::CNLabelOther)));
}

TEST(PhoneNumberTypeTest, ATextIsReadInAnyCase) {
    EXPECT_EQ(PhoneNumberType::fromString("HOME"), PhoneNumberType::home);
    EXPECT_EQ(PhoneNumberType::fromString("cell"), PhoneNumberType::mobile);
    EXPECT_EQ(PhoneNumberType::fromString("mobile"), PhoneNumberType::mobile);
    EXPECT_EQ(PhoneNumberType::fromString("Work"), PhoneNumberType::work);
    EXPECT_EQ(PhoneNumberType::fromString("work,Fax"), PhoneNumberType::faxWork);
    EXPECT_EQ(PhoneNumberType::fromString("HOME,FAX"), PhoneNumberType::faxHome);
    EXPECT_EQ(PhoneNumberType::fromString("Pager"), PhoneNumberType::pager);
}

TEST(PhoneNumberTypeTest, AnyOtherTextAndNoneAreOther) {
    for (const auto* text : {"", "OTHER", "FAX", "FAX,WORK", " HOME", "传真", "<home>"})
        EXPECT_EQ(PhoneNumberType::fromString(text), PhoneNumberType::other) << text;
    EXPECT_EQ(PhoneNumberType::fromString(std::nullopt), PhoneNumberType::other);
}

TEST(PhoneNumberTypeTest, ARawTextIsTakenAsItIsWritten) {
    for (const PhoneNumberType type : PhoneNumberType::allCases)
        EXPECT_EQ(PhoneNumberType::ofRawValue(type.rawValue()), type);
    for (const auto* text : {"mobile", "MOBILE", "home", "", "HOME "})
        EXPECT_EQ(PhoneNumberType::ofRawValue(text), std::nullopt) << text;
}

TEST(EmailTypeTest, FourKindsStandInTheirOrderWithTextAndLabel) {
    std::vector<std::pair<std::string_view, std::string_view>> rows;
    for (const EmailType type : EmailType::allCases) rows.emplace_back(type.rawValue(), type.cnLabel());
    EXPECT_THAT(rows, testing::ElementsAre(std::pair("HOME", baseapi::CNLabelHome),
                                           std::pair("WORK", baseapi::CNLabelWork),
                                           std::pair("OTHER", baseapi::CNLabelOther),
                                           std::pair("MOBILE", baseapi::CNLabelOther)));
}

TEST(EmailTypeTest, ATextIsReadInAnyCaseAndAnyOtherIsOther) {
    EXPECT_EQ(EmailType::fromString("home"), EmailType::home);
    EXPECT_EQ(EmailType::fromString("Work"), EmailType::work);
    EXPECT_EQ(EmailType::fromString("MOBILE"), EmailType::mobile);
    for (const auto* text : {"", "OTHER", "CELL", "WORK,FAX"})
        EXPECT_EQ(EmailType::fromString(text), EmailType::other) << text;
    EXPECT_EQ(EmailType::fromString(std::nullopt), EmailType::other);
}

TEST(EmailTypeTest, ARawTextIsTakenAsItIsWritten) {
    for (const EmailType type : EmailType::allCases) EXPECT_EQ(EmailType::ofRawValue(type.rawValue()), type);
    for (const auto* text : {"mobile", "CELL", ""})
        EXPECT_EQ(EmailType::ofRawValue(text), std::nullopt) << text;
}

}  // namespace
