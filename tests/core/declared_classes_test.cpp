#include <gtest/gtest.h>

#include <type_traits>

#include "baseapi/core/base_request_constants.h"
#include "baseapi/core/device_identifier.h"
#include "baseapi/core/device_util.h"
#include "baseapi/core/sdk_utils.h"
#include "baseapi/core/transfer_sp_util.h"

namespace baseapi {
namespace {

TEST(DeclaredClasses, AreEmptyButForTheKeychainKey) {
    EXPECT_TRUE(std::is_empty_v<DeviceUtil>);
    EXPECT_TRUE(std::is_empty_v<SDKUtils>);
    EXPECT_TRUE(std::is_empty_v<TransferSpUtil>);
    EXPECT_TRUE(std::is_empty_v<BaseRequestConstants>);
    EXPECT_EQ(DeviceIdentifier().keychainKey, "");
}

}  // namespace
}  // namespace baseapi
