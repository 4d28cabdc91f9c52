#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quillboxd {

struct Options {
    std::filesystem::path data;  ///< empty: in memory
    std::uint16_t port = 0;
    std::filesystem::path portFile;
    std::string certificate;
    std::string key;
    std::int64_t quota = std::int64_t{10} << 30;  ///< bytes for each account
    bool verbose = false;
    std::vector<std::string> command;  ///< runs beside the service, which ends with it
};

/// Reads the command line; where there is nothing to run (help, or an error told on standard error), sets the
/// exit status instead.
std::optional<Options> readOptions(int argc, const char* const* argv, int& exitStatus);

}  // namespace quillboxd
