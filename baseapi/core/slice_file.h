#pragma once

#include <optional>
#include <string>

#include "baseapi/core/url.h"

namespace baseapi::inline v1 {

/// Supplied by the host: hashes a local file and cuts it into the parts of an upload.
class ISliceFile {
  public:
    virtual ~ISliceFile() = default;

    /// The JSON text of one `Sha256Result` in UTF-8, or nothing where the hash could not be computed. Called
    /// once for each upload, synchronously, on the thread that started the upload; it may take as long as
    /// reading the file takes. Must be callable from several threads at once.
    virtual std::optional<std::string> calcSha256(const URL& of) = 0;
};

}  // namespace baseapi::inline v1
