#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/cli/cloud_test.h"
#include "tests/support/event.h"

namespace quillbox_test {

/// Tests of backups by the built program, with the built local service.
class BackupTest : public CloudTest {
  protected:
    using CloudTest::CloudTest;

    static std::string progress(int succCount, int failCount) {
        return R"({"event":"onProgress","succCount":)" + std::to_string(succCount) + R"(,"failCount":)" +
               std::to_string(failCount) + "}";
    }
    static std::string complete(int succCount, int failCount, int code = 0,
                                const std::string& msg = "success") {
        return R"({"event":"onComplete","succCount":)" + std::to_string(succCount) + R"(,"failCount":)" +
               std::to_string(failCount) + R"(,"code":)" + std::to_string(code) + R"(,"msg":")" + msg + "\"}";
    }

    /// Stalls requests to this path, from the one behind the first `after` on, until `release`.
    void stall(const std::string& verb, const std::string& path, int after = 0) const {
        plan(R"({"verb":")" + verb + R"(","path":")" + path + R"(","after":)" + std::to_string(after) +
             R"(,"times":1000,"kind":"stall","seconds":600})");
    }
    /// The service refuses requests to this path, of its REST interface: so many, behind the first `after`.
    void refuse(const std::string& path, int status, const std::string& msg, int after = 0,
                int times = 1) const {
        const auto code = std::to_string(status);
        plan(R"({"verb":"POST","path":"/quillbox/ose/v1/)" + path + R"(","after":)" + std::to_string(after) +
             R"(,"times":)" + std::to_string(times) + R"(,"kind":"status","status":)" + code +
             R"(,"body":{"code":)" + code + R"(,"msg":")" + msg + R"("}})");
    }
    void release() const { quillboxd_test::send("DELETE", service_.url() + "/_dev/faults"); }

    /// Waits until a request meets the stall that was planned first.
    [[nodiscard]] bool waitForStall() const {
        const auto end = std::chrono::steady_clock::now() + test_support::kPatience;
        while (hits() == 0)
            if (std::chrono::steady_clock::now() > end) return false;
        return true;
    }
    /// How many requests have met the fault that was planned first.
    std::int64_t hits() const {
        const auto faults = quillboxd_test::send("GET", service_.url() + "/_dev/faults").object();
        return faults.at("faults").at(0).at("hits").as_int64();
    }

    /// How many requests since the sign-in have begun with this text.
    std::ptrdiff_t sent(std::string_view beginning) const {
        const auto all = journal();
        return std::ranges::count_if(all, [&](const auto& target) { return target.starts_with(beginning); });
    }
    /// Waits until such a request has been answered.
    [[nodiscard]] bool waitForRequest(std::string_view beginning) const {
        const auto end = std::chrono::steady_clock::now() + test_support::kPatience;
        while (sent(beginning) == 0)
            if (std::chrono::steady_clock::now() > end) return false;
        return true;
    }
    /// The service gives a lock of the module to whoever asks next.
    void expectNoLock(const std::string& moduleCode) const {
        const auto answer = json({"call", "createBackupLock", R"({"moduleCode":")" + moduleCode + R"("})"});
        EXPECT_EQ(answer.status, 0) << answer.output;
        EXPECT_EQ(json({"call", "deleteBackupLock", "--lock-id", valueOf(answer.output, "lockId")}).status,
                  0);
    }
    /// What the newest record of the module says of its run.
    std::string propertiesOfRecord(const std::string& moduleCode) const {
        const auto records = text({"records", "--module", moduleCode}).output;
        const auto line = records.substr(0, records.find('\n'));
        const auto begin = line.find('{');
        return begin == line.npos ? line : line.substr(begin);
    }
    static std::string counts(int backupCount, int failedCount, int errorCode = 0) {
        const auto count = std::to_string(backupCount);
        return R"({"backupCount":)" + count + R"(,"successCount":)" + count + R"(,"failedCount":)" +
               std::to_string(failedCount) + R"(,"errorCode":)" + std::to_string(errorCode) + "}";
    }
};

}  // namespace quillbox_test
