#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "bench/caller.h"

namespace bench {

// The library's side of the comparisons, through its public headers. Log lines are built and dropped.

/// Puts the platform and the session values in place; once, before the rest.
void openSession(const std::string& host);

std::unique_ptr<Caller> libraryCaller();

/// A whole upload: hash, create, every part, complete.
void uploadWithLibrary(const std::filesystem::path& file);

/// Names the folder as what the device backs up.
void addScope(const std::filesystem::path& folder);

/// A whole run of the device's folders, which have so many files.
void backUpWithLibrary(std::int64_t files);

void downloadWithLibrary(const std::string& url, const std::filesystem::path& target);

}  // namespace bench
