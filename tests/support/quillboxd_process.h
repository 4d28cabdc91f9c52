#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace test_support {

/// The built quillboxd, running on a free port over a temporary folder of its own until the object ends.
/// Make it on a thread that outlives it: the service is killed when that thread ends.
class QuillboxdProcess {
  public:
    enum class Storage { folder, memory };

    /// Starts it and waits until it answers; throws std::runtime_error with its own words where it does not.
    explicit QuillboxdProcess(Storage storage = Storage::folder,
                              std::vector<std::string> extraArguments = {});
    ~QuillboxdProcess();
    QuillboxdProcess(const QuillboxdProcess&) = delete;
    QuillboxdProcess& operator=(const QuillboxdProcess&) = delete;

    /// "http://127.0.0.1:port" (https where the arguments hold --tls), without a slash at the end.
    std::string url() const;
    std::uint16_t port() const { return port_; }
    pid_t pid() const { return pid_; }

    /// The folder given as --data.
    std::filesystem::path dataFolder() const { return folder_ / "data"; }

    /// kill -9, and waits for its end.
    void kill();

    /// SIGTERM, and waits for its end; returns the exit status, or -1 where a signal ended it.
    int terminate();

    /// Starts it again over the same data, at the same port.
    void start();

    /// What it has written on standard output and standard error.
    std::string output() const;

  private:
    void launch();
    void awaitPort();
    int awaitEnd();

    TemporaryFolder folder_;
    Storage storage_;
    std::vector<std::string> extraArguments_;
    std::uint16_t port_ = 0;
    pid_t pid_ = -1;
};

/// Runs quillboxd to its end with these arguments, for command lines that it refuses.
struct QuillboxdRun {
    int exitStatus = -1;
    std::string output;
};
QuillboxdRun runQuillboxd(const std::vector<std::string>& arguments);

}  // namespace test_support
