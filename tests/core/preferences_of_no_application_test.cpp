#include <gtest/gtest.h>

#include "baseapi/core/preferences.h"
#include "baseapi/platform/platform.h"
#include "tests/support/temporary_folder.h"

namespace baseapi {
namespace {

TEST(PreferencesOfNoApplication, AreNotCleared) {
    const test_support::TemporaryFolder folder;
    Platform parts;
    parts.stateFolder = folder.path();
    usePlatform(std::move(parts));
    Preferences::shared().putInt("key", 5);
    Preferences::shared().clear();
    EXPECT_EQ(Preferences::shared().getInt("key", 0), 5);
}

}  // namespace
}  // namespace baseapi
