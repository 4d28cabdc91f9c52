#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillbox {

/// A local folder, or whatever else can stand in one.
struct LocalItem {
    std::filesystem::path path;
    /// The path as the user gave it, and behind it "/" and the path inside.
    std::string label;
    /// The folder's place in the list, absent for what the user named.
    std::optional<std::size_t> parent;
    bool isFolder = false;
    /// In bytes; 0 for what is no regular file.
    std::int64_t size = 0;
    /// Why what the folder holds is not, or not all, in the list; empty where it is.
    std::string problem;

    /// The name that it has in its folder.
    std::string name() const;
};

/// What the paths name and all that they hold: each folder before what is in it, names in the order of their
/// bytes. Links are followed; one that leads back to a folder above it is listed as a folder with a problem.
/// What is neither a folder nor a regular file is listed like a file, and nothing is opened.
std::vector<LocalItem> listLocal(const std::vector<std::string>& paths);

/// The sum of their sizes in bytes.
std::int64_t bytesOf(const std::vector<LocalItem>& items);

}  // namespace quillbox
