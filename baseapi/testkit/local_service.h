#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "baseapi/testkit/child_process.h"
#include "baseapi/testkit/loopback.h"

namespace baseapi::inline v1::testkit {

/// `quillboxd` for a test, on a free port and in memory, until the object ends. It dies with the test,
/// however that ends. Needs neither GoogleTest nor exceptions. Make it on a thread that outlives it: the
/// service is killed when that thread ends.
class LocalService {
  public:
    /// How it is started.
    struct Options {
        /// A path, or a name on the PATH.
        std::string program = "quillboxd";
        /// As on its command line.
        std::vector<std::string> arguments = {"--memory"};
        /// The file that gets what it writes on standard error; the test's own standard error without one.
        std::string errorFile = {};
    };

    /// Starts it and waits until it answers.
    LocalService() : LocalService(Options{}) {}
    /// The same with options of the test's own.
    explicit LocalService(const Options& options) { start(options); }
    LocalService(const LocalService&) = delete;
    LocalService& operator=(const LocalService&) = delete;

    /// Why it does not run; empty where it does. Its own words stand on its standard error.
    const std::string& problem() const { return problem_; }
    /// What `CloudInstance::host` takes: "http://127.0.0.1:PORT", or https.
    const std::string& url() const { return url_; }
    /// The port on 127.0.0.1; 0 where it does not run.
    std::uint16_t port() const { return port_; }
    /// Its process id; -1 once its end has been seen.
    pid_t pid() const { return process_ ? process_->pid() : -1; }

    /// Plans a fault, written as `docs/quillboxd.md` says; false where it is refused. Not over https.
    bool plan(std::string_view fault) const { return post(port_, "/_dev/faults", fault) == 200; }
    /// Takes everything back to the beginning: accounts, files, faults. Not over https.
    bool reset() const { return post(port_, "/_dev/reset", "") == 200; }

    /// As a power cut would, and waits for the end.
    void kill() { end(SIGKILL); }
    /// In good order; gives the exit status.
    int terminate() { return end(SIGTERM); }

  private:
    static constexpr int startMilliseconds = 60'000;

    void start(const Options& options) {
        std::vector<std::string> words{options.program};
        words.insert(words.end(), options.arguments.begin(), options.arguments.end());
        const int error = openError(options.errorFile);
        int output[2];
        if (error < 0 || ::pipe2(output, O_CLOEXEC) != 0) {
            problem_ = "the output of " + options.program + " cannot be read";
        } else {
            process_.emplace(words, output[1], error);
            ::close(output[1]);
            awaitAddress(options.program, output[0]);
            ::close(output[0]);
        }
        ::close(error);
    }

    static int openError(const std::string& file) {
        if (file.empty()) return ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
        return ::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    }

    /// Its one line on standard output ends with its address.
    void awaitAddress(const std::string& program, int output) {
        const auto line = lineFrom(output);
        if (!line.ends_with('\n')) {
            problem_ = program + " does not start";
            return kill();
        }
        url_ = line.substr(line.rfind(' ') + 1);
        url_.pop_back();
        port_ = static_cast<std::uint16_t>(std::atoi(url_.c_str() + url_.rfind(':') + 1));
    }

    static std::string lineFrom(int output) {
        std::string line;
        pollfd readable{output, POLLIN, 0};
        for (char next = 0; next != '\n'; line.push_back(next))
            if (::poll(&readable, 1, startMilliseconds) <= 0 || ::read(output, &next, 1) != 1) break;
        return line;
    }

    int end(int signal) { return process_ ? process_->end(signal) : -1; }

    std::optional<ChildProcess> process_;
    std::string problem_;
    std::string url_;
    std::uint16_t port_ = 0;
};

}  // namespace baseapi::inline v1::testkit
