#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace quillboxd {

/// A command that runs beside the service, with the service's address in the environment variable
/// QUILLBOX_HOST. It is killed where the service is.
class Companion {
  public:
    Companion(const std::vector<std::string>& command, const std::string& address);
    ~Companion();
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;

    /// Asks it to end where it has not ended yet, and waits; its exit status as a shell tells it: 127 where
    /// it could not be run, 128 and the signal where that was its end.
    int finish();

  private:
    pid_t pid_ = -1;
};

}  // namespace quillboxd
