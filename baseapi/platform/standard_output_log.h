#pragma once

#include <mutex>

#include "baseapi/platform/log_sink.h"

namespace baseapi::inline v1 {

/// Writes each line at once and whole to a file descriptor that stays the caller's, standard output by
/// default. Where nobody reads any longer, or the disk is full, lines are dropped without a signal.
class StandardOutputLog final : public LogSink {
  public:
    StandardOutputLog();
    explicit StandardOutputLog(int descriptor);

    void line(std::span<const std::string_view> pieces) noexcept override;

  private:
    const int descriptor_;
    std::mutex mutex_;
};

}  // namespace baseapi::inline v1
