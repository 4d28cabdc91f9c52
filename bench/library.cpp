#include "bench/library.h"

#include <utility>

#include "baseapi/api/files/i_file.h"
#include "baseapi/core/cloud_instance.h"
#include "baseapi/platform/platform.h"
#include "baseapi/transfer/i_transfer.h"
#include "bench/require.h"
#include "bench/signal.h"
#include "hostkit/slice_file.h"

namespace bench {

using baseapi::CloudInstance;

namespace {

class DroppedLines : public baseapi::LogSink {
  public:
    void line(std::span<const std::string_view> /*pieces*/) noexcept override {}
};

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
                          .stateFolder = std::filesystem::temp_directory_path() / "state"});
    CloudInstance::shared().host = host;
    CloudInstance::shared().token = "token";
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
