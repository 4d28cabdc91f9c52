#pragma once

namespace quillbox {

/// How the program ends; README.md and `quillbox --help` tell the table.
enum class ExitStatus {
    success = 0,
    /// The library reported a failure.
    failure = 1,
    /// The command line cannot be used.
    unusable = 2,
    /// No answer came in time.
    noAnswer = 3,
    /// With --fail-on-partial: a backup ended in success, and some of its files failed.
    partial = 4,
    interrupted = 130,
};

}  // namespace quillbox
