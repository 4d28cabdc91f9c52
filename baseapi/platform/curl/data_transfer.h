#pragma once

#include <functional>

#include "baseapi/platform/curl/transfer.h"

namespace baseapi::inline v1 {

/// A request whose answer is held in memory.
class DataTransfer final : public Transfer {
  public:
    DataTransfer(std::shared_ptr<TransferLoop> loop, DataRequest request,
                 std::function<void(DataAnswer)> completion, std::size_t longestBody);

    void setUpHandle(EasyHandle& easy) const override;

  protected:
    void prepare(EasyHandle& easy) override;
    void receive(std::string_view bytes) override;
    void followRedirect(int status) override;
    void settle(std::optional<TransportError> error) override;
    void complete() override;

  private:
    void makeRoom(std::size_t more);

    const std::string verb_;
    std::optional<std::string> body_;
    std::optional<HeaderLines> headers_;
    const std::size_t longestBody_;
    DataAnswer answer_;
    std::function<void(DataAnswer)> completion_;
};

}  // namespace baseapi::inline v1
