#pragma once

#include <ctime>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace quillbox {

class Host;

/// What was found where one need of the work was looked at.
struct Finding {
    enum class State { fine, warning, problem };

    std::string name;
    State state = State::fine;
    std::string detail;
    /// How to mend it; empty where nothing is wrong.
    std::string remedy;
};

/// Looks at everything, one after the other; throws `Interrupted`.
void examine(const Host& host, const std::function<void(const Finding&)>& found);

// The single looks that send nothing.
Finding examineProcessors(int partsAtOnce, int filesAtOnce);
Finding examineFolder(const std::string& name, const std::filesystem::path& folder);
Finding examineClock(std::time_t now);

/// `error`: why the host gave no answer at all, absent where it gave one.
Finding examineTls(const std::string& address, const std::optional<std::string>& error);

/// The name between scheme and port of an address, absent where the text is no address of http or https.
std::optional<std::string> serverName(const std::string& address);

}  // namespace quillbox
