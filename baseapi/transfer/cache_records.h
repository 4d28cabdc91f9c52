#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "baseapi/json/record.h"

namespace baseapi::inline v1 {

// Declared for hosts that keep the state of their transfers. The library neither reads nor writes them; their
// keys are fixed, misspelled ones too.

/// One part of an upload.
struct UploadCacheItemBean {
    std::optional<std::string> sub_hash;
    std::optional<bool> has_finnish;
    std::optional<std::int64_t> finish_time;

    BASEAPI_FIELDS(UploadCacheItemBean, sub_hash, has_finnish, finish_time)
};

/// An upload with its parts.
struct UploadCacheBean {
    std::optional<std::vector<UploadCacheItemBean>> items;
    std::optional<std::string> hash;
    std::optional<bool> has_complele;
    std::optional<std::string> file_id;
    std::optional<std::string> sha256;

    BASEAPI_FIELDS(UploadCacheBean, items, hash, has_complele, file_id, sha256)
};

/// One piece of a download.
struct DownloadCacheItenBean {
    std::optional<std::int64_t> pageNum;
    std::optional<std::int64_t> offset;
    std::optional<std::int64_t> length;

    BASEAPI_FIELDS(DownloadCacheItenBean, pageNum, offset, length)
};

/// A download with its pieces.
struct DownloadCacheBean {
    /// Of the record's own type, not of `DownloadCacheItenBean`.
    std::optional<std::vector<DownloadCacheBean>> items;
    std::optional<bool> hasComplete;
    std::optional<std::string> fileId;

    BASEAPI_FIELDS(DownloadCacheBean, items, hasComplete, fileId)
};

}  // namespace baseapi::inline v1
