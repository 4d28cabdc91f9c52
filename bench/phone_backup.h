#pragma once

#include <filesystem>
#include <string>

namespace bench {

/// Walks the folder as a run does, keeps what it finds, and prints what it measured.
void measureWalk(const std::filesystem::path& folder);

/// Backs up the folder by the library and prints what it measured: the whole run, from its lock to the end of
/// its record.
void measureBackup(const std::string& host, const std::filesystem::path& folder);

/// Sends each file of the folder as a loop would: libcurl's POST, PUT and POST in turn on one connection, of
/// the same length and with the same headers as the library's. Nothing is hashed, listed or decoded.
void measureBackupByCurl(const std::string& host, const std::filesystem::path& folder);

}  // namespace bench
