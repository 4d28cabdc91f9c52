#pragma once

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

void downloadWithLibrary(const std::string& url, const std::filesystem::path& target);

}  // namespace bench
