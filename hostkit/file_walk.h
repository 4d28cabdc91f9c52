#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace hostkit {

/// What a walk has found, on the thread of the walk.
struct FileVisitor {
    /// Whatever is no folder.
    std::function<void(const std::filesystem::path& file)> file;
    /// A folder that gave not all that it holds, and why.
    std::function<void(const std::filesystem::path& folder, const std::string& why)> unreadable;
};

/// Visits all that stands in a folder, at any depth, in no order. Links are followed; a folder that is on the
/// way from the root to itself is not entered again. Nothing but folders is opened.
void walkFiles(const std::filesystem::path& root, const FileVisitor& visitor);

}  // namespace hostkit
