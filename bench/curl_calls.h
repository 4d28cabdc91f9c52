#pragma once

#include <memory>
#include <string>

#include "bench/caller.h"

namespace bench {

/// The same calls by libcurl alone: a multi handle on one thread that polls, answers handed over to one
/// worker, easy handles and header lists used again.
std::unique_ptr<Caller> curlCaller(const std::string& host);

}  // namespace bench
