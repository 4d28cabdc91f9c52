#include "baseapi/platform/fatal_stop.h"

#include <unistd.h>

#include <cstdlib>
#include <string>

namespace baseapi::inline v1 {

void fatalStop(std::string_view text) {
    const std::string line = "fatal stop: " + std::string(text) + "\n";
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line.data(), line.size());
    std::abort();
}

}  // namespace baseapi::inline v1
