#pragma once

#include <cstdint>
#include <optional>

namespace quillbox {

class Options;

/// What the commands of all backups take.
struct BackupOptions {
    std::int64_t deviceId = 0;
    std::optional<double> cancelAfter;
    /// For backups of files.
    bool failOnPartial = false;

    void addOptions(Options& options);
    void addFileOptions(Options& options);
};

}  // namespace quillbox
