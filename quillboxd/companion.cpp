#include "quillboxd/companion.h"

#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "quillboxd/error.h"

namespace quillboxd {
namespace {

constexpr int notRun = 127;

/// Between fork and exec stand only calls that allow it. The service blocks and ignores signals that the
/// command must get.
[[noreturn]] void become(char** command, pid_t service) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != service) ::_exit(notRun);
    ::signal(SIGPIPE, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::execvp(command[0], command);
    ::_exit(notRun);
}

}  // namespace

Companion::Companion(const std::vector<std::string>& command, const std::string& address) {
    std::vector<char*> words;
    for (const auto& word : command) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    ::setenv("QUILLBOX_HOST", address.c_str(), 1);
    const pid_t service = ::getpid();
    pid_ = ::fork();
    if (pid_ == 0) become(words.data(), service);
    if (pid_ < 0) throw StartError("the command " + command.front() + " cannot be started");
}

Companion::~Companion() {
    if (pid_ > 0) finish();
}

int Companion::finish() {
    ::kill(pid_, SIGTERM);  // no signal reaches one that has ended and was not waited for
    int status = 0;
    ::waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace quillboxd
