#pragma once

#include <sys/types.h>

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/event.h"
#include "tests/support/temporary_folder.h"

namespace quillbox_test {

/// How a run of quillbox differs from a plain one.
struct RunSettings {
    std::map<std::string, std::string> environment;
    std::string standardInput;
    /// A file that takes standard output in place of the test; empty for none.
    std::string standardOutput;
    /// Standard output is a pipe that nobody reads any more.
    bool readerGone = false;
    /// The folder it starts in; empty for the test's own.
    std::string folder;
    /// Bound by the permissions of files, also as root.
    bool withoutRootRights = false;
    /// How many bytes a file can take, as if the disk were full then; absent for no limit.
    std::optional<std::size_t> fileSizeLimit;
};

/// The built quillbox, running. Nothing of the test's own environment but HOME, PATH and what the sanitizers
/// need goes with it, and its state lies in a folder of its own unless the settings say
/// otherwise.
class QuillboxProcess {
  public:
    explicit QuillboxProcess(std::vector<std::string> arguments, RunSettings settings = {});
    ~QuillboxProcess();
    QuillboxProcess(const QuillboxProcess&) = delete;
    QuillboxProcess& operator=(const QuillboxProcess&) = delete;

    /// Waits until standard output, or standard error, holds the text; false where it does not come to that.
    [[nodiscard]] bool waitForOutput(const std::string& text);
    [[nodiscard]] bool waitForError(const std::string& text);
    void interrupt();
    /// kill -9, and waits for its end.
    void kill();
    /// Waits for its end; the exit status, or -1 where a signal ended it.
    int wait();

    std::string output();
    std::string error();
    /// What it has written to standard output, line by line.
    std::vector<std::string> lines();

  private:
    struct Captured {
        int descriptor = -1;
        std::string text;
        bool ended = false;
        std::thread thread;
    };

    void launch(std::vector<std::string>& arguments, const RunSettings& settings);
    void capture(Captured& captured, int descriptor);
    bool waitFor(Captured& captured, const std::string& text);

    test_support::TemporaryFolder state_;
    pid_t pid_ = -1;
    std::mutex mutex_;
    std::condition_variable changed_;
    Captured output_;
    Captured error_;
};

struct Outcome {
    int status = -1;
    std::vector<std::string> lines;
    std::string output;
    std::string error;
};

/// Runs quillbox to its end.
Outcome run(std::vector<std::string> arguments, RunSettings settings = {});

}  // namespace quillbox_test
