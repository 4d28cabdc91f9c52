#pragma once

#include <functional>

#include "baseapi/platform/curl/transfer.h"

namespace baseapi::inline v1 {

/// A PUT of bytes that lie in memory.
class UploadTransfer final : public Transfer {
  public:
    UploadTransfer(std::shared_ptr<TransferLoop> loop, UploadRequest request,
                   HttpTransport::Progress progress,
                   std::function<void(std::optional<TransportError>)> completion);

    void setUpHandle(EasyHandle& easy) const override;

  protected:
    void prepare(EasyHandle& easy) override;
    void receive(std::string_view) override {}
    void followRedirect(int status) override;
    void settle(std::optional<TransportError> error) override;
    void complete() override;

  private:
    static int onProgress(void* transfer, curl_off_t, curl_off_t, curl_off_t, curl_off_t total);
    void reportSent(curl_off_t total);

    ByteBuffer data_;
    std::optional<HeaderLines> headers_;
    curl_off_t reported_ = 0;
    std::optional<TransportError> error_;
    std::function<void(std::optional<TransportError>)> completion_;
};

}  // namespace baseapi::inline v1
