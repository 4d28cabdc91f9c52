#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace quillbox {

class Host;
struct BackupOptions;

/// A run of the library as a command sees it.
struct FollowedRun {
    const char* moduleCode;
    /// In words, such as "the backup of the folders".
    std::string name;
    /// Starts it; false is a refusal. The library's callbacks keep `held` for as long as it knows of the run.
    std::function<bool(std::shared_ptr<void> held)> start;
    /// Whether its last event has come; asked under the lock of the monitor.
    std::function<bool()> ended;
    /// What the host itself stops at a Ctrl-C.
    std::function<void()> stop = [] {};
    /// What a Ctrl-C then waits for.
    std::function<std::string()> waitingFor;
};

/// Starts a run and waits until it has ended and the library has let go of it; cancels it when that is asked
/// for. False where the library refuses it without a result, which is told. Throws `Interrupted` where the
/// last event does not come in time after a Ctrl-C.
bool followRun(Host& host, const BackupOptions& options, const FollowedRun& run);

/// Why a run ended with this code, in words.
std::string backupFailureText(const std::string& run, std::int64_t code, const std::string& message);

}  // namespace quillbox
