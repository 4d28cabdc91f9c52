#include "baseapi/contacts/vcf_manager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

namespace {

std::string localTime() {
    const auto now = std::time(nullptr);
    std::tm parts{};
    ::localtime_r(&now, &parts);
    char text[32];
    std::snprintf(text, sizeof text, "%04d%02d%02d_%02d%02d%02d", parts.tm_year + 1900, parts.tm_mon + 1,
                  parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
    return text;
}

TEST(VCFManagerTest, TheTimestampIsThePresentSecondInTheDevicesTimeZone) {
    const auto before = localTime();
    const auto timestamp = baseapi::VCFManager::getCurrentTimestamp();
    EXPECT_GE(timestamp, before);
    EXPECT_LE(timestamp, localTime());
    EXPECT_THAT(timestamp, testing::MatchesRegex("[0-9]{8}_[0-9]{6}"));
}

}  // namespace
