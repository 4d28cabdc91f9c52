#include "tests/support/quillboxd_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/inotify.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace test_support {
namespace {

constexpr int startMilliseconds = 60'000;

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Starts the program with its output in a file; between fork and exec stand only calls that allow it.
pid_t spawn(const std::vector<std::string>& arguments, const std::filesystem::path& output) {
    static const std::string program = BASEAPI_BIN_DIR "/quillboxd";
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const int log = ::open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::dup2(log, STDOUT_FILENO);
        ::dup2(log, STDERR_FILENO);
        ::execv(program.c_str(), argv.data());
        ::_exit(127);
    }
    ::close(log);
    if (pid < 0) throw std::runtime_error("quillboxd cannot be started");
    return pid;
}

int exitStatusOf(pid_t pid) {
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The wrapper in <sys/pidfd.h> of glibc 2.36 has no C linkage.
int pidfdOf(pid_t pid) {
    return static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
}

/// Wakes at every change in a folder and at the end of a process.
class Watch {
  public:
    Watch(const std::filesystem::path& folder, pid_t pid)
        : events_{{::inotify_init1(IN_CLOEXEC | IN_NONBLOCK), POLLIN, 0}, {pidfdOf(pid), POLLIN, 0}} {
        ::inotify_add_watch(events_[0].fd, folder.c_str(), IN_MOVED_TO | IN_CREATE);
    }
    ~Watch() {
        ::close(events_[0].fd);
        ::close(events_[1].fd);
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// Returns at once for a change since the last call; false after the process has ended, and after the
    /// time.
    bool wait() {
        const bool woken = ::poll(events_, 2, startMilliseconds) > 0 && events_[1].revents == 0;
        char unread[4096];
        while (::read(events_[0].fd, unread, sizeof unread) > 0) {
        }
        return woken;
    }

  private:
    pollfd events_[2];
};

}  // namespace

QuillboxdProcess::QuillboxdProcess(Storage storage, std::vector<std::string> extraArguments)
    : storage_(storage), extraArguments_(std::move(extraArguments)) {
    start();
}

QuillboxdProcess::~QuillboxdProcess() {
    kill();
}

std::string QuillboxdProcess::url() const {
    const bool tls =
        std::find(extraArguments_.begin(), extraArguments_.end(), "--tls") != extraArguments_.end();
    return (tls ? "https" : "http") + std::string("://127.0.0.1:") + std::to_string(port_);
}

void QuillboxdProcess::kill() {
    if (pid_ > 0) ::kill(pid_, SIGKILL);
    awaitEnd();
}

int QuillboxdProcess::terminate() {
    if (pid_ > 0) ::kill(pid_, SIGTERM);
    return awaitEnd();
}

void QuillboxdProcess::start() {
    std::filesystem::remove(folder_ / "port");
    launch();
    awaitPort();
}

std::string QuillboxdProcess::output() const {
    return readFile(folder_ / "output");
}

void QuillboxdProcess::launch() {
    std::vector<std::string> arguments{"--port", std::to_string(port_), "--port-file",
                                       (folder_ / "port").string()};
    if (storage_ == Storage::memory) {
        arguments.push_back("--memory");
    } else {
        arguments.insert(arguments.end(), {"--data", dataFolder().string()});
    }
    arguments.insert(arguments.end(), extraArguments_.begin(), extraArguments_.end());
    pid_ = spawn(arguments, folder_ / "output");
}

void QuillboxdProcess::awaitPort() {
    Watch watch(folder_.path(), pid_);
    while (!std::filesystem::exists(folder_ / "port")) {
        if (watch.wait()) continue;
        kill();
        throw std::runtime_error("quillboxd does not start: " + output());
    }
    port_ = static_cast<std::uint16_t>(std::stoi(readFile(folder_ / "port")));
}

int QuillboxdProcess::awaitEnd() {
    if (pid_ <= 0) return -1;
    const int status = exitStatusOf(pid_);
    pid_ = -1;
    return status;
}

QuillboxdRun runQuillboxd(const std::vector<std::string>& arguments) {
    const TemporaryFolder folder;
    QuillboxdRun run;
    run.exitStatus = exitStatusOf(spawn(arguments, folder / "output"));
    run.output = readFile(folder / "output");
    return run;
}

}  // namespace test_support
