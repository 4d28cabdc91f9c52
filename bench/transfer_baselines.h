#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace bench {

struct Part {
    std::int64_t offset;
    std::int64_t size;
};

/// SHA-256 of a file, read in pieces of 1 MiB.
void hashFile(const std::filesystem::path& file);

/// The parts of a file as PUT requests on plain sockets: `width` connections at once, each with a thread and
/// a buffer that it uses again.
void putParts(int port, const std::filesystem::path& file, const std::vector<Part>& parts, int width);

/// A GET into a file by libcurl with buffers of 512 KiB.
void downloadWithCurl(const std::string& url, const std::filesystem::path& target);

}  // namespace bench
