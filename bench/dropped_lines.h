#pragma once

#include "baseapi/platform/log_sink.h"

namespace bench {

/// Log lines are built, as in any program, and dropped.
class DroppedLines : public baseapi::LogSink {
  public:
    void line(std::span<const std::string_view> /*pieces*/) noexcept override {}
};

}  // namespace bench
