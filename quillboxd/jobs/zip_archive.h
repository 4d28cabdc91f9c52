#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quillboxd/store/content_reader.h"

struct zip;

namespace quillboxd {

struct ZipEntry {
    std::uint64_t index = 0;
    std::string name;  ///< UTF-8, as the archive says it; a folder ends in a slash
    std::int64_t size = 0;
    std::int64_t millis = 0;  ///< since 1970, of the last change
    bool isLink = false;
};

/// A zip archive among the stored files, read in place.
class ZipArchive {
  public:
    /// Throws ApiError for what is no zip archive, and for one of more than 100,000 entries.
    ZipArchive(ContentReader content, const std::string& password);
    ~ZipArchive();
    ZipArchive(const ZipArchive&) = delete;
    ZipArchive& operator=(const ZipArchive&) = delete;

    /// How many bytes the archive itself has.
    std::int64_t size() const { return content_.size(); }
    const std::vector<ZipEntry>& entries() const { return entries_; }

    /// Gives the entry's bytes to `take` run by run until it answers false or they end; throws ApiError where
    /// they cannot be had whole.
    void read(const ZipEntry& entry, const std::function<bool(std::string_view)>& take);

  private:
    struct Closer {
        void operator()(zip* archive) const;
    };

    ContentReader content_;
    std::int64_t position_ = 0;
    std::unique_ptr<zip, Closer> archive_;
    std::vector<ZipEntry> entries_;

    friend struct ZipSource;
};

}  // namespace quillboxd
