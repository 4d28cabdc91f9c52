#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace bench {

/// Ends the program with the reason where what it was about to measure did not happen.
inline void require(bool condition, const std::string& reason) {
    if (condition) return;
    std::fprintf(stderr, "bench_client: %s\n", reason.c_str());
    std::exit(1);
}

}  // namespace bench
