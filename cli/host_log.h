#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "baseapi/platform/log_sink.h"
#include "cli/upload_cause.h"

namespace quillbox {

/// Takes the library's log lines: reads the causes of failures out of them and writes them, as they are, to
/// where the user wants them.
class HostLog : public baseapi::LogSink {
  public:
    /// The lines are dropped.
    HostLog() = default;
    /// `destination`: a file, which is appended to and readable by its owner alone, or "-" for standard
    /// error. Throws `UsageError` where it cannot be opened.
    explicit HostLog(const std::string& destination);
    ~HostLog() override;
    HostLog(const HostLog&) = delete;
    HostLog& operator=(const HostLog&) = delete;

    void line(std::span<const std::string_view> pieces) noexcept override;

    /// While one lives, the lines of its thread are read and not written: they are of what the host does with
    /// the library's means, beside a run that writes the same lines.
    class Unwritten {
      public:
        Unwritten();
        ~Unwritten();
        Unwritten(const Unwritten&) = delete;
        Unwritten& operator=(const Unwritten&) = delete;
    };

    UploadCause& uploadCause() { return cause_; }
    /// What reads the lines in place of `uploadCause`, on the thread that logs; to be set before there are
    /// any.
    void setReader(std::function<void(std::span<const std::string_view>)> reader) {
        reader_ = std::move(reader);
    }

  private:
    void write(std::span<const std::string_view> pieces);

    UploadCause cause_;
    std::function<void(std::span<const std::string_view>)> reader_ = [this](auto pieces) {
        cause_.read(pieces);
    };
    std::mutex mutex_;
    int descriptor_ = -1;
    bool owned_ = false;
};

}  // namespace quillbox
