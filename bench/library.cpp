#include "bench/library.h"

#include <utility>

#include "baseapi/api/backup/i_back_up.h"
#include "baseapi/api/files/i_file.h"
#include "baseapi/backup/i_phone_backup.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/platform/platform.h"
#include "baseapi/transfer/i_transfer.h"
#include "bench/dropped_lines.h"
#include "bench/require.h"
#include "bench/signal.h"
#include "hostkit/slice_file.h"
#include "tests/support/photo_library_double.h"

namespace bench {

using baseapi::CloudInstance;

namespace {

constexpr std::int64_t device = 7;

class LibraryCaller : public Caller {
  public:
    void call(std::function<void()> done) override {
        baseapi::FilesListBean bean;
        bean.type = "list";
        bean.parentFileId = "root";
        CloudInstance::shared().getFileImpl().filesList(std::move(bean), [done = std::move(done)](
                                                                             const auto& result) {
            using Result = baseapi::NetworkResult<baseapi::FilesListResponse>;
            result.visit([](const Result::success&) {},
                         [](const Result::failure& it) { require(false, "a call failed: " + it.message); });
            done();
        });
    }
};

}  // namespace

void openSession(const std::string& host) {
    baseapi::usePlatform({.log = std::make_shared<DroppedLines>(),
                          .photoLibrary = std::make_shared<test_support::PhotoLibraryDouble>(),
                          .stateFolder = std::filesystem::temp_directory_path() / "state"});
    CloudInstance::shared().host = host;
    CloudInstance::shared().token = "token";
    CloudInstance::shared().contentId = "container";
    CloudInstance::shared().sliceFile = std::make_shared<hostkit::SliceFile>();
}

std::unique_ptr<Caller> libraryCaller() {
    return std::make_unique<LibraryCaller>();
}

void uploadWithLibrary(const std::filesystem::path& file) {
    using Event = baseapi::UploadProcessResult;
    Signal ended;
    CloudInstance::shared().getTransferImpl().uploadFile(
        std::nullopt, baseapi::URL::file(file), "", 0, std::make_shared<hostkit::SliceFile>(),
        [&](const Event& event) {
            event.visit([&](const Event::onSuccess&) { ended.raise(); },
                        [](const Event::onFailure& it) { require(false, "the upload failed: " + it.errMsg); },
                        [](const auto&) {});
        });
    ended.await();
}

void addScope(const std::filesystem::path& folder) {
    using Result = baseapi::NetworkResult<baseapi::AddScopeResponse>;
    baseapi::AddScopeBean bean;
    bean.deviceId = device;
    bean.moduleCode = "100";
    bean.scopeList = {{folder.native(), "/target"}};
    Signal ended;
    CloudInstance::shared().getBackupImpl().addScope(bean, [&](const Result& result) {
        result.visit([&](const Result::success&) { ended.raise(); },
                     [](const Result::failure& it) { require(false, "no scope: " + it.message); });
    });
    ended.await();
}

void backUpWithLibrary(std::int64_t files) {
    using Event = baseapi::BackupResult;
    Signal ended;
    CloudInstance::shared().getPhoneBackupImpl().backupDirs("", device, [&](const Event& event) {
        event.visit([](const Event::onProgress&) {},
                    [&](const Event::onComplete& it) {
                        require(it.code == 0 && it.succCount == files && it.failCount == 0,
                                "the backup failed: " + it.msg);
                        ended.raise();
                    });
    });
    ended.await();
}

void downloadWithLibrary(const std::string& url, const std::filesystem::path& target) {
    using Result = baseapi::DownloadResult;
    Signal ended;
    CloudInstance::shared().getTransferImpl().downloadFile(
        baseapi::URL(url), "", baseapi::URL::file(target), [](double) {},
        [&](const Result& result) {
            result.visit(
                [&](const Result::success&) { ended.raise(); },
                [](const Result::failure& it) { require(false, "the download failed: " + it.message); });
        });
    ended.await();
}

}  // namespace bench
