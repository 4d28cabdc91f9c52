#include "baseapi/api/records/user.h"

#include <gtest/gtest.h>

#include "tests/api/wire_text.h"

namespace baseapi {
namespace {

TEST(UserRecords, UserIsItsWireText) {
    User record;
    record.category = "category-1";
    record.me = true;
    record.permissionId = "permissionId-1";
    record.userId = "userId-1";
    record.displayName = "displayName-1";
    expectWireText(
        record, R"({"category":"category-1","me":true,"permissionId":"permissionId-1","userId":"userId-1",)"
                R"("displayName":"displayName-1"})");
}

TEST(UserRecords, UserBeanIsItsWireText) {
    UserBean record;
    record.userId = "userId-1";
    expectWireText(record, R"({"userId":"userId-1"})");
}

}  // namespace
}  // namespace baseapi
