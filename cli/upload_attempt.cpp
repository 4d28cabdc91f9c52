#include "cli/upload_attempt.h"

#include <utility>

#include "baseapi/core/cloud_instance.h"
#include "baseapi/transfer/i_transfer.h"
#include "cli/problems.h"
#include "hostkit/slice_file.h"

namespace quillbox {
namespace {

using baseapi::UploadProcessResult;

// The library sends 4, whatever it is given: the service finds a free name.
constexpr std::int64_t autoRename = 4;

/// How long the part of this name is where the slicer has cut a file of this size; the whole file where it
/// has not cut it so.
std::int64_t partLength(const std::string& subHash, std::int64_t fileSize) {
    const auto length = hostkit::SliceFile::partSize(fileSize);
    std::int64_t number = 1;
    for (std::int64_t offset = 0; offset < fileSize; offset += length, ++number)
        if (std::to_string(number) + std::to_string(offset) == subHash)
            return std::min(length, fileSize - offset);
    return fileSize;
}

}  // namespace

UploadEnd UploadAttempt::run(std::optional<std::string> parent, std::shared_ptr<baseapi::ISliceFile> slicer) {
    host_.refreshToken();
    start(std::move(parent), std::move(slicer));
    const bool ended = host_.monitor().wait([this] { return end_.has_value(); });
    {
        // The upload holds this object too.
        std::lock_guard lock(mutex_);
        upload_.reset();
    }
    if (!ended) throw Interrupted{};
    return *end_;
}

void UploadAttempt::start(std::optional<std::string> parent, std::shared_ptr<baseapi::ISliceFile> slicer) {
    // A cancel comes before the start or finds the upload.
    std::lock_guard lock(mutex_);
    upload_ = baseapi::CloudInstance::shared().getTransferImpl().uploadFile(
        std::move(parent), baseapi::URL::file(file_.path), "", autoRename, std::move(slicer),
        [self = shared_from_this()](const UploadProcessResult& event) { self->onEvent(event); });
    if (cancelled_) upload_->cancel();
}

void UploadAttempt::cancel() {
    std::lock_guard lock(mutex_);
    cancelled_ = true;
    if (upload_) upload_->cancel();
}

void UploadAttempt::onEvent(const UploadProcessResult& event) {
    event.visit(
        [&](const UploadProcessResult::onProgress& it) {
            display_->sent(it.bytes);
            JsonLine line("onProgress");
            host_.output().event(line.add("file", file_.label).add("bytes", it.bytes).add("total", it.total));
        },
        [&](const UploadProcessResult::onItemFinish& it) { onItemFinish(it); },
        [&](const UploadProcessResult::onSuccess& it) { end(it); },
        [&](const UploadProcessResult::onFailure& it) { end(it); },
        [](const UploadProcessResult::onFileCreate&) {});
}

void UploadAttempt::onItemFinish(const UploadProcessResult::onItemFinish& item) {
    // After the last part the library goes on to the next request.
    host_.refreshToken();
    if (!item.isSuccess) display_->partFailed(partLength(item.subHash, file_.size));
    JsonLine line("onItemFinish");
    line.add("file", file_.label).add("subHash", item.subHash).add("index", item.index);
    host_.output().event(line.add("isSuccess", item.isSuccess));
}

void UploadAttempt::end(UploadEnd last) {
    host_.monitor().change([&] {
        if (!end_) end_ = std::move(last);
    });
}

}  // namespace quillbox
