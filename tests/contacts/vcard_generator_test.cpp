#include "baseapi/contacts/vcard_generator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <future>
#include <latch>

#include "baseapi/core/main_queue.h"
#include "tests/support/event.h"
#include "tests/support/file_content.h"
#include "tests/support/test_platform.h"

namespace {

using baseapi::ContactBean;
using baseapi::VCardGenerator;
using baseapi::VcfFileResult;
using test_support::contentOf;
namespace fs = std::filesystem;

class VCardGeneratorTest : public testing::Test {
  protected:
    VCardGeneratorTest() { test_support::recordingLog().clear(); }

    static VcfFileResult generate(std::vector<ContactBean> contacts, const std::string& name) {
        std::promise<VcfFileResult> promise;
        auto result = promise.get_future();
        VCardGenerator::generateVcfFile(std::move(contacts), name,
                                        [&](VcfFileResult it) { promise.set_value(std::move(it)); });
        EXPECT_EQ(result.wait_for(test_support::kPatience), std::future_status::ready);
        return result.get();
    }
    static fs::path fileOf(const VcfFileResult& result) {
        return result.visit([](const VcfFileResult::success& it) { return it.file.path(); },
                            [](const VcfFileResult::failure& it) {
                                ADD_FAILURE() << it.message;
                                return fs::path();
                            });
    }
    static std::string messageOf(const VcfFileResult& result) {
        return result.visit([](const VcfFileResult::success&) { return std::string(); },
                            [](const VcfFileResult::failure& it) { return it.message; });
    }
};

TEST_F(VCardGeneratorTest, WritesTheFileIntoTheTemporaryFolderAndLogsItsName) {
    const auto path = fileOf(generate({ContactBean("Lei", {}, {})}, "one.vcf"));
    EXPECT_EQ(path, test_support::temporaryFolder() / "one.vcf");
    EXPECT_EQ(contentOf(path), "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;;;;\r\nFN:Lei\r\nEND:VCARD\r\n");
    EXPECT_THAT(test_support::recordingLog().lines(),
                testing::ElementsAre("VCardGenerator: VCF file generated successfully at one.vcf"));
}

TEST_F(VCardGeneratorTest, AnAbsoluteNameStaysInTheTemporaryFolder) {
    EXPECT_EQ(fileOf(generate({}, "/one.vcf")), test_support::temporaryFolder() / "one.vcf");
}

TEST_F(VCardGeneratorTest, NoContactsWriteAFileOfZeroBytes) {
    const auto path = fileOf(generate({}, "empty.vcf"));
    EXPECT_TRUE(fs::exists(path));
    EXPECT_EQ(fs::file_size(path), 0u);
}

TEST_F(VCardGeneratorTest, ReplacesAnOlderFileOfThatName) {
    std::ofstream(test_support::temporaryFolder() / "old.vcf") << std::string(10'000, 'x');
    EXPECT_EQ(fs::file_size(fileOf(generate({}, "old.vcf"))), 0u);
}

TEST_F(VCardGeneratorTest, AFileThatCannotBeWrittenIsReportedAndLogged) {
    const auto message = messageOf(generate({ContactBean("Lei", {}, {})}, "missing/one.vcf"));
    EXPECT_THAT(message, testing::HasSubstr("No such file or directory"));
    EXPECT_THAT(test_support::recordingLog().lines(),
                testing::ElementsAre("VCardGenerator: Error generating VCF file - " + message));
}

TEST_F(VCardGeneratorTest, AFailureLeavesNothingBehind) {
    fs::create_directory(test_support::temporaryFolder() / "taken.vcf");
    EXPECT_NE(messageOf(generate({}, "taken.vcf")), "");
    for (const auto& entry : fs::directory_iterator(test_support::temporaryFolder()))
        EXPECT_FALSE(entry.path().filename().native().starts_with(".")) << entry;
}

TEST_F(VCardGeneratorTest, TheCompletionComesOnTheMainQueueOnceAndNeverInsideTheCall) {
    std::atomic<int> completions = 0;
    std::promise<std::thread::id> main;
    test_support::Event held;
    test_support::Event reported;
    std::thread::id thread;
    baseapi::onMainQueue([&] {
        main.set_value(std::this_thread::get_id());
        EXPECT_TRUE(held.wait());
    });
    VCardGenerator::generateVcfFile({}, "queue.vcf", [&](const VcfFileResult&) {
        ++completions;
        thread = std::this_thread::get_id();
        reported.set();
    });
    EXPECT_EQ(completions, 0);
    held.set();
    ASSERT_TRUE(reported.wait());
    EXPECT_EQ(thread, main.get_future().get());

    // Everything that was on its way to the main queue has come once a later job of it runs.
    fileOf(generate({}, "later.vcf"));
    EXPECT_EQ(completions, 1);
}

TEST_F(VCardGeneratorTest, AnAbsentCompletionAndOneThatThrowsDoNoHarm) {
    VCardGenerator::generateVcfFile({}, "absent.vcf", nullptr);
    VCardGenerator::generateVcfFile({}, "throws.vcf",
                                    [](const VcfFileResult&) { throw std::runtime_error("x"); });
    EXPECT_TRUE(test_support::recordingLog().waitFor(
        "VCardGenerator: VCF file generated successfully at absent.vcf"));
    EXPECT_TRUE(test_support::recordingLog().waitFor("callback threw: x"));
}

}  // namespace
