#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "baseapi/testkit/local_service.h"
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

    /// "http://127.0.0.1:port" (https where the arguments hold --tls), without a slash at the end.
    const std::string& url() const { return service_->url(); }
    std::uint16_t port() const { return port_; }
    pid_t pid() const { return service_->pid(); }

    /// The folder given as --data.
    std::filesystem::path dataFolder() const { return folder_ / "data"; }

    /// kill -9, and waits for its end.
    void kill() { service_->kill(); }

    /// SIGTERM, and waits for its end; returns the exit status, or -1 where a signal ended it.
    int terminate() { return service_->terminate(); }

    /// Starts it again over the same data, at the same port.
    void start();

    /// What it has written on standard error.
    std::string output() const;

  private:
    std::vector<std::string> arguments() const;

    TemporaryFolder folder_;
    Storage storage_;
    std::vector<std::string> extraArguments_;
    std::uint16_t port_ = 0;
    std::unique_ptr<baseapi::testkit::LocalService> service_;
};

/// Runs quillboxd to its end with these arguments, for command lines that it refuses.
struct QuillboxdRun {
    int exitStatus = -1;
    std::string output;
};
QuillboxdRun runQuillboxd(const std::vector<std::string>& arguments);

}  // namespace test_support
