#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "baseapi/core/cancelable.h"
#include "baseapi/core/slice_file.h"
#include "baseapi/transfer/upload_process_result.h"
#include "cli/host.h"
#include "cli/job_display.h"
#include "cli/local_tree.h"

namespace quillbox {

using UploadEnd =
    std::variant<baseapi::UploadProcessResult::onSuccess, baseapi::UploadProcessResult::onFailure>;

/// One upload of one file, once. Its events go to the output as they come, but for the last one.
class UploadAttempt : public std::enable_shared_from_this<UploadAttempt> {
  public:
    UploadAttempt(const Host& host, std::shared_ptr<JobDisplay> display, LocalItem file)
        : host_(host), display_(std::move(display)), file_(std::move(file)) {}

    /// Hashes and uploads the file, and waits for the last event. Throws `Interrupted` where none has come in
    /// time after a Ctrl-C.
    UploadEnd run(std::optional<std::string> parent, std::shared_ptr<baseapi::ISliceFile> slicer);

    /// From any thread.
    void cancel();

  private:
    void start(std::optional<std::string> parent, std::shared_ptr<baseapi::ISliceFile> slicer);
    void onEvent(const baseapi::UploadProcessResult& event);
    void onItemFinish(const baseapi::UploadProcessResult::onItemFinish& item);
    void end(UploadEnd last);

    const Host& host_;
    const std::shared_ptr<JobDisplay> display_;
    const LocalItem file_;
    std::optional<UploadEnd> end_;

    std::mutex mutex_;
    std::shared_ptr<baseapi::Cancelable> upload_;
    bool cancelled_ = false;
};

}  // namespace quillbox
