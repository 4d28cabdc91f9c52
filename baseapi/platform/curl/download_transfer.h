#pragma once

#include <functional>

#include "baseapi/platform/curl/partial_file.h"
#include "baseapi/platform/curl/transfer.h"

namespace baseapi::inline v1 {

/// A GET into a file, which continues what is there where the service agrees.
class DownloadTransfer final : public Transfer {
  public:
    DownloadTransfer(std::shared_ptr<TransferLoop> loop, DownloadRequest request,
                     HttpTransport::Progress progress, std::function<void(DownloadAnswer)> completion);

    void setUpHandle(EasyHandle& easy) const override;

  protected:
    void prepare(EasyHandle& easy) override;
    void receive(std::string_view bytes) override;
    void settle(std::optional<TransportError> error) override;
    void complete() override;

  private:
    bool continues() const { return answer_.validator.has_value(); }
    void accept();
    void acceptRange();
    void startAnew();
    void checkComplete();
    std::optional<std::string> validatorOfAnswer() const;

    const std::filesystem::path path_;
    PartialFile file_;
    std::optional<HeaderLines> headers_;
    bool accepted_ = false;
    std::int64_t total_ = -1;
    /// Its validator belongs to the bytes that are in the file, at any time.
    DownloadAnswer answer_;
    std::function<void(DownloadAnswer)> completion_;
};

}  // namespace baseapi::inline v1
