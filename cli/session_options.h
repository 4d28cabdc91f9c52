#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace quillbox {

/// The session values that a command line gives; each one may be absent, and an empty text is a value.
struct SessionOptions {
    std::optional<std::string> host;
    std::optional<std::string> token;
    std::optional<std::string> tokenFile;
    std::optional<std::string> contentId;
    std::optional<std::string> state;
    std::optional<std::string> log;
    std::optional<std::string> cacert;
    bool json = false;
};

/// Looks a variable of the environment up; absent where it is not set.
using Environment = std::function<std::optional<std::string>(const std::string& name)>;
std::optional<std::string> processEnvironment(const std::string& name);

/// Fills in from the environment what the options leave out. Throws `UsageError` where a token and a token
/// file are both asked for.
SessionOptions withEnvironment(SessionOptions options, const Environment& environment);

/// The folder that keeps the program's state: `options.state`, otherwise "quillbox" in the user's XDG state
/// folder. Throws `UsageError` where there is none.
std::filesystem::path stateFolder(const SessionOptions& options, const Environment& environment);

/// The folder for what is needed for a while: `TMPDIR`, otherwise /tmp.
std::filesystem::path temporaryFolder(const Environment& environment);

}  // namespace quillbox
