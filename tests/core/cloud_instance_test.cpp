#include "baseapi/core/cloud_instance.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>
#include <vector>

#include "baseapi/core/slice_file.h"

namespace baseapi {
namespace {

class NoSlices : public ISliceFile {
  public:
    std::optional<std::string> calcSha256(const URL& /*of*/) override { return std::nullopt; }
};

TEST(CloudInstance, IsOneForAllThreads) {
    std::vector<CloudInstance*> seen(8);
    std::vector<std::thread> threads;
    for (auto& place : seen) threads.emplace_back([&] { place = &CloudInstance::shared(); });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(std::set<CloudInstance*>(seen.begin(), seen.end()).size(), 1U);
}

TEST(CloudInstance, GivesTheSameServiceObjectOnEachCall) {
    const auto& instance = CloudInstance::shared();
    EXPECT_EQ(&instance.getFileImpl(), &instance.getFileImpl());
    EXPECT_EQ(&instance.getUserImpl(), &instance.getUserImpl());
    EXPECT_EQ(&instance.getShareImpl(), &instance.getShareImpl());
    EXPECT_EQ(&instance.getShareFolderImpl(), &instance.getShareFolderImpl());
    EXPECT_EQ(&instance.getAlbumImpl(), &instance.getAlbumImpl());
    EXPECT_EQ(&instance.getRevisionImpl(), &instance.getRevisionImpl());
    EXPECT_EQ(&instance.getSpaceImpl(), &instance.getSpaceImpl());
    EXPECT_EQ(&instance.getFavorImpl(), &instance.getFavorImpl());
    EXPECT_EQ(&instance.getJobImpl(), &instance.getJobImpl());
    EXPECT_EQ(&instance.getfolderSyncImpl(), &instance.getfolderSyncImpl());
    EXPECT_EQ(&instance.getCarrierImpl(), &instance.getCarrierImpl());
    EXPECT_EQ(&instance.getTransferImpl(), &instance.getTransferImpl());
    EXPECT_EQ(&instance.getPhoneBackupImpl(), &instance.getPhoneBackupImpl());
}

TEST(CloudInstance, StartsWithoutSessionValuesAndKeepsWhatTheHostSets) {
    auto& instance = CloudInstance::shared();
    for (auto* value :
         {&instance.authCode, &instance.token, &instance.host, &instance.innerUser, &instance.contentId}) {
        EXPECT_FALSE(value->get());
        *value = "text";
        EXPECT_EQ(value->get(), "text");
        *value = std::nullopt;
        EXPECT_FALSE(value->get());
    }
    EXPECT_FALSE(instance.sliceFile.get());
    const auto slicer = std::make_shared<NoSlices>();
    instance.sliceFile = slicer;
    EXPECT_EQ(instance.sliceFile.get(), slicer);
    instance.sliceFile = nullptr;
}

TEST(CloudInstance, HasAUserAgentThatTheHostReplacesWithAnyText) {
    auto& instance = CloudInstance::shared();
    EXPECT_EQ(instance.userAgent(), "Your-App-Name");
    instance.updateUserAgent("x");
    EXPECT_EQ(instance.userAgent(), "x");
    instance.updateUserAgent("");
    EXPECT_EQ(instance.userAgent(), "");
    instance.updateUserAgent("Your-App-Name");
}

}  // namespace
}  // namespace baseapi
