#pragma once

#include <signal.h>
#include <sys/prctl.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace baseapi::inline v1::testkit {

/// A program that a test runs beside itself. It is killed with this object and with the thread that made it,
/// so that nothing is left running where a test crashes. Linux alone.
class ChildProcess {
  public:
    /// Runs a program, named by the first word: a path, or a name on the PATH. Its standard output and
    /// standard error go to these descriptors. A program that cannot be run ends with status 127.
    ChildProcess(const std::vector<std::string>& words, int output, int error) {
        std::vector<char*> arguments;
        for (const auto& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        const pid_t parent = ::getpid();
        pid_ = ::fork();
        if (pid_ == 0) become(arguments.data(), parent, output, error);
    }
    ~ChildProcess() { end(SIGKILL); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Its process id; -1 once its end has been seen.
    pid_t pid() const { return pid_; }

    /// Sends the signal and waits for the end; gives what `wait` does.
    int end(int signal) {
        if (pid_ > 0) ::kill(pid_, signal);
        return wait();
    }

    /// Waits for the end; gives the exit status, or -1 where a signal was the end or it has been seen before.
    int wait() {
        if (pid_ <= 0) return -1;
        int status = 0;
        ::waitpid(pid_, &status, 0);
        pid_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    /// Between fork and exec stand only calls that allow it.
    [[noreturn]] static void become(char** arguments, pid_t parent, int output, int error) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent) ::_exit(127);
        ::dup2(output, STDOUT_FILENO);
        ::dup2(error, STDERR_FILENO);
        ::execvp(arguments[0], arguments);
        ::_exit(127);
    }

    pid_t pid_ = -1;
};

}  // namespace baseapi::inline v1::testkit
