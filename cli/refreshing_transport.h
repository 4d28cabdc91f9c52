#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "baseapi/platform/http_transport.h"

namespace quillbox {

/// A transport that calls a function before it hands on an answer, after which the next request may go out.
class RefreshingTransport final : public baseapi::HttpTransport {
  public:
    /// `refresh` runs on the threads of the answers, several at once.
    RefreshingTransport(std::shared_ptr<baseapi::HttpTransport> inner, std::function<void()> refresh)
        : inner_(std::move(inner)), refresh_(std::move(refresh)) {}

    std::shared_ptr<baseapi::HttpTask> dataTask(
        baseapi::DataRequest request, std::function<void(baseapi::DataAnswer)> completion) override {
        return inner_->dataTask(std::move(request), refreshed(std::move(completion)));
    }
    std::shared_ptr<baseapi::HttpTask> uploadTask(
        baseapi::UploadRequest request, Progress progress,
        std::function<void(std::optional<baseapi::TransportError>)> completion) override {
        return inner_->uploadTask(std::move(request), std::move(progress), refreshed(std::move(completion)));
    }
    std::shared_ptr<baseapi::HttpTask> downloadTask(
        baseapi::DownloadRequest request, Progress progress,
        std::function<void(baseapi::DownloadAnswer)> completion) override {
        return inner_->downloadTask(std::move(request), std::move(progress),
                                    refreshed(std::move(completion)));
    }
    std::size_t running() const override { return inner_->running(); }

  private:
    template <class Answer>
    std::function<void(Answer)> refreshed(std::function<void(Answer)> completion) const {
        return [refresh = refresh_, completion = std::move(completion)](Answer answer) {
            refresh();
            if (completion) completion(std::move(answer));
        };
    }

    const std::shared_ptr<baseapi::HttpTransport> inner_;
    const std::function<void()> refresh_;
};

}  // namespace quillbox
