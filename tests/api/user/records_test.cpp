#include "baseapi/api/user/records.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(UserRecords, AuthCodeBeanIsItsWireText) {
    AuthCodeBean record;
    record.authCode = "authCode-1";
    expectWireText(record, R"({"authCode":"authCode-1"})");
}

TEST(UserRecords, OrgUserInfoIsItsWireText) {
    OrgUserInfo record;
    record.carrierUserId = "carrierUserId-1";
    record.carrierUserName = "carrierUserName-1";
    record.carrierUserGrade = "carrierUserGrade-1";
    record.carrierUserStatus = "carrierUserStatus-1";
    record.carrierMobile = "carrierMobile-1";
    record.carrierPayType = "carrierPayType-1";
    expectWireText(record,
                   R"({"carrierUserId":"carrierUserId-1","carrierUserName":"carrierUserName-1",)"
                   R"("carrierUserGrade":"carrierUserGrade-1","carrierUserStatus":"carrierUserStatus-1",)"
                   R"("carrierMobile":"carrierMobile-1","carrierPayType":"carrierPayType-1"})");
}

TEST(UserRecords, UserAuthRespIsItsWireText) {
    UserAuthResp record;
    record.accessToken = "accessToken-1";
    record.innerUserId = 11;
    record.data = OrgUserInfo{.carrierUserId = "carrierUserId-1"};
    record.code = 12;
    record.msg = "msg-1";
    record.httpCode = 13;
    expectWireText(record,
                   R"({"accessToken":"accessToken-1","innerUserId":11,)"
                   R"("data":{"carrierUserId":"carrierUserId-1"},"code":12,"msg":"msg-1","httpCode":13})");
}

}  // namespace
}  // namespace baseapi
