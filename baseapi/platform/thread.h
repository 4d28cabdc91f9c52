#pragma once

#include <functional>
#include <string>
#include <thread>

namespace baseapi::inline v1 {

/// A thread of the library: named for debuggers (the first 15 characters of `name`), and no handler of a
/// host's signal ever runs on it.
std::thread startThread(const std::string& name, std::function<void()> body);

/// Whether `startThread` started the calling thread.
bool onLibraryThread();

/// Runs a job; what it throws goes to standard error and no further.
void runJob(const std::function<void()>& job) noexcept;

}  // namespace baseapi::inline v1
