#include "cli/session_options.h"

#include <cstdlib>
#include <utility>

#include "cli/problems.h"

namespace quillbox {

std::optional<std::string> processEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    if (value == nullptr) return std::nullopt;
    return value;
}

SessionOptions withEnvironment(SessionOptions options, const Environment& environment) {
    if (options.token && options.tokenFile)
        throw UsageError{"--token and --token-file cannot be used together; leave one of them out"};
    // One of the two as an option wins over both in the environment.
    if (!options.token && !options.tokenFile) {
        options.token = environment("QUILLBOX_TOKEN");
        options.tokenFile = environment("QUILLBOX_TOKEN_FILE");
        if (options.token && options.tokenFile)
            throw UsageError{"QUILLBOX_TOKEN and QUILLBOX_TOKEN_FILE are both set; unset one of them"};
    }
    const auto fill = [&](std::optional<std::string>& value, const char* name) {
        if (!value) value = environment(name);
    };
    fill(options.host, "QUILLBOX_HOST");
    fill(options.contentId, "QUILLBOX_CONTENT_ID");
    fill(options.state, "QUILLBOX_STATE");
    fill(options.log, "QUILLBOX_LOG");
    fill(options.cacert, "QUILLBOX_CACERT");
    return options;
}

std::filesystem::path temporaryFolder(const Environment& environment) {
    const auto folder = environment("TMPDIR").value_or("");
    return folder.empty() ? "/tmp" : folder;
}

std::filesystem::path stateFolder(const SessionOptions& options, const Environment& environment) {
    if (options.state) {
        if (options.state->empty())
            throw UsageError{"--state names no folder; give its path or leave it out"};
        return *options.state;
    }
    // A relative path in XDG_STATE_HOME is to be ignored.
    const std::filesystem::path xdg = environment("XDG_STATE_HOME").value_or("");
    if (xdg.is_absolute()) return xdg / "quillbox";
    const std::filesystem::path home = environment("HOME").value_or("");
    if (home.is_absolute()) return home / ".local" / "state" / "quillbox";
    throw UsageError{"no folder for the state: neither XDG_STATE_HOME nor HOME is set; use --state DIR"};
}

}  // namespace quillbox
