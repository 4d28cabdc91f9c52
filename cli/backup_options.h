#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "cli/exit_status.h"

namespace quillbox {

class Host;
class Options;
class Output;

/// What the commands of all backups take.
struct BackupOptions {
    std::int64_t deviceId = 0;
    std::optional<double> cancelAfter;
    /// For backups of files.
    bool failOnPartial = false;

    void addOptions(Options& options);
    void addFileOptions(Options& options);
};

/// Waits for the last event of the module's run, which has just been started, and cancels it when that is
/// asked for. Throws `Interrupted` where the event does not come in time after a Ctrl-C.
void waitForBackup(Host& host, const std::string& moduleCode, const BackupOptions& options,
                   const std::function<bool()>& ended);

/// The library has refused to start, and said nothing.
ExitStatus tellNotStarted(Output& output, const std::string& run);

/// Cancels the run of a module, where the library still knows it.
void cancelBackup(const std::string& moduleCode);

/// Why a run ended with this code, in words.
std::string backupFailureText(const std::string& run, std::int64_t code, const std::string& message);

}  // namespace quillbox
