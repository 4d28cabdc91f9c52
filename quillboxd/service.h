#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "quillboxd/crypto/signed_address.h"
#include "quillboxd/faults.h"
#include "quillboxd/jobs/job_worker.h"
#include "quillboxd/journal.h"
#include "quillboxd/store/blob_store.h"
#include "quillboxd/store/contents.h"
#include "quillboxd/store/database.h"
#include "quillboxd/unique_fd.h"

namespace quillboxd {

/// A data folder that no other process uses as long as this lives.
class FolderLock {
  public:
    /// Makes the folder where it is missing; throws StartError. An empty path locks nothing.
    explicit FolderLock(const std::filesystem::path& folder);

  private:
    UniqueFd file_;
};

/// All that the service keeps, shared by its connections.
class Service {
  public:
    /// An empty path keeps everything in memory. Each account has room for `quota` bytes.
    Service(const std::filesystem::path& folder, std::int64_t quota);

    /// Back to empty: the organisation alone, without files, backups, jobs, journal and faults. Addresses
    /// given out before lead nowhere.
    void reset();

  private:
    FolderLock lock_;

  public:
    const std::int64_t quota;
    Database database;
    BlobStore blobs;
    Contents contents;
    AddressSigner signer;
    Journal journal;
    Faults faults;
    JobWorker jobs;  ///< the last, since it works with all others
};

}  // namespace quillboxd
