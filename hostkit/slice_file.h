#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "baseapi/core/slice_file.h"
#include "baseapi/platform/export.h"
#include "baseapi/transfer/sha256_result.h"

namespace hostkit {

/// How a file of this machine is hashed and cut: SHA-256 in lower-case hexadecimal, in one pass.
///
/// A part is 8 MiB long until 10,000 parts force more, always a multiple of 64 bytes; the last one is as
/// long as the rest. `hashCtx` of a part holds the eight state words of the hash before the part's first
/// byte. An empty file has no parts.
///
/// All operations may be called from any thread and from several at once. The object must outlive the calls
/// under way.
class BASEAPI_API SliceFile : public baseapi::ISliceFile {
  public:
    /// What a host may want to be told; both run on the thread of the call that they are about, and may be
    /// absent.
    struct Observers {
        /// A file gave nothing, and why, such as "Permission denied".
        std::function<void(const std::filesystem::path& file, const std::string& why)> refused;
        /// So many bytes of a file have been read and hashed.
        std::function<void(std::int64_t done, std::int64_t size)> progress;
    };

    /// Why a file gave nothing, in words.
    struct Refusal {
        std::string why;
    };
    /// What `slice` gives.
    using Result = std::variant<baseapi::Sha256Result, Refusal>;

    SliceFile() = default;
    explicit SliceFile(Observers observers) : observers_(std::move(observers)) {}

    /// The JSON text of `slice`. Nothing for what is no readable regular file (a folder, FIFO, socket or
    /// device is never waited for), for a file that changed while it was read, and after `stop()`.
    std::optional<std::string> calcSha256(const baseapi::URL& of) override;

    /// The same as a record, or the reason why there is none.
    Result slice(const std::filesystem::path& file) const;

    /// From now on every file gives nothing, the one that is being read included.
    void stop() { stopped_ = true; }

    /// How long the parts of a file of `fileSize` bytes are, in bytes.
    static std::int64_t partSize(std::int64_t fileSize);

  private:
    Observers observers_;
    std::atomic<bool> stopped_{false};
};

}  // namespace hostkit
